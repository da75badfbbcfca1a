// A setup text that is taken over to the screen.

#include "gas/gascalc.h"
#include "gas/setuptext.h"
#include "platform/textformat.h"
#include "session/process.h"

namespace benthor::gas {

namespace {

using platform::formatNumber;

/// A field that is no number, or no value of what it stands for.
struct BadField {};

/// `length` characters from position `at`, counted from 1.
QString part(const QString& text, int at, int length) {
    return text.mid(at - 1, length);
}

long long wholeAt(const QString& text, int at, int length) {
    const auto whole = cellwhole(part(text, at, length));
    if (!whole) {
        throw BadField{};
    }
    return *whole;
}

long long wholeOf(const QString& value) {
    const auto whole = cellwhole(value);
    if (!whole) {
        throw BadField{};
    }
    return *whole;
}

int indexOf(double value, int items) {
    const double index = platform::roundToEven(value);
    if (index < 0 || index >= items) {
        throw BadField{};
    }
    return static_cast<int>(index);
}

bool flagOf(const QString& value) {
    const long long whole = wholeOf(value);
    if (whole != 0 && whole != 1) {
        throw BadField{};
    }
    return whole == 1;
}

void takeField(GasPlan& plan, char16_t letter, const QString& value) {
    Settings& settings = plan.settings;
    switch (letter) {
    case u'L':
        plan.start = indexOf(static_cast<double>(wholeOf(value)), kGases);
        break;
    case u'M':
        settings.backlight = indexOf(static_cast<double>(wholeOf(value)), 5);
        break;
    case u'N':
        settings.laststop = indexOf(static_cast<double>(wholeOf(value)), 3);
        break;
    case u'O':
        settings.hudhi = flagOf(value);
        break;
    case u'P':
        settings.sptext = formatNumber(static_cast<double>(wholeOf(value)) / 100, u"0.00");
        break;
    case u'Q':
        settings.silent = flagOf(value);
        break;
    case u'R':
        settings.biggraphics = flagOf(value);
        break;
    case u'S':
        process().depthunit = value == QLatin1String("1") ? QStringLiteral("metre") : QStringLiteral("Feet");
        break;
    case u'T':
        settings.cns = indexOf(static_cast<double>(wholeOf(value) - 80) / 10, 7);
        break;
    case u'U':
        settings.safety = indexOf(static_cast<double>(wholeOf(value) - 4) / 20, 6);
        break;
    case u'V':
        settings.ScreenSaveText = QString::number(wholeOf(value));
        break;
    case u'W':
        settings.HomeText = QString::number(wholeOf(value));
        break;
    case u'X':
        settings.closed = flagOf(value);
        break;
    default: // the stamp is read apart, and the second closed circuit has no reader
        break;
    }
}

/// One gas of a text; `depth` makes the cell's text from the number in its depth field.
template <typename Depth>
void takeRow(GasPlan& plan, int row, const QString& text, const Say& say, TextFrom from, Depth depth) {
    const int at = kRowWidth * row;
    const long long helium = wholeAt(text, at + 6, 3);
    const long long nitrogen = wholeAt(text, at + 2, 3);
    GasRow& gas = plan.rows[static_cast<size_t>(row)];
    setO2(plan, row, QString::number(100 - helium - nitrogen), say);
    setHe(plan, row, QString::number(helium), say);
    gas.HeColour = helium > 0 ? kLightYellow : kLightCyan;
    setMOD(plan, row, depth(wholeAt(text, at + 10, 4)));
    gas.active = part(text, at + 15, 1) == QLatin1String("1");
    gas.cellsEnabled = gas.active;        // as a click on its box leaves them
    gas.changed = from == TextFrom::File; // the diver chose the file
    gas.owed = false;
    gas.MODread = true;
    gas.MODtyped = false;
}

QString fieldIn(const QString& text, const Tag& tag) {
    const qsizetype at = text.indexOf(QChar(tag.letter), 0, Qt::CaseInsensitive);
    return at < 0 ? QString() : text.mid(at + 1, tag.width);
}

} // namespace

bool taketext(GasPlan& plan, const QString& text, const Say& say, TextFrom from) {
    try {
        for (int row = 0; row < kGases; ++row) {
            takeRow(plan, row, text, say, from,
                    [](long long depth) { return generaltext(static_cast<double>(depth) / 10.0); });
        }
        plan.Label14 = static_cast<double>(wholeAt(text, 162, 10));
        for (const Tag& tag : kTags) {
            const QString value = fieldIn(text, tag);
            if (!value.isNull()) {
                takeField(plan, tag.letter, value);
            }
        }
        return true;
    } catch (const BadField&) {
        return false;
    }
}

void gas_openupdate(GasPlan& plan, const Say& say) {
    plan.Text6 = process().uploadtext;
    if (plan.Text6.size() < kUsableText) {
        return;
    }
    try {
        for (int row = 0; row < kGases; ++row) {
            takeRow(plan, row, plan.Text6, say, TextFrom::Device, [&plan](long long depth) {
                return generaltext(platform::roundToEven(static_cast<double>(depth) / plan.depthperbar));
            });
            showgasrow(plan, row);
        }
    } catch (const BadField&) {
        // the rows already taken stay
    }
}

} // namespace benthor::gas
