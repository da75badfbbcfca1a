#include "logbook/chosenrows.h"

#include <algorithm>

namespace benthor::logbook {

namespace {

constexpr qsizetype kNamesShown = 5;
constexpr qsizetype kLongestName = 60;

/// On one line, and no longer than a box is wide.
QString shownName(const QString& name) {
    const QString line = name.left(2 * kLongestName).simplified();
    return line.size() > kLongestName ? line.left(kLongestName) + QChar(0x2026) : line;
}

} // namespace

int rowInHand(const std::vector<int>& clicks, const std::vector<int>& blue, int current) {
    const auto clicked = std::find_if(clicks.rbegin(), clicks.rend(), [&blue](int row) {
        return std::binary_search(blue.begin(), blue.end(), row);
    });
    if (clicked != clicks.rend()) {
        return *clicked;
    }
    return blue.empty() ? current : blue.front();
}

void noteClick(std::vector<int>& clicks, int row) {
    std::erase(clicks, row);
    clicks.push_back(row);
}

QString deletedDivesText(const QStringList& names) {
    QString text =
        names.size() == 1 ? QStringLiteral("1 dive:") : QStringLiteral("%1 dives:").arg(names.size());
    for (const QString& name : names.first(std::min(kNamesShown, names.size()))) {
        text += QLatin1Char('\n') + shownName(name);
    }
    if (names.size() > kNamesShown) {
        text += QStringLiteral("\nand %1 more").arg(names.size() - kNamesShown);
    }
    return text;
}

} // namespace benthor::logbook
