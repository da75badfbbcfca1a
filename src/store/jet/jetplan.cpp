#include "store/jet/jetplan.h"

#include "platform/storedraft.h"
#include "store/schema.h"

#include <algorithm>

namespace benthor::store {

using platform::inQuotes;
using platform::StoreError;

namespace {

/// Room for a serial in a store of ours: one that is longer is a damaged line.
constexpr std::uint32_t kSerialRoom = 50;

const JetTable* findtable(const JetHead& head, std::string_view name) {
    const auto found = std::find_if(head.tables.begin(), head.tables.end(),
                                    [name](const JetTable& table) { return samename(table.name, name); });
    return found == head.tables.end() ? nullptr : &*found;
}

const JetField* findfield(const JetTable& table, std::string_view name) {
    const auto found = std::find_if(table.fields.begin(), table.fields.end(),
                                    [name](const JetField& field) { return samename(field.name, name); });
    return found == table.fields.end() ? nullptr : &*found;
}

std::string columnOf(const JetField& field) {
    switch (field.kind) {
    case pipe::Kind::Date:
        return inQuotes(field.name) + " DATETIME";
    case pipe::Kind::Bytes:
        return inQuotes(field.name) + " BLOB";
    default:
        return inQuotes(field.name) + " TEXT COLLATE NOCASE";
    }
}

JetTurn turnOf(const JetTable& table, const JetField& field) {
    const bool dated = samename(table.name, "main") &&
                       (samename(field.name, "startdate") || samename(field.name, "finisheddate"));
    return dated ? JetTurn::MaybeDate : JetTurn::Keep;
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
        text += (text.empty() ? "" : ", ") + part;
    }
    return text;
}

void requireDifferentNames(const JetTable& table) {
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
        if (findfield(table, table.fields[i].name) != &table.fields[i]) {
            throw StoreError(
                QStringLiteral("Two fields of its table \"%1\" have the name \"%2\".")
                    .arg(QString::fromStdString(table.name), QString::fromStdString(table.fields[i].name)));
        }
    }
}

} // namespace

/// Not tolower(): where the desktop is Turkish, that of I is no i.
bool samename(std::string_view one, std::string_view other) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [lower](char a, char b) { return lower(a) == lower(b); });
}

JetTablePlan plantable(const JetTable& table, const std::vector<KnownTable>& known) {
    requireDifferentNames(table);
    JetTablePlan plan;
    const auto ours = std::find_if(known.begin(), known.end(),
                                   [&](const KnownTable& one) { return samename(one.name, table.name); });
    const bool knows = ours != known.end();
    plan.table = knows ? ours->name : table.name;
    std::vector<std::string> columns;
    std::vector<std::string> names;
    std::vector<std::string> places;
    for (const JetField& field : table.fields) {
        const bool isThere = knows && std::any_of(ours->fields.begin(), ours->fields.end(),
                                                  [&](const auto& one) { return samename(one, field.name); });
        if (knows && !isThere) {
            plan.prepare.push_back("ALTER TABLE " + inQuotes(plan.table) + " ADD COLUMN " + columnOf(field));
        }
        columns.push_back(columnOf(field));
        names.push_back(inQuotes(field.name));
        places.push_back("?" + std::to_string(places.size() + 1));
        plan.turns.push_back(turnOf(table, field));
    }
    if (!knows) {
        plan.prepare.push_back("CREATE TABLE " + inQuotes(plan.table) + " (" + joined(columns) + ")");
    } else if (table.rows > 0) {
        // The row that a fresh store begins with makes way; without one of their own it stays.
        plan.prepare.push_back("DELETE FROM " + inQuotes(plan.table));
    }
    plan.insert =
        "INSERT INTO " + inQuotes(plan.table) + " (" + joined(names) + ") VALUES (" + joined(places) + ")";
    return plan;
}

void requiredivetables(const JetHead& head) {
    for (const char* const name : {"main", "gas", "tissue"}) {
        if (findtable(head, name) == nullptr) {
            throw StoreError(
                QStringLiteral("It is no dive store: it has no table \"%1\".").arg(QLatin1String(name)));
        }
    }
    if (findfield(*findtable(head, "main"), "DiveID") == nullptr) {
        throw StoreError(QStringLiteral("It is no dive store: its table \"main\" has no field \"DiveID\"."));
    }
}

std::string schemafor(const JetHead& head) {
    std::string schema = schemaText();
    const JetTable* const dives = findtable(head, "main");
    const JetField* const serial = dives == nullptr ? nullptr : findfield(*dives, "Suit");
    if (serial == nullptr || (serial->size > 0 && serial->size <= kSerialRoom)) {
        return schema;
    }
    const std::string check = "CHECK (length(Suit) <= " + std::to_string(kSerialRoom) + ")";
    const std::size_t at = schema.find(check);
    if (at == std::string::npos) {
        throw StoreError(QStringLiteral("The tables of a fresh store are not what they should be."));
    }
    const std::string room =
        serial->size == 0 ? std::string() : "CHECK (length(Suit) <= " + std::to_string(serial->size) + ")";
    return schema.replace(at, check.size(), room);
}

} // namespace benthor::store
