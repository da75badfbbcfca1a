// Lays a fresh store at the path given: benthor-makestore <path> [--closed]. The build uses it; --closed
// makes one whose guide stays away at the start.

#include "platform/query.h"
#include "store/schema.h"

#include <QFile>

#include <cstdio>
#include <string_view>

int main(int count, char** arguments) {
    const bool closed = count == 3 && std::string_view(arguments[2]) == "--closed";
    if (count != 2 && !closed) {
        std::fputs("usage: benthor-makestore <path> [--closed]\n", stderr);
        return 2;
    }
    try {
        benthor::store::createStore(QFile::decodeName(arguments[1]),
                                    closed ? QStringLiteral("Close") : QStringLiteral("Open"));
        return 0;
    } catch (const benthor::platform::StoreError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
