// Takes pictures of every screen, in both themes and two sizes (in high contrast where
// BENTHOR_TEST_CONTRAST is set, with a font of BENTHOR_TEST_POINTS where that is), in metres and in feet,
// with dives and without. Usage: benthor-pictures <demonstration folder> <folder for pictures>

#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/application.h"
#include "shell/house.h"
#include "tests/pictures/asked.h"
#include "tests/pictures/faces.h"
#include "tests/support/scripteddialogs.h"

#include <QDir>
#include <QSettings>
#include <QTextStream>
#include <QWidget>

using namespace benthor;

namespace {

/// Keeps each face as a picture in each size and theme.
class PictureAlbum final : public tests::Album {
public:
    explicit PictureAlbum(const QString& folder)
        : folder_(folder) {}

    using Album::add;

    void add(QWidget* window, const QString& name, const QList<QSize>& sizes) override {
        const QString contrast =
            look::contrast() == look::Contrast::High ? QStringLiteral("contrast-") : QString();
        for (const look::Theme theme : {look::Theme::Light, look::Theme::Dark}) {
            look::setTheme(theme);
            for (const QSize& size : sizes) {
                // A layout for a wide window may let go of its room in two steps.
                for (int step = 0; size.isValid() && step < 2; ++step) {
                    window->resize(size);
                    tests::settle();
                }
                tests::settle();
                const QString picture =
                    QStringLiteral("%1-%2-%3.png")
                        .arg(name)
                        .arg(window->width())
                        .arg(contrast + (theme == look::Theme::Light ? QStringLiteral("light")
                                                                     : QStringLiteral("dark")));
                if (!window->grab().save(file(picture))) {
                    qFatal("cannot write %s", qPrintable(picture));
                }
            }
        }
        look::setTheme(look::Theme::Light);
    }

    QString file(const QString& name) const override { return folder_ + u'/' + name; }

private:
    QString folder_;
};

} // namespace

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    if (argc != 3 && argc != 4) {
        QTextStream(stderr) << "usage: benthor-pictures <demonstration folder> <folder for pictures> "
                               "[firmware|locked|older]\n";
        return 2;
    }
    const QString folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
    const QString pictures = QDir(QString::fromLocal8Bit(argv[2])).absolutePath();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder + QLatin1String("/settings"));
    tests::takeAskedFont();
    tests::takeAskedContrast();
    look::apply(application);
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder));

    tests::ScriptedDialogs dialogs;
    if (argc == 4) {
        PictureAlbum album(pictures);
        if (QLatin1String(argv[3]) == QLatin1String("locked")) {
            tests::takeLockedStore(album);
        } else if (QLatin1String(argv[3]) == QLatin1String("older")) {
            tests::takeOlderStore(album);
        } else {
            tests::takeFirmware(album);
        }
        return 0;
    }
    shell::House house;
    house.start();
    tests::settle();
    PictureAlbum album(pictures);
    tests::takeAll(album, dialogs);
    return 0;
}
