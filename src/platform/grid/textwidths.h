#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QHash>
#include <QString>

#include <memory>

namespace benthor::platform {

/// How wide texts are in a font. To shape a text takes microseconds, and every grid that comes up asks for
/// much the same texts: what was measured once is known to all grids with that font. For the thread of the
/// screens only.
class TextWidths {
public:
    explicit TextWidths(const QFont& font);

    const QFont& font() const { return known_->font; }
    const QFontMetrics& metrics() const { return known_->metrics; }
    /// The advance of a line of text, in pixels, as QFontMetrics has it.
    int of(const QString& text) const;

private:
    struct Known {
        explicit Known(const QFont& ofFont)
            : font(ofFont)
            , metrics(ofFont) {}
        QFont font;
        QFontMetrics metrics;
        QHash<QString, int> widths;
    };
    static std::shared_ptr<Known> knownOf(const QFont& font);

    std::shared_ptr<Known> known_;
};

} // namespace benthor::platform
