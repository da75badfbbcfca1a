#include "simulator/logo.h"

#include <QFileInfo>
#include <QtEndian>

namespace benthor::simulator {

namespace {

constexpr qsizetype kHead = 62; ///< of the file: its head, the picture's head and two colours
constexpr qsizetype kRowBytes = 16;
constexpr qsizetype kFileBytes = kHead + Logo::height * kRowBytes;
constexpr int kDigits = 26; ///< of a row; the last two bits are not used
constexpr int kBitsPerDigit = 4;
constexpr char kDoubleBlank[] = "  ";

// Where the fields of a BMP file begin.
constexpr qsizetype kPicture = 10;
constexpr qsizetype kWidth = 18;
constexpr qsizetype kHeight = 22;
constexpr qsizetype kDepth = 28;
constexpr qsizetype kCompression = 30;
constexpr qsizetype kPalette = 54;

template <class Number> Number field(QByteArrayView file, qsizetype at) {
    return qFromLittleEndian<Number>(file.data() + at);
}

/// Of colour `index` of the palette; 0 is black.
int brightness(QByteArrayView file, qsizetype index) {
    const auto part = [&](qsizetype at) { return field<quint8>(file, kPalette + 4 * index + at); };
    constexpr int kBlue = 11;
    constexpr int kGreen = 59;
    constexpr int kRed = 30;
    return kBlue * part(0) + kGreen * part(1) + kRed * part(2);
}

QString fault(QByteArrayView file) {
    if (!file.startsWith("BM") || file.size() < kHead) {
        return QStringLiteral("it is no bitmap (BMP)");
    }
    const auto width = field<qint32>(file, kWidth);
    const qint64 height = field<qint32>(file, kHeight);
    if (width != Logo::width || std::abs(height) != Logo::height) {
        return QStringLiteral("it is %1 by %2 pixels, not 102 by 64").arg(width).arg(std::abs(height));
    }
    if (field<quint16>(file, kDepth) != 1 || field<quint32>(file, kCompression) != 0) {
        return QStringLiteral("it is not a plain monochrome bitmap (one bit for each pixel)");
    }
    if (field<quint32>(file, kPicture) != kHead || file.size() < kFileBytes) {
        return QStringLiteral("its picture is not where 62 bytes of head and palette end, or not whole");
    }
    return {};
}

/// -1 for what is none.
int valueOf(char digit) {
    const int value = digit >= '0' && digit <= '9'   ? digit - '0'
                      : digit >= 'A' && digit <= 'F' ? digit - 'A' + 10
                      : digit >= 'a' && digit <= 'f' ? digit - 'a' + 10
                                                     : -1;
    return value;
}

std::optional<std::bitset<Logo::width>> readRow(const QByteArray& line) {
    std::bitset<Logo::width> row;
    if (line.size() != kDigits) {
        return std::nullopt;
    }
    for (int place = 0; place < kDigits * kBitsPerDigit; ++place) {
        const int value = valueOf(line.at(place / kBitsPerDigit));
        const bool dark = (value >> (kBitsPerDigit - 1 - place % kBitsPerDigit)) & 1;
        if (value < 0 || (dark && place >= Logo::width)) {
            return std::nullopt;
        }
        if (dark) {
            row.set(static_cast<std::size_t>(place));
        }
    }
    return row;
}

} // namespace

std::optional<Logo> readBitmap(QByteArrayView file, QString& error) {
    error = fault(file);
    if (!error.isEmpty()) {
        return std::nullopt;
    }
    const bool topDown = field<qint32>(file, kHeight) < 0;
    const bool setIsDark = brightness(file, 1) < brightness(file, 0);
    Logo logo;
    for (int y = 0; y < Logo::height; ++y) {
        const qsizetype row = kHead + kRowBytes * (topDown ? y : Logo::height - 1 - y);
        for (int x = 0; x < Logo::width; ++x) {
            const bool set = (field<quint8>(file, row + x / 8) >> (7 - x % 8)) & 1;
            logo.rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = set == setIsDark;
        }
    }
    return logo;
}

QByteArray logoText(const Logo& logo) {
    QByteArray text =
        "Logo of 102 by 64 pixels in the form of the simulated device. A real device needs the text "
        "that its maker's converter writes.";
    text += kDoubleBlank;
    text += "\r\n";
    for (const std::bitset<Logo::width>& row : logo.rows) {
        for (std::size_t first = 0; first < std::size_t{kDigits} * kBitsPerDigit; first += kBitsPerDigit) {
            int value = 0;
            for (std::size_t place = first; place < first + kBitsPerDigit; ++place) {
                value = value * 2 + (place < row.size() && row[place] ? 1 : 0);
            }
            text += "0123456789ABCDEF"[value];
        }
        text += "\r\n";
    }
    return text;
}

std::optional<Logo> readLogo(QByteArrayView text) {
    const QList<QByteArray> lines = text.toByteArray().trimmed().split('\n');
    if (lines.size() != Logo::height) {
        return std::nullopt;
    }
    Logo logo;
    for (qsizetype y = 0; y < Logo::height; ++y) {
        const auto row = readRow(lines[y].endsWith('\r') ? lines[y].chopped(1) : lines[y]);
        if (!row) {
            return std::nullopt;
        }
        logo.rows[static_cast<std::size_t>(y)] = *row;
    }
    return logo;
}

QByteArray logoPicture(const Logo& logo) {
    static const std::array<const char*, 4> kBlocks{" ", "\u2580", "\u2584", "\u2588"};
    QByteArray picture;
    for (int y = 0; y < Logo::height; y += 2) {
        for (int x = 0; x < Logo::width; ++x) {
            picture += kBlocks[(logo.isDark(x, y) ? 1U : 0U) + (logo.isDark(x, y + 1) ? 2U : 0U)];
        }
        picture += '\n';
    }
    return picture;
}

QByteArray logoPbm(const Logo& logo) {
    QByteArray picture = "P1\n102 64\n";
    for (int y = 0; y < Logo::height; ++y) {
        for (int x = 0; x < Logo::width; ++x) {
            picture += logo.isDark(x, y) ? '1' : '0';
            // Readers may refuse lines longer than 70 characters.
            picture += x + 1 == Logo::width / 2 || x + 1 == Logo::width ? "\n" : "";
        }
    }
    return picture;
}

std::optional<QString> logoTextPath(const QString& bitmap) {
    constexpr qsizetype kDropped = 5;
    if (QFileInfo(bitmap).fileName().size() < kDropped) {
        return std::nullopt;
    }
    const QString text = bitmap.chopped(kDropped) + QLatin1String("a.bmt");
    return text == bitmap ? std::nullopt : std::optional(text);
}

} // namespace benthor::simulator
