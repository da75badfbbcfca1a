#pragma once

#include <QWidget>

class QBoxLayout;

namespace benthor::link {

/// Parts beside each other, or below each other where the row is too narrow for all of them. It needs no more
/// width than its widest part.
class BreakingRow : public QWidget {
    Q_OBJECT

public:
    explicit BreakingRow(int spacing, QWidget* parent = nullptr);

    /// `stretch`: share of the room that is left, in whichever direction they stand.
    void add(QWidget* part, int stretch);
    bool isBroken() const;

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;

private:
    int rowWidth() const;
    void arrange();

    QBoxLayout* layout_;
};

} // namespace benthor::link
