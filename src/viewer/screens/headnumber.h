#pragma once

#include "platform/look/widgets/numberlabel.h"

#include <QLabel>
#include <QWidget>

namespace benthor::viewer {

/// One value in the head of the dive screen: a small caption, below it the value large, its unit small behind
/// it. Value and unit are controls of their own; the unit shows only while there is a value.
class HeadNumber : public QWidget {
    Q_OBJECT

public:
    /// `name`: object name of the value.
    HeadNumber(const QString& name, const QString& caption, const QString& unit = {},
               QWidget* parent = nullptr);

    QLabel* value() const { return value_; }
    QLabel* unit() const { return unit_; }

    void setValue(const QString& text);
    void setUnit(const QString& text);
    /// Size of the value in pixels of the layout.
    void setNumberSize(int px);
    /// It takes that width in pixels even where its value needs less.
    void setLeastWidth(int px);
    QSize sizeHint() const override { return QWidget::sizeHint().expandedTo({leastWidth_, 0}); }
    QSize minimumSizeHint() const override { return QWidget::minimumSizeHint().expandedTo({leastWidth_, 0}); }
    /// Of the value; invalid: the text colour.
    void setToldColour(const QColor& colour);

private:
    void placeUnit();

    look::NumberLabel* value_;
    QLabel* unit_;
    int leastWidth_ = 0;
};

} // namespace benthor::viewer
