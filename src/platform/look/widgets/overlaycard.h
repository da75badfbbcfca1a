#pragma once

#include <QPointer>
#include <QWidget>

class QVBoxLayout;

namespace benthor::look {

class Card;

/// A card over an area of the screen that waits: it covers its parent, dims it, and stands in its middle.
/// Showing and hiding it shows and hides all of that. Mouse and wheel do not reach what is beneath, Tab stays
/// in the card, and Escape does nothing: the work in hand ends by its own button.
class OverlayCard : public QWidget {
    Q_OBJECT

public:
    /// `area`: what is covered, never null; `width`: of the card, in pixels of the layout.
    explicit OverlayCard(QWidget* area, int width = 520);

    /// The card's column.
    QVBoxLayout* body() const;
    Card* card() const { return card_; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void cover();
    QWidget* stopBeyond(QWidget* from, bool next) const;

    Card* card_;
    QPointer<QWidget> before_;
};

} // namespace benthor::look
