#include "store/identifiers.h"

#include "platform/textformat.h"
#include "session/process.h"
#include "store/access.h"
#include "store/diveinhand.h"

namespace benthor::store {

namespace {

constexpr int kDigits = 7;

void writeserialno(platform::Database& database, const QString& identifier) {
    platform::Recordset counter = database.openRecordset("SELECT * FROM serialno ");
    counter.edit();
    counter.set(u"serial_no", identifier);
    counter.update();
}

/// The identifier is taken before its row is written; both stand in one transaction of the caller or of this
/// routine.
void addDive(const QString& identifier, const platform::Value* version) {
    writeserialno(process().database, identifier);
    removeleftovers(process().database, identifier);
    platform::Recordset& dives = process().mainrecordset;
    dives = process().database.openForAdding("MAIN");
    process().querytext = QStringLiteral("SELECT * FROM MAIN");
    dives.addNew();
    dives.set(u"diveid", identifier);
    if (version) {
        dives.set(u"Version", *version);
    }
    dives.update();
    process().currentdiveid = identifier;
}

platform::Value lastIdentifier() {
    return process().database.openRecordset("SELECT * FROM SERIALNO").value(u"serial_no");
}

} // namespace

QString nextidentifier(const platform::Value& last) {
    const QString digits = last.isNull() ? QStringLiteral("0") : last.text().right(kDigits);
    QString number = platform::formatNumber(platform::leadingNumber(digits) + 1, u"0");
    if (number.size() > kDigits) {
        return number;
    }
    return QLatin1Char('D') + number.rightJustified(kDigits, QLatin1Char('0'));
}

void newdive(const QString& version) {
    const platform::Value trimmed = platform::trimBlanks(version);
    DiveInHand inHand;
    platform::Transaction transaction(process().database);
    addDive(nextidentifier(lastIdentifier()), &trimmed);
    putsystemid(QStringLiteral("KD3"));
    transaction.commit();
    inHand.keep();
}

void newdivebare() {
    DiveInHand inHand;
    platform::Transaction transaction(process().database);
    const platform::Value last = lastIdentifier();
    if (last.isNull()) {
        throw platform::StoreError(QStringLiteral("The counter of dives was never written."));
    }
    addDive(nextidentifier(last), nullptr);
    transaction.commit();
    inHand.keep();
}

/// A dive that is deleted leaves its buddies. What stands under a number that no dive bears would show up on
/// the next one that gets it.
void removeleftovers(platform::Database& database, const QString& identifier) {
    using platform::sqlWith;
    const platform::Recordset bearers =
        database.openRecordset(sqlWith("SELECT COUNT(*) FROM main WHERE DiveID = '", identifier, "'"));
    if (bearers.value(0).text() != QLatin1String("0")) {
        return;
    }
    database.execute(sqlWith("DELETE FROM gas WHERE diveid = '", identifier, "'"));
    database.execute(sqlWith("DELETE FROM tissue WHERE diveid = '", identifier, "'"));
    if (database.updatable(QStringLiteral("buddylist"))) { // not every store has it
        database.execute(sqlWith("DELETE FROM buddylist WHERE diveid = '", identifier, "'"));
    }
}

QString takeidentifier(platform::Database& database) {
    syncserialno(database);
    const QString fresh =
        nextidentifier(database.openRecordset("SELECT * FROM SERIALNO").value(u"serial_no"));
    writeserialno(database, fresh);
    removeleftovers(database, fresh);
    return fresh;
}

void syncserialno(platform::Database& database) {
    // The last one alone: it is asked for behind each dive that is deleted.
    openmain(database, "SELECT * FROM main order by DiveID desc, rowid desc LIMIT 1 ");
    const platform::Recordset& dives = process().mainrecordset;
    QString last = QStringLiteral("D0000000");
    if (!dives.eof()) {
        last = dives.value(u"diveid").text();
    }
    writeserialno(database, last);
}

void syncserialno() {
    syncserialno(process().database);
}

} // namespace benthor::store
