// Drives the program through its main road: the real screens, real clicks and keys, a real store. Says each
// step, leaves a picture of each screen, and ends with 1 when anything does not come as it must. Usage:
// benthor-tour <program folder> <folder for pictures>

#include "link/screens/seriallines.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/application.h"
#include "platform/screen/toldqcolor.h"
#include "shell/house.h"
#include "simulator/demodives.h"
#include "tests/tour/actor.h"
#include "tests/tour/diveroad.h"
#include "tests/tour/firmwareroad.h"
#include "tests/tour/gasroad.h"
#include "tests/tour/linkroad.h"
#include "tests/tour/logbookroad.h"
#include "tests/tour/lookup.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QSettings>
#include <QTextStream>
#include <QThread>
#include <memory>

using namespace benthor;
using platform::FlexGrid;
using tour::Actor;
using tour::cellCentre;
using tour::require;
using tour::rowHolding;
using tour::TourError;

namespace {

constexpr int kSteps =
    8 + tour::kDiveSteps + tour::kLinkSteps + tour::kLogbookSteps + tour::kGasSteps + tour::kFirmwareSteps;

void startAndImport(Actor& actor) {
    actor.step(QStringLiteral("The splash stands for a second and a half"));
    actor.picture(actor.screen(QStringLiteral("frmSplash")), QStringLiteral("splash"));

    actor.step(QStringLiteral("The main screen comes up; the dives that wait are imported by themselves"));
    QWidget* main = actor.screen(QStringLiteral("main"));
    auto* progress = actor.control<QWidget>(main, QStringLiteral("Frame2"));
    actor.waitFor(QStringLiteral("the import's progress"), [&] { return progress->isVisible(); });
    actor.picture(main, QStringLiteral("importing"));
    actor.answerBox(QStringLiteral("Dive(s) put into database."), QStringLiteral("OK"),
                    QStringLiteral("imported"));
    actor.waitFor(QStringLiteral("the progress to go"), [&] { return !progress->isVisible(); });
    auto* totals = actor.control<QLabel>(main, QStringLiteral("lbltotaldive"));
    actor.look([&] {
        require(QDir(platform::ProgramFolder::current().path(u"new")).isEmpty(),
                QStringLiteral("files are left in new"));
    });
    actor.step(QStringLiteral("The panel tells the totals"));
    actor.click(actor.control<QWidget>(main, QStringLiteral("lblppc")));
    actor.waitFor(QStringLiteral("the totals"),
                  [&] { return totals->isVisible() && totals->text().contains(QLatin1String("9 dives")); });
    actor.picture(main, QStringLiteral("main"));
}

QWidget* readTheList(Actor& actor) {
    actor.step(QStringLiteral("The dive list stands there: good dives plain, the damaged one red"));
    QWidget* list = actor.screen(QStringLiteral("rbmain"));
    auto* grid = actor.control<FlexGrid>(list, QStringLiteral("MSFlexGrid1"));
    actor.waitFor(QStringLiteral("nine dives in the list"), [&] { return grid->rows() == 10; });
    actor.look([&] {
        int red = 0;
        for (int row = 1; row < grid->rows(); ++row) {
            red += grid->backColour(row, 0) == platform::toQColor(platform::kToldRed) ? 1 : 0;
        }
        require(red == 1, QStringLiteral("%1 dives are red").arg(red));
    });
    actor.picture(list, QStringLiteral("dive-list"));
    actor.step(QStringLiteral("Down and up with the arrow keys"));
    actor.key(grid, Qt::Key_Down);
    actor.key(grid, Qt::Key_Down);
    actor.waitFor(QStringLiteral("row 3 to be chosen"), [&] {
        return grid->row() == 3 && grid->backColour(3, 0) == platform::toQColor(platform::kToldBlue);
    });
    return list;
}

void otherScreens(Actor& actor) {
    actor.step(QStringLiteral("Back to the link"));
    QWidget* main = actor.screen(QStringLiteral("main"));
    actor.click(actor.control<QWidget>(main, QStringLiteral("lbllo")));
    actor.picture(actor.screen(QStringLiteral("PC_Link_1")), QStringLiteral("link"));
}

void leave(Actor& actor) {
    actor.step(QStringLiteral("Exit closes all screens"));
    QWidget* main = actor.screen(QStringLiteral("main"));
    actor.click(actor.control<QWidget>(main, QStringLiteral("lblexit")));
}

void walk(Actor& actor, simulator::KdPort& device) {
    startAndImport(actor);
    QWidget* list = readTheList(actor);
    tour::studyADive(actor, list, QStringLiteral("Wreck2.txt"));
    tour::publishADive(actor, actor.screen(QStringLiteral("rbmain")));
    tour::downloadDives(actor, device);
    otherScreens(actor);
    tour::planTheGases(actor, device);
    tour::readTheGuides(actor);
    tour::reprogramTheDevice(actor, device);
    leave(actor);
}

} // namespace

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    QTextStream err(stderr);
    if (argc != 3) {
        err << "usage: benthor-tour <program folder> <folder for pictures>" << Qt::endl;
        return 2;
    }
    const QString folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    const QString pictures = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    // The user's own mail program and window places stay out of it.
    qputenv("PATH", "");
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, pictures + QLatin1String("/settings"));
    look::apply(application);
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder));
    QDir::setCurrent(folder);

    constexpr int kDevicePort = 3;
    simulator::Kd kd(simulator::deviceDives());
    kd.productWord = "KD3";
    simulator::KdPort device(folder, kDevicePort, std::move(kd));
    shell::House house(link::serialLines());
    bool ended = false;
    QString failure;
    QObject::connect(&house, &shell::House::ended, &application, [&] { ended = true; });
    Actor actor(pictures, kSteps);
    const std::unique_ptr<QThread> person(QThread::create([&] {
        try {
            walk(actor, device);
            actor.waitFor(QStringLiteral("the program's end"), [&] { return ended; });
        } catch (const std::exception& error) {
            failure = QString::fromUtf8(error.what());
            actor.pictureOfAll();
        }
        // Not quit(): that asks the windows, and what stands open may say no.
        QMetaObject::invokeMethod(
            &application, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    }));
    house.start();
    person->start();
    QApplication::exec();
    person->wait();

    if (!failure.isEmpty()) {
        err << "** The tour ended early: " << failure << Qt::endl;
        return 1;
    }
    QTextStream(stdout) << "   " << actor.pictures() << " pictures in " << pictures << ", by "
                        << QGuiApplication::platformName() << Qt::endl;
    return 0;
}
