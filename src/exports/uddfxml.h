#pragma once

#include "exports/uddfnumbers.h"
#include "platform/pieces.h"

#include <QIODevice>
#include <QString>
#include <QXmlStreamWriter>

#include <cstring>
#include <functional>
#include <type_traits>

namespace benthor::exports {

/// An element as the library writes it, around a place that is left open for a value. Samples and mixes are
/// nearly all of a file, and their elements the same again and again but for a few digits.
struct UddfForm {
    QByteArray before, behind;

    /// An element that holds others, the last of these; the ones before it are those that it stands in.
    static UddfForm around(std::initializer_list<const char*> elements);
    /// <name id="value"> in that parent of the root's, and in it what `write` writes.
    static UddfForm withId(const QString& parent, const QString& name,
                           const std::function<void(QXmlStreamWriter&)>& write);

    // Elements of a waypoint.

    /// <name>value</name>
    static UddfForm leaf(const QString& name);
    /// <name attribute="of">value</name>
    static UddfForm leaf(const QString& name, const QString& attribute, const QString& of);
    /// <name attribute="value"/>
    static UddfForm mark(const QString& name, const QString& attribute);
    /// <decostop kind="mandatory" decodepth="value" duration="0"/>: how long a stop is to last is not
    /// recorded
    static UddfForm ceiling();
};

/// Forms filled one behind the other, in memory: of a file what can be made on any thread.
class UddfBytes {
public:
    /// A form with a value of digits, or of letters that need no escape.
    void fill(const UddfForm& form, QByteArrayView value) { put(form.before).put(value).put(form.behind); }
    /// A form with a number that `write` of uddfnumbers.h writes.
    template <class Number>
    void fill(const UddfForm& form, char* (*write)(char*, Number), std::type_identity_t<Number> value) {
        put(form.before);
        makeRoom(kMostDigits);
        char* const at = bytes_.data() + size_;
        size_ += write(at, value) - at;
        put(form.behind);
    }
    /// A form with any text whatever: characters that XML cannot hold stand as U+FFFD.
    void fillText(const UddfForm& form, const QString& value);
    UddfBytes& put(QByteArrayView bytes) {
        makeRoom(bytes.size());
        std::memcpy(bytes_.data() + size_, bytes.data(), static_cast<std::size_t>(bytes.size()));
        size_ += bytes.size();
        return *this;
    }

    qsizetype size() const { return size_; }
    /// The bytes until now; it is empty then.
    QByteArray take();
    /// Whether fillText() ever replaced characters.
    bool replaced() const { return replaced_; }

private:
    void makeRoom(qsizetype bytes) {
        if (size_ + bytes > bytes_.size()) {
            grow(bytes);
        }
    }
    void grow(qsizetype bytes);

    QByteArray bytes_;   ///< with room behind them
    qsizetype size_ = 0; ///< of these taken
    bool replaced_ = false;
};

/// The elements of a UDDF file as bytes, handed on in pieces of some tens of kilobytes. Every function throws
/// ExportError when the device does not take them.
class UddfXml {
public:
    /// `device` must be open, and outlive it.
    explicit UddfXml(QIODevice& device);

    void begin(); ///< the declaration and the root
    void end();   ///< closes the root; the device has all bytes then

    void open(const QString& name) { writer_.writeStartElement(name); }
    /// Of the element opened last. `value` holds nothing that XML does not.
    void attribute(const QString& name, const QString& value) { writer_.writeAttribute(name, value); }
    void close();

    /// An element of nothing but `value`, which holds nothing that XML does not.
    void leaf(const QString& name, const QString& value) { writer_.writeTextElement(name, value); }
    void leaf(const QString& name, const NumberText& value) { leaf(name, value.text()); }
    /// The same with any text whatever: characters that XML cannot hold stand as U+FFFD.
    void text(const QString& name, const QString& value);
    /// An element that has nothing but an attribute.
    void mark(const QString& name, const QString& attribute, const QString& of);
    /// <link ref="...">
    void link(const QString& ref) { mark(QStringLiteral("link"), QStringLiteral("ref"), ref); }

    /// Whole elements as bytes. Not right behind open() and mark(): what they write is finished by the
    /// library's next element only.
    void put(QByteArrayView bytes);

    /// Whether text() replaced characters since the last call.
    bool takeReplaced() { return std::exchange(replaced_, false); }

private:
    void take();

    QIODevice& device_;
    platform::Pieces pieces_;
    QString text_; ///< of the library, behind these
    QXmlStreamWriter writer_;
    bool replaced_ = false;
};

/// `text` with U+FFFD for what XML 1.0 cannot hold: control characters, halves of surrogate pairs, U+FFFE and
/// U+FFFF; `replaced` is set then. Tabs and line feeds stay, and a carriage return becomes a line feed, as
/// any reader would have it.
QString xmlText(const QString& text, bool& replaced);

} // namespace benthor::exports
