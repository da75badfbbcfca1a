#include "guides/screens/manual.h"

#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace benthor::guides {

void openManual(QWidget* parent) {
    const QString manual = platform::ProgramFolder::current().path(u"manualbenthor.mht");
    if (!QFile::exists(manual) || !QDesktopServices::openUrl(QUrl::fromLocalFile(manual))) {
        platform::dialogs().message(parent, QStringLiteral("The manual can't be opened: ") + manual,
                                    platform::BoxKind::Warning);
    }
}

} // namespace benthor::guides
