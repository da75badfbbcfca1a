#include "platform/look/tokens.h"

#include "platform/look/theme_p.h"

#include <QApplication>
#include <QPalette>
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
    .faint = QColor(0x99, 0xA4, 0xAF),
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
    .faint = QColor(0x67, 0x77, 0x86),
};

const Tokens lightContrastTokens{
    .ground = QColor(0xFF, 0xFF, 0xFF),
    .surface = QColor(0xFF, 0xFF, 0xFF),
    .sunken = QColor(0xE6, 0xE6, 0xE6),
    .line = QColor(0x59, 0x59, 0x59),
    .edge = QColor(0x00, 0x00, 0x00),
    .text = QColor(0x00, 0x00, 0x00),
    .textquiet = QColor(0x00, 0x00, 0x00),
    .accent = QColor(0x00, 0x10, 0x7F),
    .ontext = QColor(0xFF, 0xFF, 0xFF),
    .accentsoft = QColor(0xD6, 0xE4, 0xFF),
    .good = QColor(0x00, 0x5A, 0x1E),
    .notice = QColor(0x6B, 0x3F, 0x00),
    .bad = QColor(0x80, 0x00, 0x00),
    .noticesoft = QColor(0xFF, 0xF3, 0xD6),
    .faint = QColor(0x48, 0x48, 0x48),
};

const Tokens darkContrastTokens{
    .ground = QColor(0x00, 0x00, 0x00),
    .surface = QColor(0x00, 0x00, 0x00),
    .sunken = QColor(0x20, 0x20, 0x20),
    .line = QColor(0xA0, 0xA0, 0xA0),
    .edge = QColor(0xFF, 0xFF, 0xFF),
    .text = QColor(0xFF, 0xFF, 0xFF),
    .textquiet = QColor(0xFF, 0xFF, 0xFF),
    .accent = QColor(0x6F, 0xE3, 0xFF),
    .ontext = QColor(0x00, 0x00, 0x00),
    .accentsoft = QColor(0x00, 0x2F, 0x3F),
    .good = QColor(0x7C, 0xFF, 0x8F),
    .notice = QColor(0xFF, 0xD2, 0x8A),
    .bad = QColor(0xFF, 0xA8, 0xA8),
    .noticesoft = QColor(0x2A, 0x1E, 0x00),
    .faint = QColor(0xAD, 0xAD, 0xAD),
};

struct ThemeState {
    Theme inForce = Theme::Light;
    Contrast contrast = Contrast::Usual;
    std::optional<Theme> desktop;
    bool chosen = false;
    bool contrastChosen = false;
    bool applied = false;
};

ThemeState& state() {
    static ThemeState theState;
    return theState;
}

void showColours() {
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

Theme themeOfPalette(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128 ? Theme::Dark : Theme::Light;
}

} // namespace

const Tokens& tokens() {
    return tokens(state().inForce);
}

const Tokens& tokens(Theme theme) {
    if (contrast() == Contrast::High) {
        return theme == Theme::Dark ? darkContrastTokens : lightContrastTokens;
    }
    return theme == Theme::Dark ? darkTokens : lightTokens;
}

Theme theme() {
    return state().inForce;
}

void setTheme(Theme theme) {
    state().inForce = theme;
    state().chosen = true;
    showColours();
}

Contrast contrast() {
    return state().contrast;
}

void setContrast(Contrast contrast) {
    state().contrast = contrast;
    state().contrastChosen = true;
    showColours();
}

double leastContrast() {
    return contrast() == Contrast::High ? 7 : 4.5;
}

QColor legibleOn(const QColor& ink, const QColor& ground) {
    return legibleOn(ink, ground, leastContrast());
}

bool isHighContrast(const QPalette& palette) {
    constexpr double full = 19;
    const auto stands = [&palette](QPalette::ColorRole ink, QPalette::ColorRole ground) {
        return contrastRatio(palette.color(QPalette::Active, ink), palette.color(QPalette::Active, ground)) >=
               full;
    };
    return stands(QPalette::WindowText, QPalette::Window) && stands(QPalette::Text, QPalette::Base) &&
           stands(QPalette::ButtonText, QPalette::Button);
}

Theme desktopTheme() {
    return state().desktop ? *state().desktop : themeOfPalette(QGuiApplication::palette());
}

void takeDesktopTheme() {
    if (!state().desktop) {
        state().desktop = themeOfPalette(QGuiApplication::palette());
        if (!state().contrastChosen && isHighContrast(QGuiApplication::palette())) {
            state().contrast = Contrast::High;
        }
    }
    if (!state().chosen) {
        state().inForce = *state().desktop;
    }
    state().applied = true;
}

} // namespace benthor::look
