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
    /// It takes the width of that value, with its unit, even where its own needs less: what stands beside it
    /// keeps its place whatever the values. The value may carry a unit of its own.
    void setWidest(const QString& value, const QString& unit = {});
    QSize sizeHint() const override { return QWidget::sizeHint().expandedTo({leastWidth_, 0}); }
    QSize minimumSizeHint() const override { return QWidget::minimumSizeHint().expandedTo({leastWidth_, 0}); }
    /// Of the value; invalid: the text colour.
    void setToldColour(const QColor& colour);

private:
    void placeUnit();
    void reserve();

    look::NumberLabel* value_;
    QLabel* unit_;
    QString widest_;
    QString widestUnit_;
    int leastWidth_ = 0;
};

} // namespace benthor::viewer
