#include "pages.h"

#include "platform/look/look.h"

#include <QApplication>
#include <QDir>
#include <QTabWidget>
#include <QTextStream>

using namespace benthor::look;

namespace {

struct Page {
    const char* name;
    QWidget* (*make)();
    QSize size;
};

const Page pages[] = {
    {"icons", iconsPage, {1000, 640}},
    {"pictures", picturesPage, {960, 480}},
    {"controls", controlsPage, {1000, 640}},
    {"menus", menusPage, {700, 420}},
    {"widgets", widgetsPage, {1100, 760}},
    {"screen", [] { return screenPage(false); }, {1040, 640}},
    {"overlay", [] { return screenPage(true); }, {1040, 640}},
    {"focus", focusPage, {900, 420}},
};

bool writePictures(const QDir& folder, Theme theme, const char* suffix) {
    bool good = true;
    setTheme(theme);
    for (const Page& page : pages) {
        const std::unique_ptr<QWidget> widget(page.make());
        widget->resize(page.size.expandedTo(widget->minimumSizeHint()));
        widget->show();
        QApplication::processEvents();
        const QString file =
            folder.filePath(QStringLiteral("%1-%2.png").arg(QLatin1String(page.name), QLatin1String(suffix)));
        good = widget->grab().save(file) && good;
        QTextStream(stdout) << file << Qt::endl;
    }
    return good;
}

} // namespace

// benthor-gallery [folder [point size of the desktop font]]
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() > 2) {
        QFont larger = QApplication::font();
        larger.setPointSize(arguments.at(2).toInt());
        QApplication::setFont(larger);
    }
    apply(application);
    if (arguments.size() > 1) {
        const QDir folder(arguments.at(1));
        if (!folder.mkpath(QStringLiteral("."))) {
            QTextStream(stderr) << "cannot make the folder " << folder.path() << Qt::endl;
            return 1;
        }
        const bool light = writePictures(folder, Theme::Light, "light");
        const bool dark = writePictures(folder, Theme::Dark, "dark");
        return light && dark ? 0 : 1;
    }
    QTabWidget window;
    for (const Page& page : pages) {
        window.addTab(page.make(), QLatin1String(page.name));
    }
    window.resize(1120, 820);
    window.show();
    return QApplication::exec();
}
