#include "guides/screens/manual.h"

#include "guides/screens/manualview.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"

#include <QDesktopServices>
#include <QFile>
#include <QMimeDatabase>
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
        if (QWidget* view = makeManualView(manual)) {
            view->show();
            view->raise();
            return;
        }
    }
    platform::dialogs().message(parent, QStringLiteral("The manual can't be opened: ") + manual,
                                platform::BoxKind::Warning);
}

} // namespace benthor::guides
