#include "guides/screens/comealong.h"

#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/progresswindow.h"

#include <QDir>

namespace benthor::guides {

using platform::BoxKind;
using End = store::ComeAlong::End;

store::JetProgress comealongprogress(const QString& file) {
    const auto window = std::make_shared<platform::ProgressWindow>(
        QStringLiteral("An older dive store comes along"),
        QStringLiteral("Its dives are read into a new store: %1\n\nThe file itself stays as it is.")
            .arg(QDir::toNativeSeparators(file)),
        QStringLiteral("rows"), QStringLiteral("All rows are read. The new store is being checked."));
    return [window](std::uint64_t rows, std::uint64_t of) { return window->goOn(rows, of); };
}

QString readwithoutfault(const store::JetCounts& counts) {
    return QStringLiteral("It was read without a fault:\n\n") + store::jetcountstext(counts);
}

void bringolderstore(QWidget* parent) {
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    const QString path = folder.path(u"rb.mdb");
    if (!store::isjetfile(path)) {
        store::bringalong(folder); // takes away what a crash left
        return;
    }
    const store::ComeAlong result = store::bringalong(folder, comealongprogress(path));
    const QString name = QDir::toNativeSeparators(path);
    if (result.end == End::Taken) {
        platform::dialogs().message(
            parent,
            QStringLiteral("The older dive store came along. %1\n\nThe file itself is kept as %2.")
                .arg(readwithoutfault(result.counts), QDir::toNativeSeparators(folder.path(result.keptAs))),
            BoxKind::Information);
    } else if (result.end == End::Refused) {
        platform::dialogs().message(
            parent,
            QStringLiteral("The older dive store %1 could not come along; nothing was changed.\n\n%2")
                .arg(name, result.reason),
            BoxKind::Warning);
    } else if (result.end == End::Stopped) {
        platform::dialogs().message(
            parent,
            QStringLiteral("The older dive store %1 did not come along, for it was stopped; nothing was "
                           "changed. The next start begins with it again.")
                .arg(name));
    }
}

} // namespace benthor::guides
