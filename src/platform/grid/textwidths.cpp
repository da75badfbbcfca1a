#include "platform/grid/textwidths.h"

#include <QCoreApplication>

namespace benthor::platform {

namespace {

constexpr qsizetype mostFonts = 16;
constexpr qsizetype mostTexts = 8192;     // of a font: less than a megabyte
constexpr qsizetype mostCharacters = 200; // of a text that is kept: notes can be megabytes

template <class Fonts> Fonts& allFonts() {
    static Fonts fonts;
    static const bool endsWithTheScreens = [] {
        qAddPostRoutine([] { fonts.clear(); });
        return true;
    }();
    Q_UNUSED(endsWithTheScreens)
    return fonts;
}

} // namespace

TextWidths::TextWidths(const QFont& font)
    : known_(knownOf(font)) {}

std::shared_ptr<TextWidths::Known> TextWidths::knownOf(const QFont& font) {
    auto& fonts = allFonts<QHash<QString, std::shared_ptr<Known>>>();
    const QString key = font.key();
    if (const auto found = fonts.constFind(key); found != fonts.constEnd()) {
        return *found;
    }
    if (fonts.size() >= mostFonts) { // a diver tries sizes; who still uses one keeps it
        fonts.clear();
    }
    return *fonts.insert(key, std::make_shared<Known>(font));
}

int TextWidths::of(const QString& text) const {
    if (text.size() > mostCharacters) {
        return known_->metrics.horizontalAdvance(text);
    }
    QHash<QString, int>& widths = known_->widths;
    if (const auto found = widths.constFind(text); found != widths.constEnd()) {
        return *found;
    }
    if (widths.size() >= mostTexts) {
        widths.clear();
    }
    return *widths.insert(text, known_->metrics.horizontalAdvance(text));
}

} // namespace benthor::platform
