#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace benthor::readjet {

/// What is wrong with the file, in a sentence for the user.
class Fault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where a row lies on its page.
struct RowPlace {
    std::uint32_t start = 0;
    std::uint32_t size = 0;
    bool deleted = false;   ///< its slot says that it is gone
    bool elsewhere = false; ///< four bytes that say where it lies now
};

/// The pages of a Jet file by our own reading of them, with every offset held against the page and the file.
/// The library that reads the tables believes what stands there; this does not. A Fault says what is wrong.
class JetPages {
public:
    explicit JetPages(const std::string& path);

    bool isJet3() const { return pageSize_ == kJet3Page; }
    std::uint32_t pageSize() const { return pageSize_; }
    std::uint32_t count() const { return count_; }

    /// A page's bytes; they last until the next call.
    std::string_view page(std::uint32_t number);

    /// The count of rows that a table's definition page keeps; its further pages are walked.
    std::uint32_t rowsOf(std::uint32_t definition);

    /// How many rows the slots of a data page tell of, and where one of them is.
    std::uint32_t slotsOf(std::uint32_t number);
    RowPlace placeOf(std::uint32_t number, std::uint32_t slot);
    /// The page that a data page says it belongs to; memo pages belong to kMemoOwner.
    std::uint32_t ownerOf(std::uint32_t number);

    /// The page and the slot of a pointer.
    static std::uint32_t pageOf(std::uint32_t pointer) { return pointer >> 8; }
    static std::uint32_t slotOf(std::uint32_t pointer) { return pointer & 0xFF; }

    /// The whole of a long value, from the bytes that stand for it in its row.
    std::string longValue(std::string_view inRow);

    static constexpr std::uint32_t kMemoOwner = 0x4C41564C; // "LVAL"
    static constexpr std::uint32_t kMostValue = 64U << 20;

private:
    static constexpr std::uint32_t kJet3Page = 2048;
    static constexpr std::uint32_t kJet4Page = 4096;

    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    std::string_view memoRow(std::uint32_t pointer);
    std::string chained(std::uint32_t pointer, std::uint32_t length);

    std::unique_ptr<std::FILE, Close> file_;
    std::uint32_t pageSize_ = kJet4Page;
    std::uint32_t count_ = 0;
    std::uint32_t loaded_ = 0;
    bool hasLoaded_ = false;
    std::array<char, kJet4Page> bytes_{};
};

/// Little-endian numbers at an offset; a Fault where they do not lie in the bytes.
std::uint16_t number16(std::string_view bytes, std::size_t at);
std::uint32_t number32(std::string_view bytes, std::size_t at);

} // namespace benthor::readjet
