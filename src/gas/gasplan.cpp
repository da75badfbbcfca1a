#include "gas/gasplan.h"

#include <algorithm>

namespace benthor::gas {

GasPlan::GasPlan() {
    static constexpr std::array<std::array<int, 2>, kGases> kStock{
        {{21, 0}, {99, 0}, {80, 0}, {50, 0}, {40, 0}, {36, 0}, {32, 0}, {18, 35}, {14, 50}, {11, 65}}};
    for (size_t i = 0; i < rows.size(); ++i) {
        rows[i].name = QStringLiteral("Gas %1").arg(i);
        rows[i].O2 = QString::number(kStock[i][0]);
        rows[i].He = QString::number(kStock[i][1]);
        rows[i].HeColour = kStock[i][1] > 0 ? kLightYellow : kLightCyan;
    }
    rows[0].active = true;
}

int GasPlan::activecount() const {
    return static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const GasRow& row) { return row.active; }));
}

} // namespace benthor::gas
