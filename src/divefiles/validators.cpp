#include "divefiles/validators.h"

#include "platform/textformat.h"
#include "session/process.h"
#include "store/access.h"

#include <algorithm>

namespace benthor::divefiles {

namespace {

using Cell = FieldText;

constexpr qsizetype kDiveIdLength = 8;
constexpr qsizetype kNumberLength = 4;

/// In characters, not bytes.
qsizetype length(std::string_view utf8) {
    return std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & '\xC0') != '\x80'; });
}

std::string_view trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

qsizetype trimmedLength(const Cell& cell) {
    return cell ? length(trimmed(*cell)) : 0;
}

bool isNumber(const Cell& cell) {
    if (!cell) {
        return false;
    }
    // Of the usual forms, digits and digits with the line's end that an import leaves, there are millions.
    const std::string_view number = cell->ends_with('\r') ? cell->substr(0, cell->size() - 1) : *cell;
    const bool digits = !number.empty() && std::all_of(number.begin(), number.end(),
                                                       [](char c) { return c >= '0' && c <= '9'; });
    return digits ||
           platform::isNumeric(QString::fromUtf8(cell->data(), static_cast<qsizetype>(cell->size())));
}

bool isDiveId(const Cell& cell) {
    return !cell || length(*cell) == kDiveIdLength;
}

/// The message for one field of main, or nothing.
const char* mainfault(int position, const Cell& cell) {
    switch (position) {
    case 0:
        return isDiveId(cell) ? nullptr : "Main Profile - Error in Main DiveID format !";
    case 6:
        return cell ? nullptr : "Main Profile - Error in Start Date format !";
    case 7:
        return cell ? nullptr : "Main Profile - Error in Finished Date format !";
    case 9:
        return cell && trimmedLength(cell) <= 8 ? nullptr : "Main Profile - Error in Depth format !";
    case 15:
        return !cell || (trimmedLength(cell) <= 8 && trimmedLength(cell) >= 2)
                   ? nullptr
                   : "Main Profile - Error in version format !";
    case 16:
        if (trimmedLength(cell) > 3) {
            return "Main Profile - Error in interval number!";
        }
        return isNumber(cell) ? nullptr : "Main Profile - Error in interval number format !";
    default:
        return nullptr;
    }
}

const char* gasBlank(int position) {
    switch (position) {
    case 0:
        return "Gas Profile - Blank in DiveID !";
    case 4:
        return "Gas Profile - Blank in Gas Mode !";
    case 5:
        return "Gas Profile - Blank in Gas Status !";
    default:
        return "Gas Profile - Blank in Gas Type !";
    }
}

const char* gasfault(int position, const Cell& cell) {
    if (position > 5) {
        return nullptr;
    }
    const qsizetype size = trimmedLength(cell);
    if (size == 0) {
        return gasBlank(position);
    }
    switch (position) {
    case 0:
        return isDiveId(cell) ? nullptr : "Gas Profile - Error in DiveID format !";
    case 1:
        return size == kNumberLength && isNumber(cell) ? nullptr
                                                       : "Gas Profile - Error in Gas Type1 format !";
    case 2:
        return size <= 3 && isNumber(cell) ? nullptr : "Gas Profile - Error in Gas Type2 format !";
    case 3:
        return size <= 3 ? nullptr : "Gas Profile - Error in Gas Type3 format !";
    case 4:
        return size <= 4 ? nullptr : "Gas Profile - Error in Gas Mode format !";
    default:
        return size <= 4 && isNumber(cell) ? nullptr : "Gas Profile - Error in Gas Status format !";
    }
}

const char* tissuefault(int position, const Cell& cell) {
    const qsizetype size = trimmedLength(cell);
    switch (position) {
    case 0:
        if (size == 0) {
            return "Tissue Profile - Blank in Tissue DiveID !";
        }
        return isDiveId(cell) ? nullptr : "Tissue Profile - Error in Tissue DiveID format !";
    case 1:
        return size == kNumberLength && isNumber(cell) ? nullptr
                                                       : "Tissue Profile - Error in Tissue Type1 format !";
    case 2:
        return size <= 3 && isNumber(cell) ? nullptr : "Tissue Profile - Error in Tissue format !";
    case 3:
        return size <= 4 && isNumber(cell) ? nullptr : "Tissue Profile - Error in Tissue format !";
    default:
        return nullptr;
    }
}

using FieldFault = const char* (*)(int position, const Cell& cell);

QStringList faults(platform::Recordset& rows, const char* noRows, FieldFault fieldFault) {
    if (rows.bof() && rows.eof()) {
        return {QLatin1String(noRows)};
    }
    QStringList messages;
    for (; !rows.eof(); rows.moveNext()) {
        for (int position = 0; position < rows.fieldCount(); ++position) {
            if (const char* const message = fieldFault(position, rows.utf8(position))) {
                messages += QLatin1String(message);
                break;
            }
        }
    }
    return messages;
}

bool isGood(std::span<const FieldText> fields, FieldFault fieldFault) {
    for (size_t position = 0; position < fields.size(); ++position) {
        if (fieldFault(static_cast<int>(position), fields[position]) != nullptr) {
            return false;
        }
    }
    return true;
}

/// The dive in hand, or the first dive of the system.
QString checkedDive(platform::Database& database) {
    if (!process().currentdiveid.isEmpty()) {
        return process().currentdiveid;
    }
    store::openmain(database, platform::sqlWith("SELECT DiveID, systemid FROM main  WHERE SystemID = '",
                                                process().divesystem, "'  order by DiveID "));
    const platform::Recordset& dives = process().mainrecordset;
    const platform::Value first = dives.eof() ? platform::Value() : dives.value(0);
    return first.isNull() ? QStringLiteral("0") : first.text();
}

void check(platform::Database& database, const char* select, QStringList (*rowFaults)(platform::Recordset&)) {
    store::openmain(database, platform::sqlWith(select, checkedDive(database), "'"));
    for (const QString& message : rowFaults(process().mainrecordset)) {
        process().problemtext += QLatin1Char('\r') + message;
    }
}

} // namespace

QStringList mainfaults(platform::Recordset& rows) {
    return faults(rows, "Main Profile not found !", mainfault);
}

QStringList gasfaults(platform::Recordset& rows) {
    return faults(rows, "Gas Profile not found !", gasfault);
}

QStringList tissuefaults(platform::Recordset& rows) {
    return faults(rows, "Tissue Profile not found !", tissuefault);
}

bool mainrowisgood(std::span<const FieldText> fields) {
    return isGood(fields, mainfault);
}

bool gasrowisgood(std::span<const FieldText> fields) {
    return isGood(fields, gasfault);
}

bool tissuerowisgood(std::span<const FieldText> fields) {
    return isGood(fields, tissuefault);
}

void checkmain(platform::Database& database) {
    check(database, "SELECT * FROM main  where DiveID = '", mainfaults);
}

void checkgas(platform::Database& database) {
    check(database, "SELECT * FROM GAS  where DiveID = '", gasfaults);
}

void checktissue(platform::Database& database) {
    check(database, "SELECT * FROM tissue  where DiveID = '", tissuefaults);
}

void checkdive(platform::Database& database) {
    process().problemtext.clear();
    checkmain(database);
    checkgas(database);
    checktissue(database);
}

bool diveopens(QStringView problemtext) {
    return problemtext.isEmpty() || problemtext.contains(QLatin1String("Gas")) ||
           problemtext.contains(QLatin1String("issue"));
}

} // namespace benthor::divefiles
