#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace benthor::fuzz {

/// Bytes that are nearly what they should be: a seed makes them the same again.
class JetMutator {
public:
    explicit JetMutator(std::uint32_t seed)
        : state_(seed * 2654435761U + 1) {}

    std::uint32_t number(std::uint32_t below) {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return below == 0 ? 0 : state_ % below;
    }

    /// Some bytes changed, cut out, doubled, or a length made a wild one. `from`: what lies in front stays.
    std::string damaged(std::string bytes, std::uint32_t from = 0) {
        for (std::uint32_t faults = 1 + number(6); faults > 0 && bytes.size() > from; --faults) {
            const std::size_t at = from + number(static_cast<std::uint32_t>(bytes.size()) - from);
            switch (number(5)) {
            case 0:
                bytes[at] = static_cast<char>(number(256));
                break;
            case 1:
                bytes.erase(at, 1 + number(20));
                break;
            case 2:
                bytes.insert(at, bytes.substr(number(static_cast<std::uint32_t>(bytes.size())), number(60)));
                break;
            case 3:
                bytes.replace(at, 4, number(2) == 0 ? "\xff\xff\xff\xff" : "\xff\xff\xff\x7f");
                break;
            default:
                bytes.resize(at);
                break;
            }
        }
        return bytes;
    }

private:
    std::uint32_t state_;
};

} // namespace benthor::fuzz
