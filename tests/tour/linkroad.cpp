#include "tests/tour/linkroad.h"

#include "platform/grid/flexgrid.h"
#include "platform/programfolder.h"
#include "platform/screen/toldqcolor.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QLabel>

namespace benthor::tour {

using platform::FlexGrid;

namespace {

int rowsOfColour(const FlexGrid* grid, platform::ToldColour colour) {
    int count = 0;
    for (int row = 1; row < grid->rows(); ++row) {
        count += grid->backColour(row, 2) == platform::toQColor(colour) ? 1 : 0;
    }
    return count;
}

QPoint cellCentre(FlexGrid* grid, int row) {
    grid->showRow(row);
    return grid->visualRect(grid->model()->index(row - 1, 2)).center();
}

QWidget* connectTheDevice(Actor& actor, simulator::KdPort& device) {
    actor.step(QStringLiteral("Download to PC: the link searches, and nobody answers"));
    QWidget* main = actor.screen(QStringLiteral("main"));
    actor.click(actor.control<QWidget>(main, QStringLiteral("lbllo")));
    QWidget* link = actor.screen(QStringLiteral("PC_Link_1"));
    auto* caption = actor.control<QLabel>(link, QStringLiteral("AFLabel3"));
    actor.picture(link, QStringLiteral("link-search"));

    actor.step(QStringLiteral("The device is switched on; Find KD hears it, and its directory comes"));
    device.start();
    auto* find = actor.control<QAction>(link, QStringLiteral("mnuFindKD"));
    actor.look([find] { QMetaObject::invokeMethod(find, &QAction::trigger, Qt::QueuedConnection); });
    auto* grid = actor.control<FlexGrid>(link, QStringLiteral("Mgrid"));
    actor.waitFor(QStringLiteral("the directory"), [grid] { return grid->rows() > 1; });
    actor.waitFor(QStringLiteral("the connection"),
                  [caption] { return caption->text() == QLatin1String("Connected"); });
    return link;
}

void pickTwoDives(Actor& actor, QWidget* link) {
    actor.step(QStringLiteral("Dives that are in the store are yellow; a click paints one blue"));
    auto* grid = actor.control<FlexGrid>(link, QStringLiteral("Mgrid"));
    int stored = 0;
    actor.look([&] { stored = rowsOfColour(grid, platform::kToldYellow); });
    if (stored == 0) {
        throw TourError(QStringLiteral("no dive of the device is marked as stored"));
    }
    actor.picture(link, QStringLiteral("link-directory"));
    QPoint first;
    QPoint second;
    actor.look([&] {
        first = cellCentre(grid, 1);
        second = cellCentre(grid, 2);
    });
    actor.click(grid->viewport(), first);
    actor.waitFor(QStringLiteral("one blue row"),
                  [grid] { return rowsOfColour(grid, platform::kToldBlue) == 1; });
    actor.click(grid->viewport(), second, Qt::ControlModifier);
    actor.waitFor(QStringLiteral("two blue rows"),
                  [grid] { return rowsOfColour(grid, platform::kToldBlue) == 2; });
    actor.picture(link, QStringLiteral("link-picked"));
}

void bringThemDown(Actor& actor, QWidget* link) {
    actor.step(QStringLiteral("Get Selected brings the two dives down"));
    actor.click(actor.control<QWidget>(link, QStringLiteral("cmddownload")));
    auto* wait = actor.control<QWidget>(link, QStringLiteral("Frame5"));
    auto* bytes = actor.control<QLabel>(link, QStringLiteral("lblBytes"));
    actor.waitFor(QStringLiteral("bytes in the wait frame"), [wait, bytes] {
        return wait->isVisible() && bytes->text().split(QLatin1Char(' ')).first().toInt() > 1000;
    });
    actor.picture(link, QStringLiteral("link-download"));
    actor.answerBox(QStringLiteral("2  Dives Downloaded."), QStringLiteral("OK"),
                    QStringLiteral("link-downloaded"));
}

void importThem(Actor& actor) {
    actor.step(QStringLiteral("The question to import is answered with Yes; the dives go into the store"));
    actor.answerBox(QStringLiteral("It is advised to import downloaded dives into database now. Proceed?"),
                    QStringLiteral("Yes"), QStringLiteral("link-question"));
    actor.answerBox(QStringLiteral("Dive(s) put into database."), QStringLiteral("OK"));
    actor.look([] {
        if (!QDir(platform::ProgramFolder::current().path(u"new")).isEmpty()) {
            throw TourError(QStringLiteral("files are left in new"));
        }
    });
}

void openTheNewDive(Actor& actor) {
    actor.step(QStringLiteral("My Dives shows them, and the newest opens on the chart"));
    QWidget* main = actor.screen(QStringLiteral("main"));
    actor.click(actor.control<QWidget>(main, QStringLiteral("lblppc")));
    QWidget* list = actor.screen(QStringLiteral("rbmain"));
    auto* grid = actor.control<FlexGrid>(list, QStringLiteral("MSFlexGrid1"));
    actor.waitFor(QStringLiteral("eleven dives in the list"), [grid] { return grid->rows() == 12; });
    actor.picture(list, QStringLiteral("list-with-new-dives"));
    int row = 0;
    QPoint cell;
    actor.look([&] {
        for (int at = 1; at < grid->rows() && row == 0; ++at) {
            for (int col = 0; col < grid->cols(); ++col) {
                if (grid->text(at, col) == QLatin1String("MyLatestDives1.txt")) {
                    row = at;
                }
            }
        }
        grid->showRow(row);
        cell = grid->visualRect(grid->model()->index(row - 1, 1)).center();
    });
    if (row == 0) {
        throw TourError(QStringLiteral("MyLatestDives1.txt is not in the list"));
    }
    actor.doubleClick(grid->viewport(), cell);
    QWidget* dive = actor.screen(QStringLiteral("rbinterface"));
    auto* samples = actor.control<FlexGrid>(dive, QStringLiteral("MSFlexGrid1"));
    actor.waitFor(QStringLiteral("its samples"), [samples] { return samples->rows() > 20; });
    actor.picture(dive, QStringLiteral("downloaded-dive"));
    actor.click(actor.control<QWidget>(dive, QStringLiteral("cmdclose")));
    actor.screen(QStringLiteral("rbmain"));
}

} // namespace

void downloadDives(Actor& actor, simulator::KdPort& device) {
    QWidget* link = connectTheDevice(actor, device);
    pickTwoDives(actor, link);
    bringThemDown(actor, link);
    importThem(actor);
    openTheNewDive(actor);
}

} // namespace benthor::tour
