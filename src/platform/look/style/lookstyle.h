#pragma once

#include <QProxyStyle>

class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionHeader;
class QStyleOptionSlider;
class QStyleOptionSpinBox;
class QStyleOptionTab;

namespace benthor::look {

/// How every standard control is painted. A style and no style sheet: a sheet takes a widget's own palette
/// away, and told colours live there; and it slows item views down, and lists are long.
class LookStyle : public QProxyStyle {
    Q_OBJECT

public:
    LookStyle();

    using QProxyStyle::polish;
    void polish(QPalette& palette) override;
    void polish(QWidget* widget) override;
    /// A wheel that turns over a value without the focus changes nothing: it scrolls what lies around it.
    bool eventFilter(QObject* watched, QEvent* event) override;

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;
    QPixmap standardPixmap(StandardPixmap which, const QStyleOption* option,
                           const QWidget* widget) const override;

private:
    // Each paints `element` if it is one of its own, and says whether it did.
    bool drawButtonControl(ControlElement element, const QStyleOptionButton& option, QPainter* painter,
                           const QWidget* widget) const;
    bool drawBarControl(ControlElement element, const QStyleOption* option, QPainter* painter) const;
    bool drawHeadControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                         const QWidget* widget) const;

    void drawCheckControl(const QStyleOptionButton& option, bool round, QPainter* painter,
                          const QWidget* widget) const;
    void drawButtonLabel(const QStyleOptionButton& option, QPainter* painter, const QWidget* widget) const;
    void drawComboBox(const QStyleOptionComboBox& option, QPainter* painter) const;
    void drawSpinBox(const QStyleOptionSpinBox& option, QPainter* painter) const;
    void drawHeaderLabel(const QStyleOptionHeader& option, QPainter* painter) const;
    void drawTabLabel(const QStyleOptionTab& option, QPainter* painter) const;
    QRect scrollBarRect(const QStyleOptionSlider& option, SubControl part) const;
    QRect sliderRect(const QStyleOptionSlider& option, SubControl part) const;
    QRect comboBoxRect(const QStyleOptionComboBox& option, SubControl part) const;
    QRect spinBoxRect(const QStyleOptionSpinBox& option, SubControl part) const;
};

} // namespace benthor::look
