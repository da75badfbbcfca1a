#include "link/console.h"
#include "platform/textformat.h"
#include "session/process.h"

#include <algorithm>
#include <array>

namespace benthor::link {

namespace {

// The value stands behind two filler characters, counted from the first letter of a one-letter tag; a longer
// tag is counted from its first letter as well.
constexpr qsizetype kValueBehindTag = 3;

/// Where the values of the head-up display stand: behind the first such letter of the text.
struct DisplayValue {
    const char* letter;
    std::size_t box; ///< of `Text16`
    bool bar;        ///< hundredths of a bar; else a whole number
};
constexpr std::array<DisplayValue, 5> displayvalues{
    {{"A", 2, false}, {"B", 3, true}, {"C", 4, true}, {"D", 5, true}, {"E", 6, true}}};
constexpr qsizetype kDisplayDigits = 3;

QString part(const MarkedText& text, qsizetype from, qsizetype length) {
    return from >= text.size() ? QString() : QString::fromLatin1(text.bytes().mid(from, length));
}

/// Three digits and nothing else: "V3.10" is a version, not an interval.
bool isThreeDigits(const QString& text) {
    return text.size() == 3 && std::all_of(text.begin(), text.end(), [](QChar character) {
               return character >= u'0' && character <= u'9';
           });
}

void readdisplayvalues(LinkState& link) {
    for (const DisplayValue& value : displayvalues) {
        const qsizetype at = link.Text4.find(value.letter);
        const QString digits = at < 0 ? QString() : part(link.Text4, at + 1, kDisplayDigits);
        if (!isThreeDigits(digits)) {
            continue;
        }
        const double number = platform::leadingNumber(digits);
        link.console.Text16[value.box] = value.bar ? platform::formatNumber(number / 100, u"0.00")
                                                   : QString::number(platform::toWhole(number));
    }
}

} // namespace

void replyecho(LinkState& link) {
    Console& console = link.console;
    if (console.replytag.isEmpty()) {
        return;
    }
    const qsizetype at = link.Text4.find(console.replytag);
    if (at >= 0) {
        const double number =
            platform::leadingNumber(part(link.Text4, at + kValueBehindTag, console.replywidth));
        console.TextResponse.text = QString::number(number, 'g', 15) + console.replysuffix;
    }
}

void readinterval(LinkState& link) {
    Console& console = link.console;
    if (console.option != kChoiceIntervalGet || console.intervalread) {
        return;
    }
    const qsizetype at = console.replytag.isEmpty() ? -1 : link.Text4.find(console.replytag);
    const QString digits = at < 0 ? QString() : part(link.Text4, at + kValueBehindTag, console.replywidth);
    if (isThreeDigits(digits)) {
        const QString interval = QString::number(platform::toWhole(platform::leadingNumber(digits)));
        console.Text16[1] = interval;
        console.Text16[0] = interval;
        console.intervaltyped = false;
    }
    if (console.Frame4Visible) {
        readdisplayvalues(link);
    }
    // One look behind each click, whatever it found: what comes later is no answer to it.
    console.intervalread = true;
}

void refreshtexttosend(LinkState& link) {
    Console& console = link.console;
    if (console.option != kChoiceBook && console.option != kChoiceLogo) {
        process().uploadtext = console.Text7;
    }
    if (!console.filenameshown.isEmpty()) {
        console.Text5.text = console.uploadfile;
    }
    console.Text12.enabled = console.option == kChoiceBook || console.option == kChoiceOther;
}

} // namespace benthor::link
