// Feeds the reader of the pipe with whatever libFuzzer makes up. The first byte chooses the size of the
// pieces.

#include "store/jet/frames.h"
#include "store/jet/utf8.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace benthor::store;
    if (size == 0) {
        return 0;
    }
    const std::size_t piece = data[0] + std::size_t{1};
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    FrameStream stream;
    try {
        for (std::size_t at = 0; at < bytes.size(); at += piece) {
            stream.add(bytes.substr(at, piece));
            for (auto event = stream.next(); event != FrameStream::Event::NeedsMore; event = stream.next()) {
                for (const JetTable& table : stream.head().tables) {
                    if (table.fields.empty() || !isUtf8(table.name)) {
                        std::abort();
                    }
                }
            }
        }
    } catch (const benthor::platform::StoreError& error) {
        if (error.text().isEmpty()) {
            std::abort();
        }
    }
    return 0;
}
