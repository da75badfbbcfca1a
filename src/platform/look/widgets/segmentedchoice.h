#pragma once

#include <QWidget>

class QAbstractButton;
class QButtonGroup;
class QHBoxLayout;

namespace benthor::look {

/// A few short choices of which one holds, side by side in one frame. The arrow keys move along it.
class SegmentedChoice : public QWidget {
    Q_OBJECT

public:
    explicit SegmentedChoice(QWidget* parent = nullptr);

    /// Adds a choice behind the others; `id` is what `chosen` reports and must not be negative.
    QAbstractButton* addChoice(const QString& text, int id);
    QAbstractButton* button(int id) const;

    /// The id of the choice that holds, -1 for none.
    int current() const;
    /// Without a signal; an unknown id takes the choice away.
    void setCurrent(int id);

signals:
    /// The user chose; also when the choice held already.
    void chosen(int id);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QHBoxLayout* layout_;
    QButtonGroup* group_;
};

} // namespace benthor::look
