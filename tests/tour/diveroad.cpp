#include "tests/tour/diveroad.h"

#include "platform/grid/flexgrid.h"
#include "platform/programfolder.h"
#include "tests/tour/logbookroad.h"
#include "tests/tour/lookup.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>

namespace benthor::tour {

using platform::FlexGrid;

namespace {

void playAndJump(Actor& actor, QWidget* dive) {
    actor.step(QStringLiteral("The dive plays, faster and stopped; then on to the next alarm"));
    auto* samples = actor.control<FlexGrid>(dive, QStringLiteral("MSFlexGrid1"));
    int before = 0;
    actor.look([&] { before = samples->row(); });
    actor.click(actor.control<QWidget>(dive, QStringLiteral("Command6(0)")));
    actor.click(actor.control<QWidget>(dive, QStringLiteral("PlayDive")));
    actor.waitFor(QStringLiteral("two ticks of play"), [&] { return samples->row() >= before + 4; });
    actor.picture(dive, QStringLiteral("dive-playing"));
    actor.click(actor.control<QWidget>(dive, QStringLiteral("StopPlayDive")));
    auto* alarms = actor.control<QWidget>(dive, QStringLiteral("Alarm_Text"));
    actor.click(actor.control<QWidget>(dive, QStringLiteral("AlarmNext")));
    actor.waitFor(QStringLiteral("the alarm in red"),
                  [&] { return alarms->property("toldBackground").value<QColor>() == QColor(Qt::red); });
    actor.picture(dive, QStringLiteral("dive-alarm"));
}

void exportFile(Actor& actor, QWidget* dive, const char* entry, const QString& name) {
    const QString path = platform::ProgramFolder::current().path(name);
    auto* action = actor.control<QAction>(dive, QLatin1String(entry));
    actor.look([action] { QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection); });
    actor.chooseFile(path);
}

void exportTheDive(Actor& actor, QWidget* dive) {
    actor.step(
        QStringLiteral("Its gases as CSV, five lines for DAN, the whole profile and the chart as files"));
    const auto path = [](const char* name) {
        return platform::ProgramFolder::current().path(QString::fromLatin1(name));
    };
    exportFile(actor, dive, "mnudivesavecsv", QStringLiteral("dive.csv"));
    actor.answerBox(QStringLiteral("Dive Record save as file ") + path("dive.csv"), QStringLiteral("OK"));
    exportFile(actor, dive, "mnufullzxu", QStringLiteral("profile.zxu"));
    actor.answerBox(QStringLiteral("The profile was saved as %1.").arg(path("profile.zxu")),
                    QStringLiteral("OK"));
    exportFile(actor, dive, "mnufullcsv", QStringLiteral("profile.csv"));
    actor.answerBox(QStringLiteral("The profile was saved as %1.").arg(path("profile.csv")),
                    QStringLiteral("OK"));
    exportFile(actor, dive, "mnusavechart", QStringLiteral("chart.png"));
    actor.answerBox(QStringLiteral("The chart was saved as %1.").arg(path("chart.png")),
                    QStringLiteral("OK"));
    exportFile(actor, dive, "mnudivedan", QStringLiteral("dive.zxu"));
    actor.waitFor(QStringLiteral("the DAN file"), [&] { return QFile::exists(path("dive.zxu")); });
    require(!QImage(path("chart.png")).isNull(), QStringLiteral("the chart's picture cannot be read"));
}

void captureTheScreen(Actor& actor, QWidget* dive) {
    actor.step(QStringLiteral("A picture of the dive screen is saved beside the dive"));
    actor.click(actor.control<QWidget>(dive, QStringLiteral("btnCapture")));
    actor.waitFor(QStringLiteral("a picture in the folder jpg"), [] {
        const QDir folder(platform::ProgramFolder::current().path(u"jpg"));
        const QStringList names = folder.entryList({QStringLiteral("*Wreck2.jpg")});
        return names.size() == 1 && QImage(folder.filePath(names.first())).size() == QSize(800, 600);
    });
}

QWidget* openADive(Actor& actor, QWidget* list, const QString& name) {
    actor.step(QStringLiteral("A double click opens %1").arg(name));
    auto* grid = actor.control<FlexGrid>(list, QStringLiteral("MSFlexGrid1"));
    QPoint cell;
    actor.look([&] {
        const int row = rowHolding(grid, name);
        require(row > 0, name + QStringLiteral(" is not in the list"));
        cell = cellCentre(grid, row, 1);
    });
    actor.doubleClick(grid->viewport(), cell);
    QWidget* dive = actor.screen(QStringLiteral("rbinterface"));
    auto* samples = actor.control<FlexGrid>(dive, QStringLiteral("MSFlexGrid1"));
    actor.waitFor(QStringLiteral("its samples"), [&] { return samples->rows() > 100; });
    actor.picture(dive, QStringLiteral("dive"));
    return dive;
}

void workTheChart(Actor& actor, QWidget* dive) {
    actor.step(QStringLiteral("Oxygen, cells, setpoint and ceiling onto the chart"));
    for (const char* box : {"Check3", "Check9", "Check10", "Check11"}) {
        auto* check = actor.control<QAbstractButton>(dive, QLatin1String(box));
        actor.click(check, QPoint(12, check->height() / 2));
        actor.waitFor(QLatin1String(box), [check] { return check->isChecked(); });
    }
    actor.picture(dive, QStringLiteral("dive-series"));

    actor.step(QStringLiteral("A click on the chart picks a sample"));
    auto* chart = actor.control<QWidget>(dive, QStringLiteral("MSChart1"));
    auto* samples = actor.control<FlexGrid>(dive, QStringLiteral("MSFlexGrid1"));
    actor.click(chart, QPoint(chart->width() / 2, chart->height() / 2));
    actor.waitFor(QStringLiteral("a sample in the middle"), [&] {
        return samples->row() > samples->rows() / 3 && samples->row() < samples->rows() * 2 / 3;
    });
    auto* tip = actor.control<QWidget>(dive, QStringLiteral("Text8"));
    actor.waitFor(QStringLiteral("the tip box"), [&] {
        const QRect place(chart->mapFromGlobal(tip->mapToGlobal(QPoint())), tip->size());
        return tip->isVisible() && chart->rect().contains(place);
    });
    actor.picture(dive, QStringLiteral("dive-sample"));

    playAndJump(actor, dive);

    actor.step(QStringLiteral("Zoom in, pan on, zoom out"));
    auto* zoom = actor.control<QAbstractButton>(dive, QStringLiteral("Command2(0)"));
    actor.click(zoom);
    actor.waitFor(QStringLiteral("the caption Zoom 10"),
                  [&] { return zoom->text() == QLatin1String("Zoom 10"); });
    actor.click(actor.control<QWidget>(dive, QStringLiteral("Command2(2)")));
    actor.picture(dive, QStringLiteral("dive-zoomed"));
    actor.click(zoom);
    actor.waitFor(QStringLiteral("the caption Zoom 1"),
                  [&] { return zoom->text() == QLatin1String("Zoom 1"); });

    actor.step(QStringLiteral("The data grid with every column; the arrow keys walk the samples"));
    actor.click(actor.control<QWidget>(dive, QStringLiteral("btnSpread")));
    actor.waitFor(QStringLiteral("the data grid"), [&] { return samples->isVisible(); });
    int before = 0;
    actor.look([&] { before = samples->row(); });
    actor.key(samples, Qt::Key_Down);
    actor.waitFor(QStringLiteral("the next sample"), [&] { return samples->row() == before + 1; });
    actor.picture(dive, QStringLiteral("dive-grid"));
}

void inFeet(Actor& actor, QWidget* dive) {
    actor.step(QStringLiteral("The same dive in feet"));
    auto* feet = actor.control<QAbstractButton>(dive, QStringLiteral("Option1"));
    actor.click(feet, QPoint(12, feet->height() / 2));
    QWidget* again = nullptr;
    actor.waitFor(QStringLiteral("the dive to be loaded again"), [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String("rbinterface") && window->isVisible() &&
                window != dive) {
                again = window;
            }
        }
        auto* unit = again == nullptr ? nullptr : again->findChild<QLabel*>(QStringLiteral("lblmaxdepth"));
        return unit != nullptr && unit->text() == QLatin1String("Feet");
    });
    actor.picture(again, QStringLiteral("dive-feet"));
    actor.step(QStringLiteral("Back to the list, which is in feet as well"));
    actor.click(actor.control<QWidget>(again, QStringLiteral("cmdclose")));
    QWidget* list = actor.screen(QStringLiteral("rbmain"));
    auto* grid = actor.control<FlexGrid>(list, QStringLiteral("MSFlexGrid1"));
    actor.waitFor(QStringLiteral("depths in feet"),
                  [&] { return grid->rows() > 1 && grid->text(1, 2).endsWith(QLatin1String("ft")); });
    actor.picture(list, QStringLiteral("dive-list-feet"));
}

} // namespace

void studyADive(Actor& actor, QWidget* list, const QString& name) {
    QWidget* dive = openADive(actor, list, name);
    workTheChart(actor, dive);
    exportTheDive(actor, dive);
    captureTheScreen(actor, dive);
    keepALog(actor, dive);
    inFeet(actor, dive);
}

} // namespace benthor::tour
