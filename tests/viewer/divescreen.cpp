#include "divescreen.h"

#include "tests/profile/divetext.h"

#include <QJsonArray>
#include <QLocale>

namespace benthor::viewer {

using platform::Value;

DiveScreen::DiveScreen()
    : before_(platform::ProgramFolder::current())
    , slot_([] { return new rbinterface; }) {
    platform::ProgramFolder::setCurrent(program_.folder);
    process().unitoverride.clear();
    process().depthunit.clear();
    process().divesystem = QStringLiteral("KD3");
}

DiveScreen::~DiveScreen() {
    slot_.unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    platform::ProgramFolder::setCurrent(before_);
}

void DiveScreen::putRow(const char* table, const QList<std::pair<QString, Value>>& fields) {
    platform::Recordset rows = process().database.openForAdding(table);
    rows.addNew();
    for (const auto& [name, value] : fields) {
        rows.set(name, value);
    }
    rows.update();
}

void DiveScreen::put(const profile::DiveVector& vector) {
    platform::Transaction all(process().database);
    const QJsonObject main = vector.stored["main"].toObject();
    QList<std::pair<QString, Value>> fields;
    for (auto field = main.begin(); field != main.end(); ++field) {
        const QString text = field.value().toString();
        const bool isDate = field.key().endsWith(QStringLiteral("date"));
        fields.append({field.key(),
                       isDate ? Value(QLocale::c().toDateTime(text, QStringLiteral("MMM/dd/yyyy HH:mm:ss")))
                              : Value(text)});
    }
    putRow("main", fields);
    const QString id = main["DiveID"].toString();
    for (const QJsonValueConstRef row : vector.stored["gas"].toArray()) {
        const QJsonArray gas = row.toArray();
        putRow("gas", {{"diveid", id},
                       {"Gastype", gas[0].toString()},
                       {"GasN2", gas[1].toString()},
                       {"GasHe", gas[2].toString()},
                       {"gasmod", gas[3].toString()},
                       {"Gasstat", gas[4].toString()}});
    }
    all.commit();
    program_.put(QStringLiteral("dbtxt"), main["dbtxtname"].toString(), vector.text);
    process().currentdiveid = id;
    process().unitoverride = vector.feet ? QStringLiteral("Feet") : QStringLiteral("metre");
}

void DiveScreen::put(const QByteArray& text) {
    const QString id = QStringLiteral("D0000001");
    platform::Transaction all(process().database);
    putRow("main", {{"DiveID", id},
                    {"dbtxtname", "dive.txt"},
                    {"Location", "Wreck"},
                    {"Interval", "10"},
                    {"Duration", "41:7"},
                    {"MaxDepth", "23.400"},
                    {"systemid", "KD3"}});
    putRow("gas", {{"diveid", id}, {"Gastype", "0"}, {"GasN2", "79"}, {"GasHe", "0"}, {"gasmod", "660"}});
    putRow("gas", {{"diveid", id}, {"Gastype", "1"}, {"GasN2", "68"}, {"GasHe", "0"}, {"gasmod", "465"}});
    all.commit();
    program_.put(QStringLiteral("dbtxt"), QStringLiteral("dive.txt"), text);
    process().currentdiveid = id;
}

void DiveScreen::setField(const char* field, const Value& value) {
    platform::Recordset row = process().database.openRecordset("SELECT * FROM main");
    row.edit();
    row.set(QString::fromLatin1(field), value);
    row.update();
}

QString DiveScreen::displayWord() {
    return process().database.openRecordset("SELECT * FROM Display").value(0).text();
}

rbinterface& DiveScreen::show() {
    slot_.get().resize(1366, 768);
    slot_.show();
    slot_.get().resize(1366, 768);
    QCoreApplication::processEvents();
    return slot_.get();
}

QByteArray sampleLine(int depthcount, const QByteArray& more) {
    QByteArray line = "1," + QByteArray::number(depthcount) + ",0,21,M0,T20,A900";
    return more.isEmpty() ? line : line + ',' + more;
}

QByteArray steadyDive(int samples) {
    QByteArrayList lines;
    for (int i = 1; i <= samples; ++i) {
        lines += "1," + QByteArray::number(i % 200 * 10) + (i <= samples / 2 ? ",0" : ",1") +
                 ",130,M0,T20,A900,F131,G130,H129,I130,J6";
    }
    return profile::wholeDive(lines);
}

QString textOf(rbinterface& screen, const char* name) {
    return control<QWidget>(screen, name).property("text").toString();
}

} // namespace benthor::viewer
