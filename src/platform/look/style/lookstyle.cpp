#include "platform/look/style/lookstyle.h"

#include "platform/look/icons.h"
#include "platform/look/style/paint.h"
#include "platform/look/theme_p.h"
#include "platform/look/type.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QSlider>
#include <QStyleOption>
#include <QTabBar>

#include <optional>

namespace benthor::look {

LookStyle::LookStyle()
    : QProxyStyle(QStringLiteral("Fusion")) {}

void LookStyle::polish(QPalette& palette) {
    palette = themePalette();
}

void LookStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QAbstractSlider*>(widget) ||
        qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractSpinBox*>(widget) ||
        qobject_cast<QTabBar*>(widget)) {
        widget->setAttribute(Qt::WA_Hover);
    }
    // Words come from outside, too (names of files and dives, what a device says), and none of ours is
    // markup. Labels of boxes and tool tips are among these. A label is polished before it is laid out.
    if (auto* label = qobject_cast<QLabel*>(widget); label && label->textFormat() != Qt::PlainText) {
        label->setTextFormat(Qt::PlainText);
    }
    if (qobject_cast<QComboBox*>(widget) || qobject_cast<QSlider*>(widget) ||
        qobject_cast<QAbstractSpinBox*>(widget)) {
        if (widget->focusPolicy() == Qt::WheelFocus) {
            widget->setFocusPolicy(Qt::StrongFocus);
        }
        widget->removeEventFilter(this);
        widget->installEventFilter(this);
    }
    if (qobject_cast<QMessageBox*>(widget)) {
        widget->removeEventFilter(this);
        widget->installEventFilter(this);
    }
    if (auto* header = qobject_cast<QHeaderView*>(widget);
        header && header->defaultAlignment() == Qt::AlignCenter) {
        header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

bool LookStyle::eventFilter(QObject* watched, QEvent* event) {
    // A box keeps its sign as a picture made when it opened, which would stay in the colours of that time.
    if (auto* box = qobject_cast<QMessageBox*>(watched); box && event->type() == QEvent::PaletteChange) {
        if (box->icon() != QMessageBox::NoIcon) {
            box->setIcon(box->icon());
        }
        return false;
    }
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Wheel && widget != nullptr && !widget->hasFocus()) {
        event->ignore();
        return true;
    }
    return QProxyStyle::eventFilter(watched, event);
}

namespace {

/// The room between things; nothing for what is none.
std::optional<int> spaceOf(QStyle::PixelMetric metric) {
    switch (metric) {
    case QStyle::PM_ButtonShiftHorizontal:
    case QStyle::PM_ButtonShiftVertical:
    case QStyle::PM_ScrollView_ScrollBarSpacing:
    case QStyle::PM_ScrollView_ScrollBarOverlap:
    case QStyle::PM_MenuBarHMargin:
    case QStyle::PM_MenuBarVMargin:
    case QStyle::PM_MenuBarItemSpacing:
    case QStyle::PM_MenuHMargin:
    case QStyle::PM_TabBarTabShiftVertical:
    case QStyle::PM_TabBarTabShiftHorizontal:
    case QStyle::PM_TabBarBaseOverlap:
        return 0;
    case QStyle::PM_MenuVMargin:
        return spaceTight;
    case QStyle::PM_LayoutLeftMargin:
    case QStyle::PM_LayoutTopMargin:
    case QStyle::PM_LayoutRightMargin:
    case QStyle::PM_LayoutBottomMargin:
        return spaceBase;
    case QStyle::PM_LayoutHorizontalSpacing:
    case QStyle::PM_LayoutVerticalSpacing:
        return spaceSmall;
    case QStyle::PM_HeaderMargin:
    case QStyle::PM_FocusFrameHMargin: // the room beside the words of a cell
        return 4;
    default:
        return std::nullopt;
    }
}

} // namespace

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
        return scaled(18);
    case PM_MessageBoxIconSize:
        return scaled(32);
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return scaled(18);
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return scaled(8);
    case PM_ScrollBarExtent:
        return scaled(12);
    case PM_ScrollBarSliderMin:
        return scaled(28);
    case PM_SliderThickness:
    case PM_SliderLength:
    case PM_SliderControlThickness:
        return scaled(20);
    case PM_SplitterWidth:
        return 8;
    case PM_DefaultFrameWidth:
        return focusRingWidth(); // what lies within a frame must not cover its ring
    case PM_ComboBoxFrameWidth:
        return 1;
    case PM_MenuPanelWidth:
        return 1;
    case PM_ToolTipLabelFrameWidth:
        return 6;
    case PM_TabBarTabHSpace:
        return 28;
    case PM_TabBarTabVSpace:
        return 14;
    default: {
        const std::optional<int> space = spaceOf(metric);
        return space ? *space : QProxyStyle::pixelMetric(metric, option, widget);
    }
    }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returned) const {
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_Popup:
    case SH_UnderlineShortcut:
        return hint == SH_UnderlineShortcut ? 1 : 0;
    case SH_Table_GridLineColor:
        return static_cast<int>(tokens().line.rgb());
    case SH_Widget_Animation_Duration:
    case SH_ScrollBar_Transient:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    case SH_MessageBox_TextInteractionFlags:
        return Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse;
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton | Qt::MiddleButton;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
}

namespace {

/// The icons that are ours; a null one leaves the choice to the style below.
QIcon ownIcon(QStyle::StandardPixmap which) {
    switch (which) {
    case QStyle::SP_MessageBoxWarning:
        return icon(QStringLiteral("warning"), tokens().notice);
    case QStyle::SP_MessageBoxCritical:
        return icon(QStringLiteral("warning"), tokens().bad);
    case QStyle::SP_MessageBoxInformation:
        return icon(QStringLiteral("info"), tokens().accent);
    case QStyle::SP_MessageBoxQuestion:
        return icon(QStringLiteral("help"), tokens().accent);
    case QStyle::SP_DirIcon:
    case QStyle::SP_DirClosedIcon:
        return icon("folder");
    case QStyle::SP_DirOpenIcon:
        return icon("open-folder");
    case QStyle::SP_FileIcon:
        return icon("document");
    case QStyle::SP_ArrowBack:
        return icon("back");
    case QStyle::SP_DialogCloseButton:
    case QStyle::SP_TitleBarCloseButton:
    case QStyle::SP_LineEditClearButton:
        return icon("close");
    default:
        return {};
    }
}

} // namespace

QIcon LookStyle::standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const {
    const QIcon ours = ownIcon(which);
    return ours.isNull() ? QProxyStyle::standardIcon(which, option, widget) : ours;
}

/// Never by way of standardIcon(): the style below makes an icon from the pixmap that it asks for here.
QPixmap LookStyle::standardPixmap(StandardPixmap which, const QStyleOption* option,
                                  const QWidget* widget) const {
    const QIcon ours = ownIcon(which);
    if (!ours.isNull()) {
        return ours.pixmap(QSize(scaled(18), scaled(18)), widget ? widget->devicePixelRatioF() : 1.0);
    }
    return QProxyStyle::standardPixmap(which, option, widget);
}

} // namespace benthor::look
