#include "ctl/table.h"

#include <algorithm>
#include <cwchar>

namespace benthor::ctl {

namespace {

/// Left-to-right marks, embeddings, overrides and isolates.
bool turnsDirection(char32_t character) {
    return character == 0x061c || character == 0x200e || character == 0x200f ||
           (character >= 0x202a && character <= 0x202e) || (character >= 0x2066 && character <= 0x2069);
}

bool movesCursor(char32_t character) {
    return character < 0x20 || (character >= 0x7f && character < 0xa0) || character == 0x2028 ||
           character == 0x2029;
}

int widthOf(char32_t character) {
    return std::max(0, ::wcwidth(static_cast<wchar_t>(character)));
}

QString cut(const QString& line, int width) {
    if (width <= 0 || displayWidth(line) <= width) {
        return line;
    }
    QString kept;
    int taken = 1; // by the sign that something is missing
    for (const char32_t character : line.toUcs4()) {
        taken += widthOf(character);
        if (taken > width) {
            break;
        }
        kept += QString::fromUcs4(&character, 1);
    }
    return kept + QChar(0x2026);
}

} // namespace

QString shownText(const QString& text) {
    QString shown;
    shown.reserve(text.size());
    for (const char32_t character : text.toUcs4()) {
        const bool harmless = !movesCursor(character) && !turnsDirection(character);
        shown += harmless ? QString::fromUcs4(&character, 1) : QStringLiteral(" ");
    }
    return shown;
}

int displayWidth(QStringView text) {
    int width = 0;
    for (const char32_t character : text.toUcs4()) {
        width += widthOf(character);
    }
    return width;
}

Table::Table(QStringList headings) {
    for (QString& heading : headings) {
        right_.push_back(heading.startsWith(QLatin1Char('>')));
        if (right_.back()) {
            heading.remove(0, 1);
        }
    }
    rows_.push_back(std::move(headings));
}

void Table::add(const QStringList& cells) {
    QStringList row;
    for (const QString& cell : cells) {
        row += shownText(cell);
    }
    rows_.push_back(std::move(row));
}

QStringList Table::lines(int width) const {
    std::vector<int> widths(right_.size(), 0);
    for (const QStringList& row : rows_) {
        for (size_t i = 0; i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], displayWidth(row.value(static_cast<qsizetype>(i))));
        }
    }
    QStringList lines;
    for (const QStringList& row : rows_) {
        QString line;
        for (size_t i = 0; i < widths.size(); ++i) {
            const QString cell = row.value(static_cast<qsizetype>(i));
            const QString room(widths[i] - displayWidth(cell), QLatin1Char(' '));
            line += (i == 0 ? QString() : QStringLiteral("  ")) + (right_[i] ? room + cell : cell + room);
        }
        while (line.endsWith(QLatin1Char(' '))) {
            line.chop(1);
        }
        lines += cut(line, width);
    }
    return lines;
}

} // namespace benthor::ctl
