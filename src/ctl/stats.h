#pragma once

#include "exports/wholedive.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <map>

namespace benthor::ctl {

/// What some dives come to.
struct Totals {
    int dives = 0;
    double seconds = 0;
    std::optional<double> maxdepth; ///< metres; nothing where no dive has one
    double otu = 0;

    void add(const exports::DiveFigures& figures);
    QJsonObject json() const;
};

/// All dives together, and by the year and the month ("2008", "2008-07") in which they began. Dives without a
/// start are in neither.
struct Statistics {
    Totals all;
    std::map<QString, Totals> years, months;

    void add(const exports::DiveFigures& figures);
    QJsonObject json() const;
    QStringList lines() const;
};

} // namespace benthor::ctl
