#include "exports/uddfxml.h"

#include "exports/wholewrite.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace benthor::exports {

namespace {

constexpr qsizetype kPiece = 64 * 1024;
template <typename Number, typename... Form> QString numberText(Number value, Form... form) {
    constexpr std::size_t kMostDigits = 64;
    std::array<char, kMostDigits> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value, form...);
    return error == std::errc() ? QString::fromLatin1(digits.data(), end - digits.data())
                                : QStringLiteral("0");
}

template <typename Number> QString shortest(Number value) {
    constexpr double kLeast = 1e-6;
    return std::abs(value) < kLeast ? QStringLiteral("0") : numberText(value, std::chars_format::fixed);
}

bool isPlain(QChar letter) {
    const char16_t code = letter.unicode();
    return (code >= u' ' && code < 0xD800) || (code > 0xDFFF && code < 0xFFFE) || code == u'\t' ||
           code == u'\n' || code == u'\r';
}

} // namespace

QString xmlText(const QString& text, bool& replaced) {
    const auto first = std::find_if(text.begin(), text.end(),
                                    [](QChar letter) { return letter == u'\r' || !isPlain(letter); });
    if (first == text.end()) {
        return text;
    }
    QString plain = text;
    for (qsizetype at = first - text.begin(); at < plain.size(); ++at) {
        if (plain[at] == u'\r') {
            plain[at] = u'\n';
        } else if (plain[at].isHighSurrogate() && at + 1 < plain.size() && plain[at + 1].isLowSurrogate()) {
            ++at;
        } else if (!isPlain(plain[at])) {
            plain[at] = QChar::ReplacementCharacter;
            replaced = true;
        }
    }
    return plain;
}

QString decimalText(double value) {
    return shortest(value);
}

QString decimalText(float value) {
    return shortest(value);
}

QString pascalText(double pascal) {
    return numberText(std::round(pascal), std::chars_format::fixed);
}

QString kelvinText(double celsius) {
    constexpr double kZeroCelsius = 273.15;
    return numberText(celsius + kZeroCelsius, std::chars_format::fixed, 2);
}

UddfXml::UddfXml(QIODevice& device)
    : device_(device)
    , writer_(&text_) {
    writer_.setAutoFormatting(true);
    writer_.setAutoFormattingIndent(1);
}

void UddfXml::begin() {
    // Into a text the library writes a declaration that does not tell the encoding.
    text_ += QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    open(QStringLiteral("uddf"));
    writer_.writeDefaultNamespace(QStringLiteral("http://www.streit.cc/uddf/3.2/"));
    attribute(QStringLiteral("version"), QStringLiteral("3.2.3"));
}

void UddfXml::end() {
    writer_.writeEndDocument();
    drain();
    flushWhole(device_);
}

void UddfXml::close() {
    writer_.writeEndElement();
    if (text_.size() >= kPiece) {
        drain();
    }
}

void UddfXml::text(const QString& name, const QString& value) {
    leaf(name, xmlText(value, replaced_));
    if (text_.size() >= kPiece) {
        drain();
    }
}

void UddfXml::leaf(const QString& name, const QString& attribute, const QString& of, const QString& value) {
    writer_.writeStartElement(name);
    writer_.writeAttribute(attribute, of);
    writer_.writeCharacters(value);
    writer_.writeEndElement();
}

void UddfXml::mark(const QString& name, const QString& attribute, const QString& of) {
    writer_.writeEmptyElement(name);
    writer_.writeAttribute(attribute, of);
}

void UddfXml::drain() {
    writeWhole(device_, text_.toUtf8());
    constexpr qsizetype kMostKept = 4 * kPiece; // a note of megabytes is not to stay in memory
    if (text_.capacity() > kMostKept) {
        text_ = QString();
    } else {
        text_.resize(0);
    }
}

} // namespace benthor::exports
