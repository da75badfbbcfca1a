#pragma once

#include "gas/setuptext.h"
#include "tests/gas/vectors.h"

namespace benthor::tests {

inline const QDateTime kMoment(QDate(2017, 9, 27), QTime(1, 21, 18));

/// A plan as a screen shows it in that unit, with a text whose places are those of a setup.
inline gas::GasPlan shownPlan(const char* unit) {
    gas::GasPlan plan = planIn(QString::fromLatin1(unit));
    plan.Text5 = QStringLiteral("1.4");
    plan.Text7 = gas::blanktext();
    return plan;
}

} // namespace benthor::tests
