#pragma once

#include <QFrame>

class QVBoxLayout;

namespace benthor::look {

/// A raised piece of the window: surface, thin border, rounded corners, and a column to put things into.
class Card : public QFrame {
    Q_OBJECT

public:
    explicit Card(QWidget* parent = nullptr);

    /// The column; its margins may be changed.
    QVBoxLayout* body() const { return body_; }
    /// A stronger border, for a card that lies over others.
    void setRaised(bool raised);
    /// Cuts the corners of `content` that lie in the card's own, so that these stay round. Never null; lies
    /// within the card's border.
    void roundOff(QWidget* content);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void cutCorners(QWidget& content) const;

    bool ring_ = false;
    QVBoxLayout* body_;
    bool raised_ = false;
};

/// A band at an edge of the window (tool bar, head, foot, side column): surface, with a line at the edges
/// named.
class Pane : public QWidget {
    Q_OBJECT

public:
    explicit Pane(Qt::Edges lines, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Edges lines_;
};

/// A thin line between groups.
class Rule : public QWidget {
    Q_OBJECT

public:
    explicit Rule(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace benthor::look
