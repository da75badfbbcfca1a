#include "store/readjet/jetpages.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace benthor::readjet {

namespace {

constexpr std::uint8_t kDataPage = 1;
constexpr std::uint8_t kDefinitionPage = 2;

constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kOwnerAt = 4;
constexpr std::size_t kNextDefinitionAt = 4;

constexpr std::uint16_t kDeleted = 0x8000;
constexpr std::uint16_t kElsewhere = 0x4000;
constexpr std::uint16_t kOffset = 0x1FFF;

std::string onPage(std::uint32_t number) {
    return " (page " + std::to_string(number) + ")";
}

} // namespace

std::uint16_t number16(std::string_view bytes, std::size_t at) {
    if (bytes.size() < 2 || at > bytes.size() - 2) {
        throw Fault("The file is damaged: a number lies outside its page.");
    }
    return static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[at]) |
                                      static_cast<unsigned char>(bytes[at + 1]) << 8);
}

std::uint32_t number32(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint32_t>(number16(bytes, at)) |
           static_cast<std::uint32_t>(number16(bytes, at + 2)) << 16;
}

JetPages::JetPages(const std::string& path)
    : file_(std::fopen(path.c_str(), "rb")) {
    struct stat state {};
    if (!file_ || fstat(fileno(file_.get()), &state) != 0) {
        throw Fault(std::string("The file cannot be read: ") + std::strerror(errno) + ".");
    }
    if (!S_ISREG(state.st_mode)) {
        throw Fault("It is no file.");
    }
    std::array<char, kVersionAt + 1> head{};
    if (std::fread(head.data(), 1, head.size(), file_.get()) != head.size()) {
        throw Fault("The file is cut off.");
    }
    const std::string_view words(head.data() + 4, 15);
    if (words != "Standard Jet DB" && words != "Standard ACE DB") {
        throw Fault("It is no Jet file.");
    }
    pageSize_ = head[kVersionAt] == 0 ? kJet3Page : kJet4Page;
    const auto size = static_cast<std::uint64_t>(state.st_size);
    if (size % pageSize_ != 0 || size / pageSize_ < 3) {
        throw Fault("The file is cut off: its size is " + std::to_string(size) +
                    " bytes, which is no number of whole pages.");
    }
    if (size / pageSize_ > 0xFFFFFF) {
        throw Fault("The file is larger than a Jet file can be.");
    }
    count_ = static_cast<std::uint32_t>(size / pageSize_);
}

std::string_view JetPages::page(std::uint32_t number) {
    if (number >= count_) {
        throw Fault("The file is cut off or damaged: it points to its page " + std::to_string(number) +
                    " and has " + std::to_string(count_) + ".");
    }
    if (!hasLoaded_ || loaded_ != number) {
        hasLoaded_ = false;
        if (std::fseek(file_.get(), static_cast<long>(number) * static_cast<long>(pageSize_), SEEK_SET) !=
                0 ||
            std::fread(bytes_.data(), 1, pageSize_, file_.get()) != pageSize_) {
            throw Fault("The file cannot be read" + onPage(number) + ".");
        }
        loaded_ = number;
        hasLoaded_ = true;
    }
    return {bytes_.data(), pageSize_};
}

std::uint32_t JetPages::rowsOf(std::uint32_t definition) {
    constexpr std::size_t kRowsAtJet3 = 12;
    constexpr std::size_t kRowsAtJet4 = 16;
    std::uint32_t pages = 0;
    for (std::uint32_t next = definition; next != 0;) {
        const std::string_view bytes = page(next);
        if (static_cast<std::uint8_t>(bytes[0]) != kDefinitionPage) {
            throw Fault("The file is damaged: the definition of a table is not where it should be" +
                        onPage(next) + ".");
        }
        if (++pages > count_) {
            throw Fault("The file is damaged: the definition of a table has no end" + onPage(definition) +
                        ".");
        }
        next = number32(bytes, kNextDefinitionAt);
    }
    return number32(page(definition), isJet3() ? kRowsAtJet3 : kRowsAtJet4);
}

std::uint32_t JetPages::slotsOf(std::uint32_t number) {
    const std::string_view bytes = page(number);
    if (static_cast<std::uint8_t>(bytes[0]) != kDataPage) {
        throw Fault("The file is damaged: a page should hold rows and does not" + onPage(number) + ".");
    }
    const std::uint32_t slots = number16(bytes, isJet3() ? 8 : 12);
    if ((isJet3() ? 10 : 14) + slots * 2 > pageSize_) {
        throw Fault("The file is damaged: a page tells of more rows than it can hold" + onPage(number) + ".");
    }
    return slots;
}

RowPlace JetPages::placeOf(std::uint32_t number, std::uint32_t slot) {
    const std::uint32_t slots = slotsOf(number);
    if (slot >= slots) {
        throw Fault("The file is damaged: it points to a row that is not there" + onPage(number) + ".");
    }
    const std::string_view bytes = page(number);
    const std::size_t table = isJet3() ? 10 : 14;
    const std::uint16_t entry = number16(bytes, table + slot * 2);
    // Rows are laid from the end of the page on, each in front of the one before it.
    const std::uint32_t end =
        slot == 0 ? pageSize_ : number16(bytes, table + (slot - 1) * 2) & static_cast<std::uint32_t>(kOffset);
    const RowPlace place{entry & static_cast<std::uint32_t>(kOffset),
                         end - (entry & static_cast<std::uint32_t>(kOffset)), (entry & kDeleted) != 0,
                         (entry & kElsewhere) != 0};
    if (end > pageSize_ || place.start > end || place.start < table + slots * 2) {
        throw Fault("The file is damaged: a row lies outside its page" + onPage(number) + ".");
    }
    return place;
}

std::uint32_t JetPages::ownerOf(std::uint32_t number) {
    return number32(page(number), kOwnerAt);
}

std::string_view JetPages::memoRow(std::uint32_t pointer) {
    const std::uint32_t number = pageOf(pointer);
    const RowPlace place = placeOf(number, slotOf(pointer));
    if (ownerOf(number) != kMemoOwner || place.elsewhere) {
        throw Fault("The file is damaged: a long text is not where it should be" + onPage(number) + ".");
    }
    return page(number).substr(place.start, place.size);
}

/// Pieces, each of which begins with the place of the next, until they are as long as is told.
std::string JetPages::chained(std::uint32_t pointer, std::uint32_t length) {
    std::string value;
    while (pointer != 0 && value.size() < length) {
        const std::uint32_t number = pageOf(pointer);
        const std::string_view piece = memoRow(pointer);
        pointer = number32(piece, 0);
        if (piece.size() == 4) { // a chain of such pieces might have no end
            throw Fault("The file is damaged: a long text has an empty piece" + onPage(number) + ".");
        }
        value.append(piece.substr(4));
    }
    return value;
}

std::string JetPages::longValue(std::string_view inRow) {
    constexpr std::uint32_t kHead = 12;
    constexpr std::uint32_t kInRow = 0x80000000;
    constexpr std::uint32_t kOnePiece = 0x40000000;
    constexpr std::uint32_t kLength = 0x3FFFFFFF;
    const std::uint32_t told = number32(inRow, 0);
    const std::uint32_t length = told & kLength;
    if (inRow.size() < kHead || length > kMostValue) {
        throw Fault("The file is damaged: a long text has a length that cannot be.");
    }
    std::string value;
    if ((told & kInRow) != 0) {
        value = inRow.substr(kHead);
    } else if (length == 0) {
        return value;
    } else if ((told & kOnePiece) != 0) {
        value = memoRow(number32(inRow, 4));
    } else {
        value = chained(number32(inRow, 4), length);
    }
    if (value.size() < length) {
        throw Fault("The file is damaged: a long text is not as long as it should be.");
    }
    value.resize(length); // the room that a value is given may be larger than it
    return value;
}

} // namespace benthor::readjet
