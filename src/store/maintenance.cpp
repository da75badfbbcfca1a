#include "store/maintenance.h"

#include "platform/skiperrors.h"

#include <QDir>

namespace benthor::store {

namespace {

constexpr int kProfileFields = 50;
constexpr int kProfileFieldSize = 20;
constexpr int kMainFields = 27;
constexpr int kMainFieldSize = 50;

template <typename NameOf>
void widen(platform::Database& database, const QString& table, int width, int size,
           const ShowMessage& message, NameOf nameOf) {
    for (int count = database.fieldCount(table); count < width; ++count) {
        if (!database.updatable(table)) {
            message(QStringLiteral("Unable to complete task.\nTableDef not Updatable! "));
            return;
        }
        database.appendField(table, nameOf(count), size);
    }
}

} // namespace

void addmissingfields(const QString& path, const ShowMessage& message) {
    platform::Database database;
    database.open(path);
    // The table of old may be missing; the other one is widened all the same.
    platform::skipErrors([&] {
        widen(database, QStringLiteral("Profile"), kProfileFields, kProfileFieldSize, message,
              [](int count) { return QStringLiteral("item%1").arg(count); });
    });
    database.open(path);
    widen(database, QStringLiteral("main"), kMainFields, kMainFieldSize, message, [](int count) {
        return count == kMainFields - 1 ? QStringLiteral("dbtxtname")
                                        : QStringLiteral("dbtxtname%1").arg(count);
    });
}

platform::FileResult makedbtxt(const platform::ProgramFolder& folder) {
    const QStringList files = folder.listFiles(QStringLiteral("dbtxt"), QStringLiteral("*"));
    if (!files.isEmpty() && files.first().size() >= 2) {
        return {};
    }
    if (!QDir().mkpath(folder.path(u"dbtxt"))) {
        return {QStringLiteral("Cannot make the folder %1.").arg(folder.path(u"dbtxt")), EIO};
    }
    return platform::writeFileWhole(folder.path(u"dbtxt", u"test.txt"), QByteArrayView());
}

QString readgetstarted(platform::Database& database) {
    return database.openRecordset("SELECT * FROM serialno ").value(u"getstarted").text();
}

bool guideisclosed(const QString& getstarted) {
    return getstarted.contains(QLatin1String("Close"));
}

} // namespace benthor::store
