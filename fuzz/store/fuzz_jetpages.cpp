// Feeds our own reading of a Jet file's pages, the texts in it too, with whatever libFuzzer makes up.

#include "store/jet/utf8.h"
#include "store/readjet/jetpages.h"
#include "store/readjet/jettext.h"

#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

using namespace benthor;

namespace {

/// A Fault is what is expected; everything else ends the program.
template <class Work> void attempt(Work work) {
    try {
        work();
    } catch (const readjet::Fault&) {
        return;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    for (const auto& text : {readjet::textOfJet4(bytes), readjet::textOfJet3(bytes, 1252)}) {
        if (text && !store::isUtf8(*text)) {
            std::abort();
        }
    }
    const int file = memfd_create("pages", 0); // never on a disk
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    std::string head("\0\1\0\0Standard Jet DB\0\1", 21);
    head.resize(4096);
    std::string whole = head + bytes;
    whole.resize((whole.size() + 3 * 4096 - 1) / 4096 * 4096);
    if (file < 0 || write(file, whole.data(), whole.size()) != static_cast<ssize_t>(whole.size())) {
        std::abort();
    }
    attempt([&] {
        readjet::JetPages pages(path);
        for (std::uint32_t page = 0; page < pages.count() + 1; ++page) {
            attempt([&] { pages.rowsOf(page); });
            for (std::uint32_t slot = 0; slot < 4; ++slot) {
                attempt([&] { pages.placeOf(page, slot); });
                for (const std::uint32_t kind : {0U, 0x40000000U, 0x80000000U}) {
                    std::string stands(12, '\0');
                    stands[0] = 100;
                    stands[3] = static_cast<char>(kind >> 24);
                    stands[4] = static_cast<char>(slot);
                    stands[5] = static_cast<char>(page);
                    attempt([&] { pages.longValue(stands); });
                }
            }
        }
    });
    close(file);
    return 0;
}
