#include "guides/screens/manual.h"

#include "guides/screens/manualview.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"

#include <QDesktopServices>
#include <QFile>
#include <QMimeDatabase>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace benthor::guides {

namespace {

constexpr int kPatienceMilliseconds = 2000;

/// Whether the desktop says that nothing is installed for such a file. A desktop that cannot be asked says
/// nothing.
bool nothingOpens(const QString& path) {
    const QString asker = QStandardPaths::findExecutable(QStringLiteral("xdg-mime"));
    if (asker.isEmpty()) {
        return false;
    }
    QProcess question;
    question.start(asker, {QStringLiteral("query"), QStringLiteral("default"),
                           QMimeDatabase().mimeTypeForFile(path).name()});
    return question.waitForFinished(kPatienceMilliseconds) &&
           question.readAllStandardOutput().trimmed().isEmpty();
}

} // namespace

void openManual(QWidget* parent) {
    const QString manual = platform::ProgramFolder::current().path(u"manualbenthor.mht");
    if (QFile::exists(manual)) {
        if (!nothingOpens(manual) && QDesktopServices::openUrl(QUrl::fromLocalFile(manual))) {
            return;
        }
        static QPointer<QWidget> view; // one window, however often it is asked for
        if (view == nullptr) {
            view = makeManualView(manual);
        }
        if (view != nullptr) {
            view->setWindowState(view->windowState() & ~Qt::WindowMinimized);
            view->show();
            view->raise();
            view->activateWindow();
            return;
        }
    }
    platform::dialogs().message(parent, QStringLiteral("The manual can't be opened: ") + manual,
                                platform::BoxKind::Warning);
}

} // namespace benthor::guides
