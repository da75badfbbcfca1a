#include "gas/setupfields.h"

#include "gas/gascalc.h"
#include "platform/textformat.h"

#include <algorithm>
#include <cmath>

namespace benthor::gas {

namespace {

constexpr int kMixPlaces = 3;
constexpr int kDepthPlaces = 4;
constexpr double kMostDepth = 9999;
constexpr int kTenths = 1; ///< a depth that was read comes with its tenth

bool isDigit(QChar one) {
    return one >= u'0' && one <= u'9';
}

QString padded(const QString& text) {
    return text.rightJustified(kMixPlaces, QLatin1Char('0'));
}

QString nameOfPlace(qsizetype place) {
    if (place < kGasBlock) {
        return QStringLiteral("Gas %1").arg(place / kRowWidth);
    }
    qsizetype behind = kGasBlock;
    for (const Tag& tag : kTags) {
        behind += tag.width + 2; // the letter and the blank
        if (place < behind) {
            return QLatin1String(tag.setting);
        }
    }
    return QStringLiteral("the end");
}

/// Whether a helium cell is a number that its three places hold. One with a point does: the guards of the
/// sending refuse it.
bool heliumFits(const QString& text) {
    return !text.isEmpty() && text.size() <= kMixPlaces && text != QLatin1String(".") &&
           std::all_of(text.begin(), text.end(), [](QChar one) { return isDigit(one) || one == u'.'; }) &&
           text.count(u'.') <= 1;
}

} // namespace

std::optional<double> unsignednumber(QStringView text, int places) {
    const QStringView number = text.trimmed();
    const qsizetype point = number.indexOf(u'.');
    if (!platform::isNumeric(number) || !(isDigit(number.front()) || number.front() == u'.') ||
        (point >= 0 && number.size() - point - 1 > places) || (places == 0 && point >= 0)) {
        return std::nullopt;
    }
    return platform::leadingNumber(number);
}

QString blanktext() {
    QString text;
    for (int row = 0; row < kGases; ++row) {
        text += QChar(u'A' + row) + QStringLiteral("000 000 0000 0 ");
    }
    for (const Tag& tag : kTags) {
        text += QChar(tag.letter) + QString(tag.width, QLatin1Char('0')) + QLatin1Char(' ');
    }
    return text + QLatin1Char('Z') + QChar(kEscape);
}

QString misplaced(const QString& text, Part part) {
    static const QString places = blanktext();
    const qsizetype length = part == Part::Whole ? kSetupText : kGasBlock;
    if (part == Part::Whole ? text.size() != length : text.size() < length) {
        return QStringLiteral("the length");
    }
    for (qsizetype place = 0; place < length; ++place) {
        const QChar told = places.at(place);
        if (isDigit(told) ? !isDigit(text.at(place)) : text.at(place) != told) {
            return nameOfPlace(place);
        }
    }
    return {};
}

QString differing(const QString& one, const QString& other) {
    constexpr qsizetype kBehindStamp = kGasBlock + 1 + 10;
    for (qsizetype place = 0; place < std::max(one.size(), other.size()); ++place) {
        const bool stamp = place > kGasBlock && place < kBehindStamp;
        if (!stamp && (place >= one.size() || place >= other.size() || one.at(place) != other.at(place))) {
            return nameOfPlace(place);
        }
    }
    return {};
}

GasFields gasfields(const GasRow& row, double depthperbar) {
    GasFields fields;
    const auto oxygen = unsignednumber(row.O2, 0);
    const auto helium = heliumFits(row.He) ? cellnumber(row.He) : std::nullopt;
    if (oxygen && helium && *oxygen + *helium <= 100) {
        const double nitrogen = 100 - *oxygen - platform::roundToEven(*helium);
        fields.nitrogen = padded(QString::number(static_cast<int>(std::max(nitrogen, 0.0))));
        fields.helium = padded(row.He);
    }
    const auto mod = unsignednumber(row.MOD, kTenths);
    if (mod) {
        const double depth = platform::roundToEven(*mod / depthperbar * 100);
        if (depth <= kMostDepth) {
            fields.depth = platform::formatNumber(depth, u"0000");
        }
    }
    return fields;
}

std::optional<QString> gasblockof(const GasPlan& plan, const QString& last) {
    // A change of unit that ended early leaves depths of the unit before: they go when it is taken up again.
    const bool depths = plan.headfeet == plan.feet();
    QString block;
    for (int i = 0; i < kGases; ++i) {
        const GasRow& row = plan.rows[static_cast<size_t>(i)];
        const GasFields fields = gasfields(row, plan.depthperbar);
        const auto field = [&](const std::optional<QString>& value, int at, int length) {
            return value ? *value : last.mid(kRowWidth * i + at - 1, length);
        };
        block += QChar(u'A' + i) + field(fields.nitrogen, 2, kMixPlaces) + QLatin1Char(' ') +
                 field(fields.helium, 6, kMixPlaces) + QLatin1Char(' ') +
                 field(depths ? fields.depth : std::nullopt, 10, kDepthPlaces) + QLatin1Char(' ') +
                 (row.active ? QLatin1String("1 ") : QLatin1String("0 "));
    }
    // Shorter only where a field has neither a value nor characters to keep.
    return block.size() == kGasBlock ? std::optional(block) : std::nullopt;
}

void putfield(QString& text, const Tag& tag, const QString& value) {
    if (value.size() != tag.width) {
        return;
    }
    const qsizetype at = text.indexOf(QChar(tag.letter), 0, Qt::CaseInsensitive);
    if (at >= 0) {
        const qsizetype length = std::min<qsizetype>(tag.width + 1, text.size() - at);
        text.replace(at, length, (QChar(tag.letter) + value).first(length));
    }
}

void putgases(QString& text, const QString& gasblock) {
    text.replace(0, std::min<qsizetype>(kGasBlock, text.size()), gasblock);
}

} // namespace benthor::gas
