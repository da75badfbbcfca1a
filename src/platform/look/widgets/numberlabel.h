#pragma once

#include <QColor>
#include <QLabel>

namespace benthor::look {

struct NumberAndUnit {
    QString number;
    QString unit;
};

/// "21m " is "21" and "m", "1013mBar" is "1013" and "mBar", "147 dives" is "147" and "dives", " ^18m" is
/// "^18" and "m". A text that is no number with a unit behind it (a date, a time, a name, an identifier) is
/// all number. Blanks at either end are dropped.
NumberAndUnit splitNumberAndUnit(const QString& text);

/// A number and its unit in one text: painted with the number large and the unit small and quiet behind it.
/// `text()` keeps what it was given, blanks too.
class NumberLabel : public QLabel {
    Q_OBJECT

public:
    /// `px`: the number's size in pixels of the layout.
    explicit NumberLabel(int px = 16, QWidget* parent = nullptr);

    /// A small quiet line above the number.
    void setCaption(const QString& caption);
    QString caption() const { return caption_; }
    void setNumberSize(int px);
    /// The width that another text would need, in pixels.
    int widthOf(const QString& text) const;
    /// Painted in the place of the text, which stays what it was told; an empty number: the text.
    void setStandIn(const NumberAndUnit& standIn);
    const NumberAndUnit& standIn() const { return standIn_; }
    /// Of the number; invalid: the text colour.
    void setToldColour(const QColor& colour);
    QColor toldColour() const { return told_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    NumberAndUnit shown() const;

    int px_;
    QString caption_;
    NumberAndUnit standIn_;
    QColor told_;
};

/// A few lines of text as totals: the first, third, ... line is a small quiet caption, the line behind it its
/// value in large numbers. The pairs stand side by side with a line between them. A text of a single line is
/// no total: it is shown as a plain one, wrapped.
class TotalsLabel : public QLabel {
    Q_OBJECT

public:
    explicit TotalsLabel(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isPlain() const;
};

} // namespace benthor::look
