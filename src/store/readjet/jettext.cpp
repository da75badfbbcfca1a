#include "store/readjet/jettext.h"

#include <iconv.h>

namespace benthor::readjet {

namespace {

void appendCharacter(std::string& text, std::uint32_t c) {
    const auto append = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        append(c);
    } else if (c < 0x800) {
        append(0xC0 | c >> 6);
        append(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        append(0xE0 | c >> 12);
        append(0x80 | (c >> 6 & 0x3F));
        append(0x80 | (c & 0x3F));
    } else {
        append(0xF0 | c >> 18);
        append(0x80 | (c >> 12 & 0x3F));
        append(0x80 | (c >> 6 & 0x3F));
        append(0x80 | (c & 0x3F));
    }
}

std::uint32_t byteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

/// The letters of `bytes` with two bytes each.
std::optional<std::u16string> unpacked(std::string_view bytes) {
    std::u16string letters;
    bool packed = false;
    std::size_t at = 0;
    bool turns = false;
    if (bytes.size() >= 2 && byteAt(bytes, 0) == 0xFF && byteAt(bytes, 1) == 0xFE) {
        packed = turns = true;
        at = 2;
    }
    while (at < bytes.size()) {
        if (turns && bytes[at] == 0) {
            packed = !packed;
            ++at;
        } else if (packed) {
            letters += static_cast<char16_t>(byteAt(bytes, at++));
        } else if (bytes.size() - at >= 2) {
            letters += static_cast<char16_t>(byteAt(bytes, at) | byteAt(bytes, at + 1) << 8);
            at += 2;
        } else {
            return std::nullopt;
        }
    }
    return letters;
}

class Converter {
public:
    explicit Converter(const std::string& from)
        : handle_(iconv_open("UTF-8", from.c_str())) {}
    ~Converter() {
        if (isOpen()) {
            iconv_close(handle_);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool isOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }
    iconv_t handle() const { return handle_; }

private:
    iconv_t handle_;
};

} // namespace

std::optional<std::string> textOfJet4(std::string_view bytes) {
    const std::optional<std::u16string> letters = unpacked(bytes);
    if (!letters) {
        return std::nullopt;
    }
    std::string text;
    text.reserve(letters->size());
    for (std::size_t i = 0; i < letters->size(); ++i) {
        const std::uint32_t c = (*letters)[i];
        if (c < 0xD800 || c > 0xDFFF) {
            appendCharacter(text, c);
            continue;
        }
        const std::uint32_t next = i + 1 < letters->size() ? (*letters)[i + 1] : 0;
        if (c > 0xDBFF || next < 0xDC00 || next > 0xDFFF) {
            return std::nullopt;
        }
        appendCharacter(text, 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00));
        ++i;
    }
    return text;
}

std::optional<std::string> textOfJet3(std::string_view bytes, std::uint16_t codePage) {
    constexpr std::uint16_t kWestern = 1252;
    constexpr std::size_t kMostBytesALetter = 4;
    const Converter converter("CP" + std::to_string(codePage == 0 ? kWestern : codePage));
    if (!converter.isOpen()) {
        return std::nullopt;
    }
    std::string text(bytes.size() * kMostBytesALetter, '\0');
    std::string from(bytes);
    char* in = from.data();
    char* out = text.data();
    std::size_t inLeft = from.size();
    std::size_t outLeft = text.size();
    if (iconv(converter.handle(), &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) {
        return std::nullopt;
    }
    text.resize(text.size() - outLeft);
    return text;
}

} // namespace benthor::readjet
