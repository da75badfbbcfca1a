#pragma once

#include "simulator/logo.h"

#include <QByteArray>
#include <QtEndian>

namespace benthor::tests {

/// A logo without any symmetry, so that a row or a column in a wrong place shows.
inline simulator::Logo crookedLogo() {
    simulator::Logo logo;
    for (std::size_t y = 0; y < logo.rows.size(); ++y) {
        for (std::size_t x = 0; x < logo.rows[y].size(); ++x) {
            logo.rows[y][x] = (x * x + 3 * y * y + x * y) % 7 < 3 || x < y / 2;
        }
    }
    return logo;
}

enum class Palette { BlackFirst, WhiteFirst };
enum class RowOrder { BottomUp, TopDown };

/// The logo as a BMP file of 1086 bytes.
inline QByteArray bitmap(const simulator::Logo& logo, Palette palette = Palette::BlackFirst,
                         RowOrder order = RowOrder::BottomUp) {
    QByteArray file(62, '\0');
    const auto put = [&file](qsizetype at, auto number) { qToLittleEndian(number, file.data() + at); };
    file[0] = 'B';
    file[1] = 'M';
    put(2, qint32(1086));
    put(10, qint32(62));
    put(14, qint32(40));
    put(18, qint32(102));
    put(22, qint32(order == RowOrder::BottomUp ? 64 : -64));
    put(26, qint16(1));
    put(28, qint16(1));
    put(34, qint32(1024));
    put(palette == Palette::BlackFirst ? 58 : 54, qint32(0xFFFFFF));
    for (int row = 0; row < 64; ++row) {
        const int y = order == RowOrder::BottomUp ? 63 - row : row;
        QByteArray bytes(16, '\0');
        for (int x = 0; x < 102; ++x) {
            if (logo.isDark(x, y) != (palette == Palette::BlackFirst)) {
                bytes[x / 8] = static_cast<char>(bytes[x / 8] | 0x80 >> x % 8);
            }
        }
        file += bytes;
    }
    return file;
}

} // namespace benthor::tests
