#include "exports/uddfxml.h"

#include "exports/wholewrite.h"

#include <algorithm>
#include <cstring>

namespace benthor::exports {

namespace {

constexpr qsizetype kRoom = 65536;         ///< that bytes in memory grow by, at least
const QString kOpen = QStringLiteral("#"); ///< where the value goes

/// Indented as the elements of a waypoint are.
void format(QXmlStreamWriter& writer) {
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
}

using Write = std::function<void(QXmlStreamWriter&)>;

/// What `write` writes within these elements, from the line end in front of it, and the end of the innermost
/// of them, which is to have nothing else in it.
QByteArray within(const std::vector<const char*>& elements, const Write& write) {
    QString text;
    QXmlStreamWriter writer(&text);
    format(writer);
    for (const char* const name : elements) {
        writer.writeStartElement(QLatin1String(name));
    }
    const qsizetype from = text.size() + 1; // the bracket comes with what is next
    write(writer);
    writer.writeEndElement();
    return text.mid(from).toUtf8();
}

UddfForm formAround(const QByteArray& bytes) {
    const qsizetype at = bytes.indexOf(kOpen.toUtf8());
    return {bytes.first(at), bytes.sliced(at + kOpen.size())};
}

UddfForm formOf(const std::vector<const char*>& elements, const Write& write) {
    const QByteArray bytes = within(elements, write);
    return formAround(bytes.first(bytes.lastIndexOf('\n')));
}

UddfForm formOf(const Write& write) {
    return formOf({"uddf", "profiledata", "repetitiongroup", "dive", "samples", "waypoint"}, write);
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

UddfForm UddfForm::leaf(const QString& name) {
    return formOf([&](QXmlStreamWriter& writer) { writer.writeTextElement(name, kOpen); });
}

UddfForm UddfForm::leaf(const QString& name, const QString& attribute, const QString& of) {
    return formOf([&](QXmlStreamWriter& writer) {
        writer.writeStartElement(name);
        writer.writeAttribute(attribute, of);
        writer.writeCharacters(kOpen);
        writer.writeEndElement();
    });
}

UddfForm UddfForm::mark(const QString& name, const QString& attribute) {
    return formOf([&](QXmlStreamWriter& writer) {
        writer.writeEmptyElement(name);
        writer.writeAttribute(attribute, kOpen);
    });
}

UddfForm UddfForm::ceiling() {
    return formOf([](QXmlStreamWriter& writer) {
        writer.writeEmptyElement(QStringLiteral("decostop"));
        writer.writeAttribute(QStringLiteral("kind"), QStringLiteral("mandatory"));
        writer.writeAttribute(QStringLiteral("decodepth"), kOpen);
        writer.writeAttribute(QStringLiteral("duration"), QStringLiteral("0"));
    });
}

UddfForm UddfForm::around(std::initializer_list<const char*> elements) {
    QByteArray bytes = within({elements.begin(), elements.end() - 1}, [&](QXmlStreamWriter& writer) {
        writer.writeStartElement(QLatin1String(*(elements.end() - 1)));
        writer.writeEmptyElement(QStringLiteral("none"));
        writer.writeEndElement();
    });
    bytes.truncate(bytes.lastIndexOf('\n'));
    const qsizetype from = bytes.indexOf('>') + 1;
    return formAround(bytes.replace(from, bytes.lastIndexOf('\n') - from, kOpen.toUtf8()));
}

UddfForm UddfForm::withId(const QString& parent, const QString& name, const Write& write) {
    const QByteArray parentName = parent.toUtf8();
    return formOf({"uddf", parentName.constData()}, [&](QXmlStreamWriter& writer) {
        writer.writeStartElement(name);
        writer.writeAttribute(QStringLiteral("id"), kOpen);
        write(writer);
        writer.writeEndElement();
    });
}

void UddfBytes::fillText(const UddfForm& form, const QString& value) {
    fill(form, xmlText(value, replaced_).toHtmlEscaped().toUtf8());
}

void UddfBytes::grow(qsizetype bytes) {
    bytes_.resize(std::max(2 * bytes_.size(), size_ + bytes + kRoom));
}

QByteArray UddfBytes::take() {
    bytes_.resize(std::exchange(size_, 0));
    return std::exchange(bytes_, QByteArray());
}

UddfXml::UddfXml(QIODevice& device)
    : device_(device)
    , writer_(&text_) {
    format(writer_);
}

void UddfXml::begin() {
    // Into a text the library writes a declaration that does not tell the encoding.
    text_ += QLatin1String(R"(<?xml version="1.0" encoding="UTF-8"?>)");
    open(QStringLiteral("uddf"));
    writer_.writeDefaultNamespace(QStringLiteral("http://www.streit.cc/uddf/3.2/"));
    attribute(QStringLiteral("version"), QStringLiteral("3.2.3"));
}

void UddfXml::end() {
    writer_.writeEndDocument();
    take();
    pieces_.flush([this](QByteArrayView piece) { writeWhole(device_, piece); });
    flushWhole(device_);
}

void UddfXml::close() {
    writer_.writeEndElement();
    take();
}

void UddfXml::text(const QString& name, const QString& value) {
    leaf(name, xmlText(value, replaced_));
    take();
}

void UddfXml::mark(const QString& name, const QString& attribute, const QString& of) {
    writer_.writeEmptyElement(name);
    writer_.writeAttribute(attribute, of);
}

void UddfXml::put(QByteArrayView bytes) {
    if (!text_.isEmpty()) {
        take();
    }
    pieces_.put(bytes, [this](QByteArrayView piece) { writeWhole(device_, piece); });
}

/// What the library has written until now goes behind the bytes.
void UddfXml::take() {
    constexpr qsizetype kMostKept = 4 * kRoom; // a note of megabytes is not to stay in memory
    const QByteArray bytes = text_.toUtf8();
    if (text_.capacity() > kMostKept) {
        text_ = QString();
    } else {
        text_.resize(0);
    }
    put(bytes);
}

} // namespace benthor::exports
