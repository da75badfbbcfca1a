#include "store/jet/jetdates.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace benthor::store {

namespace {

using namespace std::chrono;

constexpr sys_days kEpoch = year{1899} / December / 30;
constexpr int kDaySeconds = 86400;

std::string formatted(const year_month_day& date, int second) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), second / 3600,
                  second / 60 % 60, second % 60);
    return text.data();
}

/// The number that stands at `at` in `count` digits; -1 where it does not.
int digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return -1;
        }
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

/// 1 to 12; 0 for what is no month.
unsigned monthOf(std::string_view name) {
    constexpr std::array<std::string_view, 12> kNames{"jan", "feb", "mar", "apr", "may", "jun",
                                                      "jul", "aug", "sep", "oct", "nov", "dec"};
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto found = std::find(kNames.begin(), kNames.end(), lower);
    return found == kNames.end() ? 0 : static_cast<unsigned>(found - kNames.begin()) + 1;
}

} // namespace

std::optional<std::string> datetext(double days) {
    constexpr double kMost = 2958466;  // the first day of the year 10000
    constexpr double kLeast = -657435; // the last of the year 99
    if (!(days > kLeast && days < kMost)) {
        return std::nullopt;
    }
    const double whole = std::trunc(days);
    auto second = static_cast<int>(std::lround(std::abs(days - whole) * kDaySeconds));
    sys_days day = kEpoch + std::chrono::days(static_cast<int>(whole));
    if (second == kDaySeconds) {
        second = 0;
        day += std::chrono::days(1);
    }
    const year_month_day date(day);
    if (date.year() > year{9999}) {
        return std::nullopt;
    }
    return formatted(date, second);
}

std::optional<std::string> datefromtext(std::string_view text) {
    constexpr std::string_view kForm = "mmm/dd/yyyy hh:mm:ss";
    if (text.size() != kForm.size()) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        if (!std::isalpha(static_cast<unsigned char>(kForm[i])) && text[i] != kForm[i]) {
            return std::nullopt;
        }
    }
    const int day = digitsAt(text, 4, 2);
    const int inYear = digitsAt(text, 7, 4);
    const int hour = digitsAt(text, 12, 2);
    const int minute = digitsAt(text, 15, 2);
    const int second = digitsAt(text, 18, 2);
    if (day < 0 || inYear < 0 || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 ||
        second > 59) {
        return std::nullopt;
    }
    const year_month_day date(year{inYear}, month{monthOf(text.substr(0, 3))},
                              std::chrono::day{static_cast<unsigned>(day)});
    if (!date.ok()) {
        return std::nullopt;
    }
    return formatted(date, hour * 3600 + minute * 60 + second);
}

bool looksnumeric(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\f\v";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return false;
    }
    text = text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
    if (text.front() == '+' || text.front() == '-') {
        text.remove_prefix(1);
    }
    if (text.empty() || text.find_first_not_of("0123456789+-.eE") != std::string_view::npos) {
        return false;
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return end == text.data() + text.size() && error != std::errc::invalid_argument;
}

} // namespace benthor::store
