#include "platform/look/tokens.h"

#include "platform/look/theme_p.h"

#include <QApplication>
#include <QWidget>

#include <optional>

namespace benthor::look {

namespace {

const Tokens lightTokens{
    .ground = QColor(0xF4, 0xF7, 0xF9),
    .surface = QColor(0xFF, 0xFF, 0xFF),
    .sunken = QColor(0xE9, 0xEE, 0xF3),
    .line = QColor(0xD5, 0xDE, 0xE6),
    .edge = QColor(0x7C, 0x8E, 0xA0),
    .text = QColor(0x14, 0x20, 0x2B),
    .textquiet = QColor(0x55, 0x67, 0x7A),
    .accent = QColor(0x0B, 0x72, 0x85),
    .ontext = QColor(0xFF, 0xFF, 0xFF),
    .accentsoft = QColor(0xE1, 0xF0, 0xF2),
    .good = QColor(0x25, 0x7D, 0x37),
    .notice = QColor(0x8F, 0x55, 0x00),
    .bad = QColor(0xC9, 0x2A, 0x2A),
    .noticesoft = QColor(0xFA, 0xF0, 0xDC),
};

const Tokens darkTokens{
    .ground = QColor(0x0E, 0x16, 0x1F),
    .surface = QColor(0x16, 0x21, 0x2D),
    .sunken = QColor(0x0B, 0x12, 0x1A),
    .line = QColor(0x2A, 0x3A, 0x4A),
    .edge = QColor(0x5A, 0x6F, 0x84),
    .text = QColor(0xE7, 0xEE, 0xF4),
    .textquiet = QColor(0x9D, 0xB0, 0xC2),
    .accent = QColor(0x3B, 0xC4, 0xCF),
    .ontext = QColor(0x06, 0x23, 0x2A),
    .accentsoft = QColor(0x15, 0x38, 0x40),
    .good = QColor(0x69, 0xDB, 0x7C),
    .notice = QColor(0xFF, 0xC0, 0x69),
    .bad = QColor(0xFF, 0x87, 0x87),
    .noticesoft = QColor(0x3A, 0x2B, 0x12),
};

struct ThemeState {
    Theme inForce = Theme::Light;
    std::optional<Theme> desktop;
    bool chosen = false;
    bool applied = false;
};

ThemeState& state() {
    static ThemeState theState;
    return theState;
}

Theme themeOfPalette(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128 ? Theme::Dark : Theme::Light;
}

} // namespace

const Tokens& tokens() {
    return tokens(state().inForce);
}

const Tokens& tokens(Theme theme) {
    return theme == Theme::Dark ? darkTokens : lightTokens;
}

Theme theme() {
    return state().inForce;
}

void setTheme(Theme theme) {
    state().inForce = theme;
    state().chosen = true;
    if (!state().applied) {
        return;
    }
    QApplication::setPalette(themePalette());
    // The toolkit only posts the change; widgets are to have their colours when this returns.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::ApplicationPaletteChange);
    for (QWidget* widget : QApplication::allWidgets()) {
        widget->update();
    }
}

Theme desktopTheme() {
    return state().desktop ? *state().desktop : themeOfPalette(QGuiApplication::palette());
}

void takeDesktopTheme() {
    if (!state().desktop) {
        state().desktop = themeOfPalette(QGuiApplication::palette());
    }
    if (!state().chosen) {
        state().inForce = *state().desktop;
    }
    state().applied = true;
}

} // namespace benthor::look
