#include "exports/uddflosses.h"

#include "exports/losses.h"

#include <QRegularExpression>

namespace benthor::exports {

namespace {

/// Fields of the table main that the file holds, wholly or as far as they can be read.
constexpr std::array<const char*, 13> kHeld{"DiveID",   "site",     "startdate", "Duration", "MaxDepth",
                                            "Suit",     "divenote", "sitenote",  "Coments",  "Version",
                                            "Interval", "systemid", "datmos"};
constexpr std::array<ColumnKind, 5> kLostColumns{ColumnKind::Filter, ColumnKind::Batteries, ColumnKind::Co2,
                                                 ColumnKind::Thermistors, ColumnKind::Extra};

} // namespace

bool isUddfPressure(double millibar) {
    constexpr double kLeast = 0.01;
    return millibar >= kLeast && millibar <= kMostOfAll;
}

void addUddfLosses(const WholeDive& dive, LostKinds& lost) {
    addLostColumns(dive, kLostColumns, lost);
    addLostFields(dive, kHeld, lost);
    const QString pressure = fieldOf(dive.store, u"datmos").value_or(QString()).trimmed();
    if (!pressure.isEmpty() && !isUddfPressure(plainNumber(pressure).value_or(0))) {
        lost.insert(QStringLiteral("field datmos"));
    }
    addLostTissues(dive, lost);
    addLostGasStates(dive, lost);
    if (dive.gases.size() > profile::kMostGases) {
        lost.insert(QStringLiteral("gases beyond number 30"));
    }
}

void forEachNote(const WholeDive& dive, LostKinds& lost, const std::function<void(const QString&)>& line) {
    static const QRegularExpression picture(QStringLiteral("^Imageplz[012]"));
    for (const char16_t* const field : {u"divenote", u"sitenote", u"Coments"}) {
        const QString text = fieldOf(dive.store, field).value_or(QString());
        const auto isEnd = [](QChar letter) { return letter == u'\r' || letter == u'\n'; };
        for (auto from = text.begin(); from != text.end();) {
            const auto to = std::find_if(from, text.end(), isEnd);
            const QString note(from, to - from);
            if (picture.match(note).hasMatch()) {
                lost.insert(QStringLiteral("pictures"));
            } else if (!note.trimmed().isEmpty()) {
                line(note);
            }
            from = to == text.end() ? to : to + 1;
        }
    }
}

} // namespace benthor::exports
