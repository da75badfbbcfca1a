#pragma once

#include <QFont>

namespace benthor::look {

// Sizes are pixels of the layout. They grow with the desktop's font where it is larger than 10 points: what
// is read by the same factor, what is larger than that by as many pixels, and room as it is needed for the
// words.

/// 13: what is read and worked.
QFont body();
/// 11: captions, units, table heads.
QFont caption();
/// 16, semi-bold: titles of cards and screens.
QFont heading();
/// An instrument number: `numbers(px)`, semi-bold. 24 to 32 in panels, 40 on wide displays.
QFont big(int px);
/// Figures of one width, so that columns of them stand still: the desktop's font where all its digits are
/// equally wide, else DejaVu Sans.
QFont numbers(int px);
/// The desktop's fixed-width font, for raw text.
QFont fixed(int px);

/// `font` in semi-bold.
QFont strong(QFont font);

/// Whether the ten digits of `font` have the same advance width, plain and semi-bold.
bool hasTabularDigits(const QFont& font);

/// The factor by which all sizes grow, at least 1.
double fontScale();
/// `px` grown by that factor.
int scaled(int px);
/// The height of a row of controls: `px` of which that many lines of text grow, and the room around them
/// stays.
int scaledRow(int px, int lines = 1);

} // namespace benthor::look
