// Feeds the profile decoder with whatever libFuzzer makes up. The first byte chooses the unit and where the
// reading is told to stop; the rest is the file.

#include "tests/profile/profileinvariants.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace benthor::profile;
    if (size == 0) {
        return 0;
    }
    const unsigned choice = data[0];
    const QByteArrayView bytes(data + 1, static_cast<qsizetype>(size - 1));
    unsigned calls = 0;
    const unsigned limit = choice / 2 * 8; // 0: never
    const DiveProfile profile =
        decodeProfile(bytes, choice % 2 != 0, {.yield = [&] { return limit == 0 || ++calls < limit; }});
    const QString broken = ProfileInvariants::broken(profile, bytes);
    if (!broken.isEmpty()) {
        std::fputs(qPrintable(broken + '\n'), stderr);
        std::abort();
    }
    return 0;
}
