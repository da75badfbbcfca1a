#include "exports/uddfxml.h"

#include "exports/wholewrite.h"

#include <algorithm>

namespace benthor::exports {

namespace {

constexpr qsizetype kPiece = 64 * 1024;
const QString kOpen = QStringLiteral("#"); ///< where the value goes

/// Indented as the elements of a waypoint are.
void format(QXmlStreamWriter& writer) {
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(1);
}

/// A waypoint that holds what `write` writes, from the line end in front of it.
template <typename Write> QByteArray waypointOf(const Write& write) {
    QString text;
    QXmlStreamWriter writer(&text);
    format(writer);
    for (const char* const name : {"uddf", "profiledata", "repetitiongroup", "dive", "samples", "waypoint"}) {
        writer.writeStartElement(QLatin1String(name));
    }
    write(writer);
    writer.writeEndElement();
    return text.mid(text.indexOf(u'>', text.indexOf(QLatin1String("<samples"))) + 1).toUtf8();
}

UddfForm formAround(const QByteArray& bytes) {
    const qsizetype at = bytes.indexOf(kOpen.toUtf8());
    return {bytes.first(at), bytes.sliced(at + kOpen.size())};
}

template <typename Write> UddfForm formOf(const Write& write) {
    QByteArray bytes = waypointOf(write);
    bytes.remove(0, bytes.indexOf('>') + 1); // the waypoint's own tags
    bytes.truncate(bytes.lastIndexOf('\n'));
    return formAround(bytes);
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

UddfForm UddfForm::waypoint() {
    QByteArray bytes = waypointOf([](QXmlStreamWriter& writer) { writer.writeEmptyElement(kOpen); });
    const qsizetype from = bytes.indexOf('>') + 1;
    return formAround(bytes.replace(from, bytes.lastIndexOf('\n') - from, kOpen.toUtf8()));
}

UddfXml::UddfXml(QIODevice& device)
    : device_(device)
    , writer_(&text_) {
    format(writer_);
    bytes_.reserve(2 * kPiece);
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
    take();
    drain();
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

void UddfXml::fill(const UddfForm& form, QByteArrayView value) {
    put(form.before);
    bytes_.append(value);
    bytes_.append(form.behind);
}

void UddfXml::put(QByteArrayView bytes) {
    if (!text_.isEmpty()) {
        take();
    }
    bytes_.append(bytes);
    if (bytes_.size() >= kPiece) {
        drain();
    }
}

/// What the library has written until now goes behind the bytes.
void UddfXml::take() {
    constexpr qsizetype kSome = 4096;
    constexpr qsizetype kMostKept = 4 * kPiece; // a note of megabytes is not to stay in memory
    bytes_ += text_.toUtf8();
    if (text_.capacity() > kMostKept) {
        text_ = QString();
        text_.reserve(kSome);
    } else {
        text_.resize(0);
    }
    if (bytes_.size() >= kPiece) {
        drain();
    }
}

void UddfXml::drain() {
    writeWhole(device_, bytes_);
    if (bytes_.capacity() > 4 * kPiece) {
        bytes_ = QByteArray();
        bytes_.reserve(2 * kPiece);
    } else {
        bytes_.resize(0);
    }
}

} // namespace benthor::exports
