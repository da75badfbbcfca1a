#include "divefiles/importnote.h"

#include "divefiles/filenames.h"
#include "divefiles/owedprofiles.h"
#include "platform/database.h"
#include "platform/faultpoint.h"
#include "platform/skiperrors.h"

#include <QDir>
#include <QFileInfo>
#include <QMultiHash>
#include <QSet>

namespace benthor::divefiles {

namespace {

using platform::ProgramFolder;

QString notepath(const ProgramFolder& folder) {
    return folder.path(u"import.note");
}

void writestamps(const ProgramFolder& folder, const QStringList& stamps) {
    if (stamps.isEmpty()) {
        static_cast<void>(platform::removeFile(notepath(folder)));
        static_cast<void>(platform::syncFolder(folder.root()));
    } else {
        static_cast<void>(platform::writeFileWhole(
            notepath(folder), (stamps.join(QLatin1Char('\n')) + QLatin1Char('\n')).toLatin1()));
    }
}

/// Whether a copy of a run with one of these stamps may bear the name.
bool hasStamp(const QString& name, const QStringList& stamps) {
    return std::any_of(stamps.begin(), stamps.end(), [&](const QString& stamp) {
        return name.startsWith(stamp) && copyname(stamp, name.mid(stamp.size())) == name;
    });
}

/// Where else the bytes of a dive file stand.
class KeptCopies {
public:
    explicit KeptCopies(const ProgramFolder& folder) {
        for (const char* const where : {"new", "old"}) {
            const QDir directory(folder.path(QString::fromLatin1(where)));
            for (const QFileInfo& file : directory.entryInfoList(QDir::Files | QDir::Hidden)) {
                bysize_.insert(file.size(), file.filePath());
            }
        }
    }
    bool hold(const QString& path) const {
        const auto [from, to] = bysize_.equal_range(QFileInfo(path).size());
        return std::any_of(from, to, [&](const QString& kept) {
            // A link that leads into dbtxt is no second copy.
            return QFileInfo(kept).canonicalFilePath() != QFileInfo(path).canonicalFilePath() &&
                   platform::sameContents(kept, path);
        });
    }

private:
    QMultiHash<qint64, QString> bysize_;
};

/// Names are compared without regard to case: what two spellings might mean stays.
QSet<QString> namesinuse(platform::Database& database) {
    QSet<QString> names;
    platform::Recordset rows = database.openRecordset("SELECT dbtxtname FROM main");
    for (; !rows.eof(); rows.moveNext()) {
        names += rows.value(0).text().toCaseFolded();
    }
    for (const OwedProfile& owed : owedprofiles(database)) {
        names += owed.dbtxtname.toCaseFolded();
    }
    return names;
}

/// False where one could not be removed.
bool removeleftovers(const ProgramFolder& folder, const QSet<QString>& inuse, const QStringList& stamps) {
    const KeptCopies kept(folder);
    const QStringList copies = folder.listFiles(QStringLiteral("dbtxt"), QStringLiteral("*"));
    bool all = true;
    for (const QString& name : copies) {
        const QString path = folder.path(u"dbtxt", name);
        if (hasStamp(name, stamps) && !inuse.contains(name.toCaseFolded()) && kept.hold(path)) {
            all = platform::removeFile(path).ok() && all;
        }
    }
    static_cast<void>(platform::syncFolder(folder.path(u"dbtxt")));
    return all;
}

} // namespace

ImportNote::ImportNote(const ProgramFolder& folder, QString stamp)
    : folder_(folder)
    , stamp_(std::move(stamp)) {
    QStringList stamps = notedstamps(folder_);
    if (!stamps.contains(stamp_)) {
        writestamps(folder_, stamps << stamp_);
    }
}

ImportNote::~ImportNote() {
    QStringList stamps = notedstamps(folder_);
    if (stamps.removeAll(stamp_) > 0) {
        writestamps(folder_, stamps);
    }
}

QStringList notedstamps(const ProgramFolder& folder) {
    constexpr qint64 kMost = 65536;
    const QByteArray text = platform::readFile(notepath(folder), kMost).value_or(QByteArray());
    return QString::fromLatin1(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void tidydbtxt(const ProgramFolder& folder,
               const std::function<QStringList(platform::Database&)>& alsonamed) {
    platform::skipErrors([&] {
        const QString store = folder.path(u"rb.mdb");
        platform::Database database;
        database.open(store);
        const QStringList stamps = notedstamps(folder);
        if (!stamps.isEmpty()) {
            QSet<QString> names = namesinuse(database);
            for (const QString& name : alsonamed ? alsonamed(database) : QStringList()) {
                names += name.toCaseFolded();
            }
            if (removeleftovers(folder, names, stamps)) {
                writestamps(folder, {});
            }
        }
        bringowedprofiles(folder, database);
    });
}

} // namespace benthor::divefiles
