#include "ctl/verifying.h"

#include "ctl/commands.h"
#include "ctl/interruption.h"
#include "ctl/logbook.h"
#include "ctl/table.h"
#include "store/backup.h"
#include "store/olderstore.h"
#include "store/summary.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace benthor::ctl {

using platform::StoreError;

namespace {

int divesIn(const QString& path) {
    platform::Database database;
    database.open(path, platform::StoreAccess::Look);
    const platform::Recordset count = database.openRecordset("SELECT COUNT(*) FROM main");
    return count.value(0).text().toInt();
}

Verified verifyOurs(const QString& path) {
    Verified verified;
    const platform::StoreVerdict verdict = store::examinestore(path);
    verified.sound = verdict.sound();
    verified.reason = verdict.reason;
    try {
        verified.dives = divesIn(path);
    } catch (const StoreError& error) {
        verified.sound = false;
        verified.reason = verified.reason.isEmpty() ? error.text() : verified.reason;
    }
    return verified;
}

} // namespace

Verified verifyStore(const QString& path) {
    if (!QFileInfo::exists(path)) {
        return {false, std::nullopt, QStringLiteral("There is no such file.")};
    }
    if (!store::isjetfile(path)) {
        return verifyOurs(path);
    }
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("rb.mdb"));
    try {
        store::copyjet(path, copy, [](std::uint64_t, std::uint64_t) { return !isInterrupted(); });
    } catch (const StoreError& error) {
        return {false, std::nullopt, error.text()};
    }
    return verifyOurs(copy);
}

QStringList storesOf(const platform::ProgramFolder& folder) {
    QStringList names{QStringLiteral("rb.mdb")};
    for (int number = 1; number <= store::kBackups; ++number) {
        names += store::backupname(number);
    }
    names += {QStringLiteral("backup-moving.mdb"), QStringLiteral("rb-before-merge.mdb")};
    QStringList paths{storeOf(folder)};
    for (const QString& name : names.mid(1)) {
        if (QFileInfo::exists(folder.path(name))) {
            paths += folder.path(name);
        }
    }
    for (const char* const pattern : {"rb-replaced*.mdb", "rb-jet*.mdb"}) {
        for (const QString& name : folder.listFiles(QString(), QLatin1String(pattern))) {
            paths += folder.path(name);
        }
    }
    return paths;
}

Status runVerify(const Arguments& arguments, Output& output) {
    const QStringList files =
        arguments.files.isEmpty() ? storesOf(requireFolder(arguments.folder)) : arguments.files;
    bool all = true;
    std::optional<JsonList> list;
    if (arguments.json) {
        list.emplace(output, "files");
    }
    Table table({QStringLiteral("File"), QStringLiteral("Sound"), QStringLiteral(">Dives"),
                 QStringLiteral("Reason")});
    Progress progress(QStringLiteral("Stores"));
    for (qsizetype i = 0; i < files.size(); ++i) {
        progress.show(i, files.size());
        const Verified verified = verifyStore(files[i]);
        goOnUnlessInterrupted();
        all = all && verified.sound;
        if (list) {
            list->item(
                {{QStringLiteral("file"), files[i]},
                 {QStringLiteral("sound"), verified.sound},
                 {QStringLiteral("dives"), verified.dives ? QJsonValue(*verified.dives) : QJsonValue()},
                 {QStringLiteral("reason"),
                  verified.reason.isEmpty() ? QJsonValue() : QJsonValue(verified.reason)}});
        } else {
            table.add({files[i], verified.sound ? QStringLiteral("yes") : QStringLiteral("no"),
                       verified.dives ? QString::number(*verified.dives) : QString(), verified.reason});
        }
    }
    if (list) {
        list->end();
    } else {
        for (const QString& line : table.lines(terminalWidth())) {
            output.line(line);
        }
    }
    return all ? kDone : kFindings;
}

} // namespace benthor::ctl
