#include "platform/look/type.h"

#include "platform/look/theme_p.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QHash>

#include <algorithm>
#include <cmath>

namespace benthor::look {

namespace {

struct DesktopFont {
    QString family;
    double scale = 1;
    bool taken = false;
};

DesktopFont& desktopFont() {
    static DesktopFont theFont;
    return theFont;
}

// Ten points at the 96 pixels an inch that layouts are drawn for.
constexpr double defaultPixels = 10.0 * 96.0 / 72.0;
constexpr double largestScale = 3;

// What is larger than the text that is read is legible as it is: it grows by as many pixels as that text
// does.
constexpr int readPixels = 13;

int grown(int px) {
    return px + static_cast<int>(std::lround(std::min(px, readPixels) * (desktopFont().scale - 1)));
}

bool equalDigits(const QFont& font) {
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(u'0');
    for (char16_t digit = u'1'; digit <= u'9'; ++digit) {
        if (std::abs(metrics.horizontalAdvance(digit) - width) > 0.01) {
            return false;
        }
    }
    return true;
}

QFont sized(const QString& family, int px) {
    QFont font = QApplication::font();
    if (!family.isEmpty()) {
        font.setFamily(family);
    }
    font.setBold(false);
    font.setPixelSize(grown(px));
    return font;
}

QString numberFamily() {
    const QString family = sized(desktopFont().family, 13).family();
    static QHash<QString, bool> known;
    if (!known.contains(family)) {
        known.insert(family, hasTabularDigits(sized(family, 13)));
    }
    return known.value(family) ? family : QStringLiteral("DejaVu Sans");
}

} // namespace

void takeDesktopFont() {
    DesktopFont& font = desktopFont();
    if (font.taken) {
        return;
    }
    font.taken = true;
    const QFont desktop = QApplication::font();
    // Without a desktop there is no preference, only the toolkit's own fallback.
    if (desktop.resolveMask() == 0 && QGuiApplication::platformName() == QLatin1String("offscreen")) {
        font.family = QStringLiteral("Sans Serif");
        return;
    }
    font.family = desktop.family();
    font.scale = std::clamp(QFontInfo(desktop).pixelSize() / defaultPixels, 1.0, largestScale);
}

QFont body() {
    return sized(desktopFont().family, 13);
}

QFont caption() {
    return sized(desktopFont().family, 11);
}

QFont heading() {
    return strong(sized(desktopFont().family, 16));
}

QFont big(int px) {
    return strong(numbers(px));
}

QFont numbers(int px) {
    return sized(numberFamily(), px);
}

QFont fixed(int px) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(grown(px));
    return font;
}

QFont strong(QFont font) {
    font.setWeight(QFont::DemiBold);
    return font;
}

bool hasTabularDigits(const QFont& font) {
    // A large size keeps hinting from hiding a difference.
    QFont large = font;
    large.setPixelSize(200);
    return equalDigits(large) && equalDigits(strong(large));
}

double fontScale() {
    return desktopFont().scale;
}

int scaledRow(int px, int lines) {
    const double line = 18; // of the body's text, at the usual size
    return px + static_cast<int>(std::lround(lines * line * (desktopFont().scale - 1)));
}

int scaled(int px) {
    return static_cast<int>(std::lround(px * desktopFont().scale));
}

} // namespace benthor::look
