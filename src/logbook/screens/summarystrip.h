#pragma once

#include "platform/look/widgets/card.h"
#include "platform/look/widgets/numberlabel.h"

#include <QStringList>

#include <vector>

namespace benthor::logbook {

/// A number label for a text of any length: what does not fit ends in dots, and the tip holds the whole.
class NameLabel : public look::NumberLabel {
    Q_OBJECT

public:
    explicit NameLabel(QWidget* parent = nullptr)
        : NumberLabel(kNumberSize, parent) {}

    static constexpr int kNumberSize = 16;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

/// The chosen dive in numbers, one box for each display column that has one.
class SummaryStrip : public look::Pane {
    Q_OBJECT

public:
    explicit SummaryStrip(QWidget* parent = nullptr);

    /// Cells of a row by display column; none empties the boxes.
    void showCells(const QStringList& cells);

private:
    std::vector<look::NumberLabel*> boxes_; // as in kStripBoxes
};

} // namespace benthor::logbook
