#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <bitset>
#include <optional>

namespace benthor::simulator {

// The logo of the simulated device, and its text form. The form is our own: a real device takes what its
// maker's converter writes, which is another, and nothing here reads or makes that.

/// The picture that a device shows as its screen saver.
struct Logo {
    static constexpr int width = 102;
    static constexpr int height = 64;
    /// By row from the top; the bit of a pixel is its place from the left. Set: dark.
    std::array<std::bitset<width>, height> rows;

    bool isDark(int x, int y) const { return rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]; }
    bool operator==(const Logo&) const = default;
};

/// Reads a BMP file of 102 by 64 pixels, one bit each, with a head and palette of 62 bytes, its rows in
/// either order. The darker colour of the palette is dark. Nothing for anything else; `error` then says why,
/// for a person to read.
std::optional<Logo> readBitmap(QByteArrayView file, QString& error);

/// The text form as a file holds it: a head of words, two blanks, then the picture. The picture is 64 lines
/// of 26 hexadecimal digits, the leftmost pixel in the highest bit, ended by CR LF. There is no ESC in it.
QByteArray logoText(const Logo& logo);

/// Reads the picture of the text form, as the device gets it: what stands behind the two blanks. Line ends
/// may be of either kind, blank lines around it do not matter. Nothing where it is not whole or not of that
/// form.
std::optional<Logo> readLogo(QByteArrayView text);

/// For a terminal: 32 lines of 102 characters (UTF-8), each with two pixels one above the other.
QByteArray logoPicture(const Logo& logo);
/// As a portable bitmap (plain "P1").
QByteArray logoPbm(const Logo& logo);

/// Path of the text for a bitmap: beside it, its last five characters replaced by "a.bmt". Nothing for a file
/// name shorter than five, or for one that would replace itself.
std::optional<QString> logoTextPath(const QString& bitmap);

} // namespace benthor::simulator
