#pragma once

#include <QLineEdit>

class QLabel;

namespace benthor::viewer {

/// A line of text that looks like a label and can be edited: as wide as what stands in it.
class HeadEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit HeadEdit(const QString& name, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
};

/// One value in the head of the dive screen: a small caption, below it the value in a box that can be edited,
/// its unit small behind it. The unit shows only while there is a value.
class HeadBox : public QWidget {
    Q_OBJECT

public:
    /// `name`: object name of the box.
    HeadBox(const QString& name, const QString& caption, const QString& unit = {}, QWidget* parent = nullptr);

    QString caption() const { return value_->accessibleName(); }
    QLabel* unit() const { return unit_; }
    /// What stands in the box, whoever has written it.
    QString text() const { return value_->text(); }

    void setValue(const QString& text);
    void setUnit(const QString& text);
    /// Size of the value in pixels of the layout.
    void setNumberSize(int px);

private:
    void showUnit();

    HeadEdit* value_;
    QLabel* unit_;
};

} // namespace benthor::viewer
