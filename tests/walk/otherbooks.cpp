#include "tests/walk/otherbooks.h"

#include "platform/database.h"
#include "platform/files.h"
#include "platform/storedrows.h"
#include "store/olderstore.h"
#include "store/schema.h"
#include "tests/store/jet/jetfolder.h"

#include <QDir>
#include <QDirIterator>
#include <QSet>

namespace benthor::tests {

namespace {

using platform::Database;
using platform::StoredValue;

constexpr std::array<const char*, 2> kJetNames{"older-store-dates.mdb", "older-store-text.mdb"};

QString serialOf(const MadeDive& dive, quint32 form) {
    switch (form % 8) {
    case 4:
    case 5:
        return QStringLiteral("KD777");
    case 6:
        return QStringLiteral(" ") + dive.serial.toLower();
    default:
        return dive.serial;
    }
}

StoredValue startcodeOf(const MadeDive& dive, quint32 form) {
    switch (form % 8) {
    case 2:
        return {};
    case 3:
        return QString();
    default:
        return dive.startcode;
    }
}

/// Names as downloads get them; two logbooks may well have the same. What is a dive's file in one is missing
/// in the other.
QString textName(quint32 number, quint32 form, bool hasFile) {
    static const QStringList names{QStringLiteral("3A9F1CA1.txt"), QStringLiteral("T3.TXT"),
                                   QStringLiteral("3A9F20A1.txt"), QStringLiteral("3A9F1CA2.txt"),
                                   QStringLiteral("../rb.mdb")};
    const quint32 half = (number % 2 == 0) == hasFile ? 0 : 2;
    const bool odd = !hasFile && form % 64 < 8;
    return odd ? names.last() : names[static_cast<qsizetype>(half + form / 8 % 2)];
}

bool hasFile(quint32 form) {
    return form % 8 != 5 && form % 8 != 7;
}

void insert(Database& store, const char* table, const QStringList& names,
            const std::vector<StoredValue>& values) {
    QStringList places;
    for (qsizetype i = 1; i <= names.size(); ++i) {
        places += QStringLiteral("?%1").arg(i);
    }
    platform::StoredRows(store).change(QStringLiteral("INSERT INTO main.%1 (%2) VALUES (%3)")
                                           .arg(QLatin1String(table), names.join(u','), places.join(u','))
                                           .toUtf8(),
                                       values);
}

std::vector<StoredValue> valuesOf(const QString& diveid, const QString& fields) {
    std::vector<StoredValue> values{diveid};
    for (const QString& field : fields.split(u',')) {
        values.emplace_back(field);
    }
    return values;
}

void insertDive(Database& store, const QString& diveid, const MadeDive& dive, const QString& dbtxtname,
                const QString& location, quint32 form) {
    const QString serial = serialOf(dive, form);
    insert(store, "main",
           {"DiveID", "UserName", "Suit", "Location", "startdate", "finisheddate", "Duration", "MaxDepth",
            "Startcode", "Version", "\"Interval\"", "systemid", "dbtxtname", "site", "Coments", "divenote"},
           {diveid, serial, serial, location, dive.started, dive.finished, dive.duration, dive.depth,
            startcodeOf(dive, form), QStringLiteral("V2.31"), QString::fromLatin1(dive.opens ? "10" : "12.5"),
            QStringLiteral("KD3"),
            dbtxtname.isEmpty() && form % 2 == 0 ? StoredValue() : StoredValue(dbtxtname),
            form % 3 == 0 ? StoredValue() : StoredValue(words(form / 3)),
            form % 5 == 0 ? words(form / 5) + QStringLiteral("\r\n") + words(form / 7) : QString(),
            StoredValue()});
    for (const QString& gas : dive.gases) {
        insert(store, "gas", {"diveid", "Gastype", "GasN2", "GasHe", "gasmod", "Gasstat"},
               valuesOf(diveid, gas));
    }
    for (const QString& tissue : dive.tissues) {
        insert(store, "tissue", {"diveid", "Tissuetype", "TissueN2", "TissueHe"}, valuesOf(diveid, tissue));
    }
    if (form % 7 < 2) {
        insert(store, "buddylist", {"diveid", "buddylist"}, {diveid, words(form / 11)});
    }
}

/// Writes the bytes under `name`, or under one with a number where that is not free.
QString put(const QString& folder, const QString& name, const QByteArray& bytes,
            const QSet<QString>& taken = {}) {
    for (int number = 1;; ++number) {
        const qsizetype point = name.lastIndexOf(u'.');
        const QString free =
            number == 1 ? name : name.left(point) + QString::number(number) + name.mid(point);
        const QString path = folder + u'/' + free;
        if (!QFile::exists(path) && !taken.contains(free)) {
            QFile file(path);
            if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
                qFatal("cannot write %s", qPrintable(path));
            }
            return free;
        }
    }
}

} // namespace

QString words(quint32 number) {
    static const QStringList texts{QStringLiteral("Anna"),
                                   QStringLiteral("Bo"),
                                   QStringLiteral("The mole, north side"),
                                   QStringLiteral("O'Neil"),
                                   QString(),
                                   QStringLiteral("Zo\u00eb")};
    return texts[static_cast<qsizetype>(number) % texts.size()] + QString::number(number % 97);
}

OtherBooks::OtherBooks() {
    for (const char* name : kJetNames) {
        const QString copy = directory_.filePath(QLatin1String(name));
        if (hasJetFiles() && QFile::copy(jetFile(name), copy)) {
            jetFiles_ += copy;
        }
    }
    note();
}

bool OtherBooks::hasJetFiles() {
    return QFile::exists(jetFile(kJetNames[0])) && QFile::exists(jetFile(kJetNames[1]));
}

QString OtherBooks::folder(quint32 number) const {
    return directory_.filePath(QString::fromLatin1(number % kFolders == 0 ? "Anna" : "Bert"));
}

bool OtherBooks::isThere(quint32 number) const {
    return QFile::exists(folder(number) + QStringLiteral("/rb.mdb"));
}

QString OtherBooks::readable(const QString& store) {
    if (!store::isjetfile(store)) {
        return store;
    }
    static const QTemporaryDir copies;
    const QString copy = copies.filePath(QFileInfo(store).fileName());
    if (!QFile::exists(copy)) {
        store::copyjet(store, copy);
    }
    return copy;
}

OtherContents OtherBooks::read(const QString& chosen) {
    const QString store = QFileInfo(chosen).isDir() ? chosen + QStringLiteral("/rb.mdb") : chosen;
    return readOther(readable(store), QFileInfo(store).absolutePath());
}

void OtherBooks::ensure(quint32 number) {
    if (!isThere(number)) {
        for (const char* name : {"dbtxt", "old"}) {
            QDir().mkpath(folder(number) + u'/' + QLatin1String(name));
        }
        store::createStore(folder(number) + QStringLiteral("/rb.mdb"));
        change(number, [](Database& store) { store.execute("UPDATE serialno SET getstarted = 'Close'"); });
    }
}

void OtherBooks::change(quint32 number, const std::function<void(Database&)>& work) {
    ensure(number);
    {
        Database store;
        store.open(folder(number) + QStringLiteral("/rb.mdb"));
        store.execute("PRAGMA synchronous = OFF");
        work(store);
    }
    note();
}

QString OtherBooks::diveAt(Database& store, quint32 which) const {
    const auto rows = platform::StoredRows(store).read("SELECT DiveID FROM main ORDER BY DiveID");
    return rows.empty() ? QString() : rows[which % rows.size()].at(0).text();
}

void OtherBooks::putDive(quint32 number, const MadeDive& dive, quint32 form) {
    change(number, [&](Database& store) {
        const auto rows = platform::StoredRows(store).read("SELECT MAX(DiveID) FROM main");
        const QString last = rows.front().at(0).text();
        const QString diveid =
            QStringLiteral("D%1").arg(last.mid(1).toInt() + 1 + form % 2, 7, 10, QLatin1Char('0'));
        const QString location = QStringLiteral("B%1.txt").arg(form % 4);
        QString dbtxtname = form % 13 == 0 ? QString() : textName(number, form, hasFile(form));
        if (hasFile(form) && !dbtxtname.isEmpty()) {
            QSet<QString> named;
            for (const auto& row : platform::StoredRows(store).read("SELECT dbtxtname FROM main.main")) {
                named += row.at(0).text();
            }
            dbtxtname = put(folder(number) + QStringLiteral("/dbtxt"), dbtxtname, dive.text, named);
            if (form % 3 != 0) {
                put(folder(number) + QStringLiteral("/old"), location, dive.text);
            }
        }
        insertDive(store, diveid, dive, dbtxtname, location, form);
    });
}

void OtherBooks::changeDetails(quint32 number, quint32 which, quint32 text) {
    change(number, [&](Database& store) {
        const QString diveid = diveAt(store, which);
        constexpr std::array<const char*, 6> kFields{"site",     "weather", "Coments",
                                                     "sitenote", "Suit",    "Location"};
        const QByteArray field = kFields[text % kFields.size()];
        platform::StoredRows(store).change("UPDATE main.main SET " + field + " = ?1 WHERE DiveID = ?2",
                                           {words(text / 8), diveid});
        if (text % 4 == 0 && !diveid.isEmpty()) {
            insert(store, "buddylist", {"diveid", "buddylist"}, {diveid, words(text / 3)});
        }
    });
}

void OtherBooks::removeDive(quint32 number, quint32 which) {
    change(number, [&](Database& store) {
        const QString diveid = diveAt(store, which);
        for (const char* table : {"main", "gas", "tissue", "buddylist"}) {
            platform::StoredRows(store).change(QByteArray("DELETE FROM main.") + table + " WHERE diveid = ?1",
                                               {diveid});
        }
    });
}

/// Imported twice over there: the same rows under another number.
void OtherBooks::repeatDive(quint32 number, quint32 which) {
    change(number, [&](Database& store) {
        platform::StoredRows rows(store);
        const QString diveid = diveAt(store, which);
        const QString last = rows.read("SELECT MAX(DiveID) FROM main").front().at(0).text();
        const QString fresh = QStringLiteral("D%1").arg(last.mid(1).toInt() + 1, 7, 10, QLatin1Char('0'));
        for (const char* table : {"main", "gas", "tissue"}) {
            for (const platform::StoredRow& row :
                 rows.read(QByteArray("SELECT * FROM main.") + table + " WHERE diveid = ?1", {diveid})) {
                QStringList names;
                std::vector<StoredValue> values;
                for (const auto& [name, value] : row.fields) {
                    const bool isId = name.compare("diveid", Qt::CaseInsensitive) == 0;
                    const bool isNote = which % 2 == 1 && name.compare("Coments") == 0;
                    names += u'"' + QString::fromUtf8(name) + u'"';
                    values.push_back(isId ? StoredValue(fresh) : isNote ? StoredValue(words(which)) : value);
                }
                insert(store, table, names, values);
            }
        }
    });
}

void OtherBooks::changeFile(quint32 number, quint32 which) {
    const QString place = folder(number) + QStringLiteral("/dbtxt/");
    const QStringList names = QDir(place).entryList(QDir::Files);
    if (!names.isEmpty()) {
        QFile file(place + names[static_cast<qsizetype>(which) % names.size()]);
        if (!file.open(QIODevice::Append) || file.write("\r\n") != 2) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
    }
    note();
}

void OtherBooks::removeFile(quint32 number, quint32 which) {
    const QString place =
        folder(number) + (which % 3 == 0 ? QStringLiteral("/old/") : QStringLiteral("/dbtxt/"));
    const QStringList names = QDir(place).entryList(QDir::Files);
    if (!names.isEmpty()) {
        QFile::remove(place + names[static_cast<qsizetype>(which / 3) % names.size()]);
    }
    note();
}

void OtherBooks::addEntry(quint32 number, quint32 which) {
    change(number, [&](Database& store) {
        const QString table = listTables()[static_cast<qsizetype>(which) % listTables().size()];
        const QString text = words(which / 4);
        const QString value = which % 3 == 0 ? text.toUpper() + u' ' : text;
        insert(store, qPrintable(table), {table}, {value});
    });
}

void OtherBooks::replaceStore(quint32 number, quint32 which) {
    ensure(number);
    const QString store = folder(number) + QStringLiteral("/rb.mdb");
    const QString fresh = store + QStringLiteral(".new");
    QFile::copy(store, fresh);
    if (which % 3 != 0) {
        Database copy;
        copy.open(fresh);
        platform::StoredRows(copy).change("DELETE FROM main.main WHERE DiveID = ?1", {diveAt(copy, which)});
    }
    if (!platform::moveFile(fresh, store)) {
        qFatal("cannot replace %s", qPrintable(store));
    }
    note();
}

void OtherBooks::removeFolder(quint32 number) {
    QDir(folder(number)).removeRecursively();
    note();
}

void OtherBooks::note() {
    files_ = allFiles();
}

QMap<QString, QByteArray> OtherBooks::allFiles() const {
    QMap<QString, QByteArray> files;
    QDirIterator found(directory_.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (found.hasNext()) {
        const QString path = found.next();
        files[path.mid(directory_.path().size() + 1)] =
            platform::readFile(path).value_or(QByteArray("(not readable)"));
    }
    return files;
}

QString OtherBooks::whatChanged() const {
    const QMap<QString, QByteArray> now = allFiles();
    for (auto file = now.begin(); file != now.end(); ++file) {
        if (!files_.contains(file.key()) || files_[file.key()] != *file) {
            return QStringLiteral("the other logbook's file %1 is not as it was").arg(file.key());
        }
    }
    return now.size() == files_.size() ? QString() : QStringLiteral("a file of another logbook is gone");
}

} // namespace benthor::tests
