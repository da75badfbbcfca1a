#include "logbook/sheetlines.h"

#include "logbook/divelist.h"

#include <algorithm>
#include <chrono>

namespace benthor::logbook {

namespace {

using divefiles::FieldText;

constexpr size_t kMostMade = 4096; ///< a column, so that values that are all different take no room
constexpr int kMoments = 6;        ///< position of the first of two fields that hold a moment
constexpr int kMonthAt = 5;
constexpr int kDayAt = 8;
constexpr int kHourAt = 11;

/// Whether a cell shows the field as it lies in the store.
bool isShownPlain(int position) {
    switch (position) {
    case 6:
    case 7:
    case 8:
    case 9:
    case 16:
    case 21:
    case 22:
        return false;
    default:
        return true;
    }
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void addTrimmed(std::string_view text, std::string& lines) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        lines += "NA,";
        return;
    }
    lines.append(text.substr(first, text.find_last_not_of(' ') + 1 - first)) += ',';
}

int twoDigits(std::string_view text, size_t at) {
    return (text[at] - '0') * 10 + (text[at + 1] - '0');
}

/// "yyyy-mm-dd hh:mm:ss" of a moment that there is.
bool isMoment(std::string_view text) {
    constexpr std::string_view kForm = "dddd-dd-dd dd:dd:dd";
    if (text.size() != kForm.size()) {
        return false;
    }
    for (size_t i = 0; i < kForm.size(); ++i) {
        if (kForm[i] == 'd' ? text[i] < '0' || text[i] > '9' : text[i] != kForm[i]) {
            return false;
        }
    }
    const int year = twoDigits(text, 0) * 100 + twoDigits(text, 2);
    const std::chrono::year_month_day day(
        std::chrono::year(year), std::chrono::month(static_cast<unsigned>(twoDigits(text, kMonthAt))),
        std::chrono::day(static_cast<unsigned>(twoDigits(text, kDayAt))));
    return year > 0 && day.ok() && twoDigits(text, kHourAt) < 24 && twoDigits(text, kHourAt + 3) < 60 &&
           twoDigits(text, kHourAt + 6) < 60;
}

} // namespace

/// Only the name of the month is another one in each; the rest of a moment's text are the digits that lie in
/// the store.
SheetLines::SheetLines(const ListedDives& dives, const QString& depthunit)
    : dives_(dives)
    , depthunit_(depthunit) {
    for (size_t month = 0; month < months_.size(); ++month) {
        const QString first = QStringLiteral("2001-%1-01 00:00:00").arg(month + 1, 2, 10, QLatin1Char('0'));
        const QString text = celltext(kMoments, platform::Value(first), depthunit_);
        months_[month] = text.left(text.indexOf(QLatin1Char('/')) + 1).toStdString();
    }
}

void SheetLines::add(int number, std::string& lines) {
    constexpr int kAhead = 16;
    dives_.fetch(number + kAhead);
    std::array<FieldText, kSheetColumns> fields;
    const size_t count = dives_.takeFields(number, fields);
    for (size_t column = 0; column < count; ++column) {
        addCell(column, fields[column], lines);
    }
    lines += "\r\n";
}

bool SheetLines::addMoment(std::string_view text, std::string& lines) const {
    if (!isMoment(text)) {
        return false;
    }
    lines += months_[static_cast<size_t>(twoDigits(text, kMonthAt)) - 1];
    lines.append(text, kDayAt, 2) += '/';
    lines.append(text, 0, 4) += ' ';
    lines.append(text, kHourAt) += ',';
    return true;
}

void SheetLines::addCell(size_t column, const FieldText& field, std::string& lines) {
    const int position = dives_.position(static_cast<int>(column));
    const std::string_view text = field.value_or(std::string_view());
    if (!field || (isShownPlain(position) && isAscii(text))) {
        return addTrimmed(text, lines);
    }
    if ((position == kMoments || position == kMoments + 1) && addMoment(text, lines)) {
        return;
    }
    auto& made = made_[column];
    if (const auto found = made.find(std::string(text)); found != made.end()) {
        lines += found->second;
        return;
    }
    const platform::Value value(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    std::string cell;
    addTrimmed(celltext(position, value, depthunit_).toStdString(), cell);
    lines += cell;
    if (made.size() >= kMostMade) {
        made.clear();
    }
    made.emplace(text, std::move(cell));
}

} // namespace benthor::logbook
