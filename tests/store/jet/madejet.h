#pragma once

#include "store/jet/jetrows.h"

#include <bit>
#include <functional>
#include <memory>

namespace benthor::tests {

using store::JetField;
using store::JetTable;
using store::JetValue;
using store::pipe::Kind;

using MadeValue = std::optional<std::string>;
using MadeRow = std::vector<MadeValue>;

/// A date as it travels.
inline std::string travelling(double days) {
    std::string bytes;
    for (auto bits = std::bit_cast<std::uint64_t>(days); bytes.size() < sizeof(bits); bits >>= 8) {
        bytes += static_cast<char>(bits & 0xFF);
    }
    return bytes;
}

inline JetField textField(const char* name, std::uint32_t size = 50) {
    return {name, Kind::Text, size};
}

struct MadeTable {
    std::string name;
    std::vector<JetField> fields;
    std::vector<MadeRow> rows;
};

/// Stands in for a Jet file: nothing here can write one.
class MadeJet : public store::JetRowSource {
public:
    explicit MadeJet(std::vector<MadeTable> tables)
        : tables_(std::move(tables)) {
        for (const MadeTable& table : tables_) {
            head_.tables.push_back({table.name, table.rows.size(), table.fields});
        }
    }

    store::JetHead& changedHead() { return head_; }
    /// Called before each row, with how many have gone.
    std::function<void(int)> beforeRow;
    std::function<void()> atEnd;

    const store::JetHead& head() override { return head_; }
    bool nextRow(std::vector<JetValue>& row) override {
        if (at_ == tables_[table_].rows.size()) {
            at_ = 0;
            ++table_;
            return false;
        }
        if (beforeRow) {
            beforeRow(given_++);
        }
        const MadeRow& made = tables_[table_].rows[at_++];
        row.clear();
        for (const MadeValue& value : made) {
            row.push_back(value ? JetValue(*value) : std::nullopt);
        }
        return true;
    }
    void finish() override {
        if (atEnd) {
            atEnd();
        }
    }

private:
    std::vector<MadeTable> tables_;
    store::JetHead head_;
    std::size_t table_ = 0;
    std::size_t at_ = 0;
    int given_ = 0;
};

/// A dive store with so many dives, each with two gases and three tissues, and one buddy in all.
inline std::vector<MadeTable> madeStore(int dives) {
    MadeTable main{"Main", {textField("diveid"), textField("Startcode"), textField("spare1")}, {}};
    MadeTable gas{"gas", {textField("diveid"), textField("Gastype"), textField("Gasstat")}, {}};
    MadeTable tissue{"tissue", {textField("diveid"), textField("Tissuetype"), textField("TissueHe")}, {}};
    for (int i = 1; i <= dives; ++i) {
        const std::string id = "D" + std::to_string(10000000 + i).substr(1);
        main.rows.push_back({id, std::to_string(400000000 + i), "s" + std::to_string(i)});
        for (const char* const number : {"0000", "0001"}) {
            gas.rows.push_back({id, number, "1\r"});
        }
        for (const char* const number : {"0000", "0001", "0002"}) {
            tissue.rows.push_back({id, number, "7\r"});
        }
    }
    MadeTable buddies{"buddylist", {textField("diveid"), textField("buddylist")}, {{"D0000001", "Ann"}}};
    MadeTable serial{"serialno", {textField("serial_no"), textField("getstarted")}, {{"D0000002", "Close"}}};
    MadeTable display{"Display", {textField("Display")}, {{"Feet"}}};
    return {main, gas, tissue, buddies, serial, display};
}

} // namespace benthor::tests
