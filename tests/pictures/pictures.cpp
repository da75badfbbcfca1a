#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "shell/process.h"
#include "shell/screens/main_screen.h"
#include "store/schema.h"
#include "tests/shell/fakeneighbours.h"
#include <QApplication>
#include <QtWidgets>
using namespace benthor;
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QString out = QString::fromLocal8Bit(argv[1]);
    const QString folder = QString::fromLocal8Bit(argv[2]);
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder));
    look::apply(app);
    for (auto theme : {look::Theme::Light, look::Theme::Dark}) {
        look::setTheme(theme);
        for (QSize size : {QSize(1024, 700), QSize(1920, 1080)}) {
            tests::FakeNeighbours n;
            auto* m = new shell::MainScreen(n);
            m->showScreen();
            m->resize(size);
            m->Timer1_tick();
            m->Timer2_tick();
            for (int i = 0; i < 5; ++i)
                QCoreApplication::processEvents();
            m->grab().save(QString("%1/main-%2-%3.png")
                               .arg(out)
                               .arg(size.width())
                               .arg(theme == look::Theme::Light ? "light" : "dark"));
            m->findChild<QWidget*>("Frame2")->show();
            m->findChild<QLabel*>("lblprogress")->setText("System processing : MyLatestDives12.txt");
            m->findChild<QLabel*>("lblprogress")->show();
            m->findChild<QLabel*>("lblcurrentfile")->setText("3");
            m->findChild<QLabel*>("lbltotalfiles")->setText("8");
            m->findChild<QLabel*>("lbltotalsizes")->setText("412716");
            m->findChild<QAction*>("mnuTips")->trigger();
            for (int i = 0; i < 5; ++i)
                QCoreApplication::processEvents();
            m->grab().save(QString("%1/main-import-%2-%3.png")
                               .arg(out)
                               .arg(size.width())
                               .arg(theme == look::Theme::Light ? "light" : "dark"));
            delete m;
        }
    }
}
