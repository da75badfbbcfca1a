// What a grid says to those who do not see it, and what they do to it.

#include "platform/grid/flexgrid.h"
#include "platform/grid/gridcellaccess.h"
#include "platform/toldcolour.h"

#include <QPointer>

namespace benthor::platform {

namespace {

struct ColourWord {
    ToldColour colour;
    const char* word;
};
/// A told colour means the same wherever it marks a row.
constexpr ColourWord kColourWords[]{
    {kToldBlue, "selected"}, {kToldYellow, "already stored"}, {kToldRed, "has errors"}};

bool isColour(const QColor& seen, ToldColour told) {
    const RedGreenBlue parts = redGreenBlue(told);
    return seen.isValid() && seen.rgb() == qRgb(parts.red, parts.green, parts.blue);
}

} // namespace

QString FlexGrid::rowName(int row) const {
    const QString told = rowNames_ && row > 0 && row < rows() ? rowNames_(row) : QString();
    return told.isEmpty() ? QStringLiteral("Row %1").arg(row) : told;
}

bool FlexGrid::isMarkedSelected(int row) const {
    // A row may leave its first column as it is.
    return row > 0 && (isColour(backColour(row, 0), kToldBlue) || isColour(backColour(row, 1), kToldBlue));
}

QString FlexGrid::rowWords(int row) const {
    QStringList words;
    const QString sign = cells_->sign(row).name;
    for (const ColourWord& one : kColourWords) {
        const QString word = QLatin1String(one.word);
        if ((isColour(backColour(row, 0), one.colour) || isColour(backColour(row, 1), one.colour)) &&
            !sign.contains(word, Qt::CaseInsensitive)) {
            words += word;
        }
    }
    if (!sign.isEmpty()) {
        words += sign;
    }
    return words.join(QStringLiteral(", "));
}

void FlexGrid::actAt(int row, int col, const QString& action) {
    if (!cells_->hasRow(row) || !cells_->hasColumn(col) || !isEnabled()) {
        return;
    }
    if (row == 0) {
        emit headerClicked(col);
        return;
    }
    const QPointer<FlexGrid> alive = this; // a receiver may unload the screen
    if (action == QAccessibleActionInterface::setFocusAction()) {
        setFocus(Qt::OtherFocusReason);
    }
    moveTo(row, col);
    if (alive) {
        showRow(row);
    }
    if (alive && action == QAccessibleActionInterface::pressAction()) {
        emit cellClicked(row, col, Qt::NoModifier);
        if (alive) {
            emit mouseReleased(row_, rowSel_, Qt::NoModifier);
        }
    } else if (alive && action == openAction()) {
        emit doubleClicked(row);
    } else if (alive && action == QAccessibleActionInterface::showMenuAction()) {
        const QRect cell = visualRect(cells_->index(row - 1, col));
        emit rightClicked(row, viewport()->mapToGlobal(cell.center()));
    }
}

} // namespace benthor::platform
