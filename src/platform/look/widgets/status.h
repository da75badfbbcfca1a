#pragma once

#include <QColor>
#include <QLabel>

namespace benthor::look {

/// A state in words on a filled ground of a told colour; the words are black or white, whichever reads. 40
/// high. A chip that wraps takes as narrow a place as it gets, and is higher where its words take more than
/// two lines.
class StatusChip : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QColor toldBackground READ toldBackground WRITE setToldBackground)

public:
    explicit StatusChip(QWidget* parent = nullptr);

    void setToldBackground(const QColor& colour);
    QColor toldBackground() const { return told_; }
    /// Before the words, in their colour; empty: none.
    void setIconName(const QString& name);
    void setFixedChipHeight(int px);
    /// To be called instead of setWordWrap.
    void setWrapping();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect wordsRoom(const QRect& chip) const;

    QColor told_;
    QString iconName_;
    int height_ = 40;
};

/// A small round lamp of a told colour, with its words behind it.
class LampDot : public QLabel {
    Q_OBJECT
    Q_PROPERTY(QColor toldColour READ toldColour WRITE setToldColour)

public:
    explicit LampDot(QWidget* parent = nullptr);

    void setToldColour(const QColor& colour);
    QColor toldColour() const { return told_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor told_;
};

/// A line that must not be overlooked, on a tinted ground with the warning sign before it. `label()` holds
/// the words.
class NoticeBand : public QWidget {
    Q_OBJECT

public:
    explicit NoticeBand(const QString& text, QWidget* parent = nullptr);

    QLabel* label() const { return label_; }

    /// Calm: a line that tells and does not warn, on a plain ground, with the sign of a search.
    void setCalm(bool calm);
    bool isCalm() const { return calm_; }

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void takeColours();

    QLabel* label_;
    bool calm_ = false;
};

} // namespace benthor::look
