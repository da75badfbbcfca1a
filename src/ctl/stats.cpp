#include "ctl/stats.h"

#include "ctl/commands.h"
#include "ctl/logbook.h"
#include "ctl/looking.h"
#include "ctl/table.h"
#include "exports/numbertext.h"

#include <QJsonArray>
#include <QSet>

#include <array>
#include <cmath>

namespace benthor::ctl {

namespace {

/// A sum of decimals, without what their binary form adds to it.
double rounded(double sum) {
    constexpr double kMillionth = 1e6;
    constexpr double kExact = 1e9; // beyond it there is nothing to take away
    return std::abs(sum) < kExact ? std::round(sum * kMillionth) / kMillionth : sum;
}

QStringList cellsOf(const QString& caption, const Totals& totals) {
    return {caption, QString::number(totals.dives), durationWords(totals.seconds),
            totals.maxdepth
                ? QString::fromLatin1(exports::numberText(*totals.maxdepth)) + QStringLiteral(" m")
                : QString(),
            std::isfinite(totals.otu) ? QString::fromLatin1(exports::numberText(rounded(totals.otu)))
                                      : QString()};
}

} // namespace

void Totals::add(const exports::DiveFigures& figures) {
    ++dives;
    seconds += figures.duration.value_or(0);
    otu += figures.otu.value_or(0);
    if (figures.maxdepth) {
        maxdepth = std::max(maxdepth.value_or(*figures.maxdepth), *figures.maxdepth);
    }
}

QJsonObject Totals::json() const {
    return {{QStringLiteral("dives"), dives},
            {QStringLiteral("seconds"), rounded(seconds)},
            {QStringLiteral("max_depth_m"), maxdepth ? QJsonValue(*maxdepth) : QJsonValue()},
            {QStringLiteral("otu"), rounded(otu)}};
}

void Statistics::add(const exports::DiveFigures& figures) {
    all.add(figures);
    if (figures.start.isValid()) {
        years[figures.start.toString(QStringLiteral("yyyy"))].add(figures);
        months[figures.start.toString(QStringLiteral("yyyy-MM"))].add(figures);
    }
}

QJsonObject Statistics::json() const {
    QJsonArray yearly;
    for (const auto& [year, totals] : years) {
        QJsonObject object = totals.json();
        object.insert(QStringLiteral("year"), year.toInt());
        yearly.append(object);
    }
    QJsonArray monthly;
    for (const auto& [month, totals] : months) {
        QJsonObject object = totals.json();
        object.insert(QStringLiteral("month"), month);
        monthly.append(object);
    }
    QJsonObject object = all.json();
    object.insert(QStringLiteral("years"), yearly);
    object.insert(QStringLiteral("months"), monthly);
    return object;
}

QStringList Statistics::lines() const {
    Table table({QString(), QStringLiteral(">Dives"), QStringLiteral(">Duration"), QStringLiteral(">Max"),
                 QStringLiteral(">OTU")});
    table.add(cellsOf(QStringLiteral("All"), all));
    for (const auto* const parts : {&years, &months}) {
        for (const auto& [caption, totals] : *parts) {
            table.add(cellsOf(caption, totals));
        }
    }
    return table.lines(terminalWidth());
}

Status runStats(const Arguments& arguments, Output& output) {
    ReadLogbook logbook(requireFolder(arguments.folder));
    Statistics statistics;
    QSet<QString> known; // of several rows with one identifier the first is the dive's
    constexpr std::array kFields{u"DiveID", u"startdate", u"Duration", u"MaxDepth", u"otu"};
    platform::Recordset rows = logbook.database().openRecordset(
        "SELECT DiveID, startdate, Duration, MaxDepth, otu FROM main ORDER BY rowid");
    for (; !rows.eof(); rows.moveNext()) {
        exports::StoreFields row;
        for (size_t i = 0; i < kFields.size(); ++i) {
            const platform::Value value = rows.value(static_cast<int>(i));
            row.emplace_back(QString::fromUtf16(kFields[i]),
                             value.isNull() ? std::nullopt : std::optional(value.text()));
        }
        const exports::DiveFigures figures = exports::figuresOf(row);
        const QString id = figures.id.toCaseFolded();
        if (id.isEmpty() || !known.contains(id)) {
            known += id;
            statistics.add(figures);
        }
    }
    if (arguments.json) {
        output.json(statistics.json());
        return kDone;
    }
    for (const QString& line : statistics.lines()) {
        output.line(line);
    }
    return kDone;
}

} // namespace benthor::ctl
