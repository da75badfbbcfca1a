#pragma once

#include <QWidget>

class QBoxLayout;

namespace benthor::logbook {

/// A buddy and what is done with it in one row; where a large font leaves no room for that the buttons stand
/// below the box, so that the column is no wider than the one beside it.
class BuddyRow : public QWidget {
    Q_OBJECT

public:
    BuddyRow(QWidget* box, QWidget* add, QWidget* remove);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override { return minimumSizeHint(); }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    int besideWidth() const;
    int rowHeight() const;

    QBoxLayout* across_;
    QWidget* box_;
    QWidget* buttons_;
};

} // namespace benthor::logbook
