#pragma once

#include "platform/look/contrast.h"

#include <QColor>

class QPalette;

namespace benthor::look {

enum class Theme { Light, Dark };

/// High: black and white, for who cannot tell pale colours apart. What a colour is told for keeps it.
enum class Contrast { Usual, High };

/// The colours of one theme, named for their use. Whatever paints asks for them anew each time, and so
/// follows a switch.
struct Tokens {
    QColor ground;  ///< the window
    QColor surface; ///< cards, tables, the chart
    QColor sunken;  ///< troughs, dark gauge segments, what is read only
    QColor line;    ///< borders of cards, grid lines
    QColor edge;    ///< edges of what can be worked: buttons, boxes, fields
    QColor text;
    QColor textquiet;  ///< captions and units
    QColor accent;     ///< the one primary action, focus, outline of what is selected
    QColor ontext;     ///< text on accent
    QColor accentsoft; ///< ground of a chosen entry and of selected text
    QColor good;
    QColor notice;
    QColor bad;
    QColor noticesoft; ///< ground of a line that must not be overlooked
    QColor faint;      ///< text of what cannot be worked
};

/// The tokens of the theme in force.
const Tokens& tokens();
/// The tokens of the theme named, in the contrast in force.
const Tokens& tokens(Theme theme);

Theme theme();

/// Takes `theme` into force. Once `apply` has run, the application's palette changes with it: every widget
/// gets QEvent::PaletteChange and is painted again.
void setTheme(Theme theme);

Contrast contrast();
/// Takes `contrast` into force, as `setTheme` does a theme.
void setContrast(Contrast contrast);

/// The least contrast of a text and its ground that are ours to choose: 4.5, in high contrast 7.
double leastContrast();
/// `ink` where it reads on `ground` with that contrast; else the nearest colour of its own hue that does.
QColor legibleOn(const QColor& ink, const QColor& ground);

/// Whether a desktop asks for high contrast by that palette: words on windows, in fields and on buttons all
/// stand out by 19 or more of the 21 that there are. Usual desktops stay below, as they have a grey window,
/// or words that are not quite black; black and white, and yellow on black, are above.
bool isHighContrast(const QPalette& palette);

/// Light or dark as the desktop's own palette was before `apply` changed it.
Theme desktopTheme();

// Spacing in pixels of the layout, in steps of four.
inline constexpr int spaceTight = 4;
inline constexpr int spaceSmall = 8;
inline constexpr int spaceBase = 12;
inline constexpr int spaceWide = 16;
inline constexpr int spaceRoom = 24;

inline constexpr int radius = 6;
/// Thickness of the ring round what has the keyboard.
inline constexpr int focusWidth = 2;
/// Width of the block by which a button shows a told colour.
inline constexpr int toldBlockWidth = 10;

} // namespace benthor::look
