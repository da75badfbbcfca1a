#include "platform/look/look.h"

#include "platform/look/access/access.h"
#include "platform/look/style/lookstyle.h"
#include "platform/look/theme_p.h"

#include <QApplication>
#include <QLabel>
#include <QToolTip>

namespace benthor::look {

namespace {

QPalette::ColorRole roleOf(Ink ink) {
    switch (ink) {
    case Ink::Quiet:
        return QPalette::LinkVisited; // no link is ever shown as visited
    case Ink::Accent:
        return QPalette::Link;
    case Ink::Bad:
        return QPalette::BrightText;
    case Ink::Text:
        break;
    }
    return QPalette::WindowText;
}

} // namespace

QPalette themePalette() {
    const Tokens& token = tokens();
    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, const QColor& colour) {
        palette.setColor(role, colour);
    };
    set(QPalette::Window, token.ground);
    set(QPalette::WindowText, token.text);
    set(QPalette::Base, token.surface);
    set(QPalette::AlternateBase, token.ground);
    set(QPalette::Text, token.text);
    set(QPalette::Button, token.surface);
    set(QPalette::ButtonText, token.text);
    set(QPalette::BrightText, token.bad);
    const bool high = contrast() == Contrast::High; // what is selected is not to be told by a pale ground
    set(QPalette::Highlight, high ? token.accent : token.accentsoft);
    set(QPalette::HighlightedText, high ? token.ontext : token.text);
    set(QPalette::Link, token.accent);
    set(QPalette::LinkVisited, token.textquiet);
    // Quiet words are as dark as the rest there, and what waits to be typed over is not to pass for it.
    set(QPalette::PlaceholderText, high ? token.faint : token.textquiet);
    set(QPalette::ToolTipBase, token.surface);
    set(QPalette::ToolTipText, token.text);
    set(QPalette::Light, token.surface);
    set(QPalette::Midlight, token.line);
    set(QPalette::Mid, token.line);
    set(QPalette::Dark, token.edge);
    set(QPalette::Shadow, token.edge);
    for (QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText,
          QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited, QPalette::BrightText}) {
        palette.setColor(QPalette::Disabled, role, token.faint);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, token.ground);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, token.sunken);
    return palette;
}

void apply(QApplication& application) {
    takeDesktopTheme();
    takeDesktopFont();
    QApplication::setStyle(new LookStyle);
    QApplication::setPalette(themePalette());
    QApplication::setFont(body());
    QToolTip::setFont(body());
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
    application.setWindowIcon(applicationIcon());
    tellReaders();
}

void setInk(QWidget* widget, Ink ink) {
    widget->setForegroundRole(roleOf(ink));
}

QColor inkColour(Ink ink) {
    switch (ink) {
    case Ink::Quiet:
        return tokens().textquiet;
    case Ink::Accent:
        return tokens().accent;
    case Ink::Bad:
        return tokens().bad;
    case Ink::Text:
        break;
    }
    return tokens().text;
}

QLabel* makeCaption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setFont(caption());
    setInk(label, Ink::Quiet);
    return label;
}

QLabel* makeHeading(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setFont(heading());
    return label;
}

} // namespace benthor::look
