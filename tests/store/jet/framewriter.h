#pragma once

#include "store/jet/pipe.h"

#include <string>
#include <string_view>

namespace benthor::tests {

/// Puts a frame together, sound or not.
class FrameWriter {
public:
    explicit FrameWriter(char mark)
        : mark_(mark) {}

    template <class Number> FrameWriter& number(Number value) {
        body_ += bytesOf(value);
        return *this;
    }
    FrameWriter& text(std::string_view bytes) {
        body_ += bytes;
        return *this;
    }
    FrameWriter& name(std::string_view bytes) {
        return number(static_cast<std::uint16_t>(bytes.size())).text(bytes);
    }
    FrameWriter& value(std::string_view bytes) {
        return number(static_cast<std::uint32_t>(bytes.size())).text(bytes);
    }
    FrameWriter& null() { return number(store::pipe::kNull); }

    std::string frame() const { return mark_ + bytesOf(static_cast<std::uint32_t>(body_.size())) + body_; }

private:
    template <class Number> static std::string bytesOf(Number value) {
        std::string bytes;
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            bytes += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i) & 0xFF);
        }
        return bytes;
    }

    char mark_;
    std::string body_;
};

} // namespace benthor::tests
