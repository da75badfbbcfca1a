#pragma once

#include <QLabel>

namespace benthor::look {

/// A label whose text is always seen whole: plain, with its line ends (CR, LF or both) as they stand, broken
/// between words and, where a word is longer than the label is wide, within it. It asks for the height that
/// the text takes at the width it gets.
class WholeLabel : public QLabel {
    Q_OBJECT

public:
    explicit WholeLabel(QWidget* parent = nullptr);

    /// The lines as they are painted at that width.
    QStringList linesAt(int width) const;

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString shownText() const;
};

} // namespace benthor::look
