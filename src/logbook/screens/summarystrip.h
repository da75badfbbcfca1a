#pragma once

#include "platform/look/widgets/card.h"
#include "platform/look/widgets/numberlabel.h"

#include <QStringList>

#include <vector>

namespace benthor::logbook {

/// A number label for a name of any length: what does not fit ends in dots, and the tip holds the whole.
class NameLabel : public look::NumberLabel {
    Q_OBJECT

public:
    explicit NameLabel(int px, QWidget* parent = nullptr)
        : NumberLabel(px, parent)
        , px_(px) {}

    void setNameSize(int px);
    QSize minimumSizeHint() const override;
    static int shortestWidth();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    int px_;
};

/// The chosen dive in numbers, one box for each display column that has one. The numbers are smaller where
/// the window is too narrow for them.
class SummaryStrip : public look::Pane {
    Q_OBJECT

public:
    explicit SummaryStrip(QWidget* parent = nullptr);

    /// Cells of a row by display column; none empties the boxes.
    void showCells(const QStringList& cells);
    /// The name of the dive as its box shows it.
    QString name() const { return name_->text(); }

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int widthWith(int px) const;
    void fit();

    std::vector<look::NumberLabel*> boxes_; // as in kStripBoxes
    NameLabel* name_ = nullptr;             // the one of them that holds a name
};

} // namespace benthor::logbook
