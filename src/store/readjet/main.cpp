// benthor-readjet <file>: reads the tables of a Jet file and writes them to its standard output, as
// store/jet/pipe.h says. It reads with a library that trusts what it is given, so it is a program of its own,
// with limits on all that it could do: a fault of the library ends it, and nothing else.

#include "store/readjet/jettables.h"
#include "store/readjet/limits.h"

#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

using namespace benthor;
using namespace benthor::readjet;
namespace pipe = benthor::store::pipe;

/// Where the frames go. The library prints words of its own to the standard output: they are turned aside.
std::FILE* framesOut() {
    static std::FILE* const out = [] {
        std::FILE* const opened = fdopen(dup(STDOUT_FILENO), "wb");
        return opened != nullptr && dup2(STDERR_FILENO, STDOUT_FILENO) >= 0 ? opened : nullptr;
    }();
    return out;
}

class Frame {
public:
    explicit Frame(char mark)
        : mark_(mark) {}

    template <class Number> Frame& number(Number value) {
        for (std::size_t i = 0; i < sizeof(Number); ++i) {
            body_ += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i) & 0xFF);
        }
        return *this;
    }
    Frame& bytes(std::string_view text) {
        body_ += text;
        return *this;
    }
    Frame& name(std::string_view text) { return number(static_cast<std::uint16_t>(text.size())).bytes(text); }
    void write() const {
        std::string head(1, mark_);
        for (std::size_t i = 0; i < sizeof(std::uint32_t); ++i) {
            head += static_cast<char>(body_.size() >> (8 * i) & 0xFF);
        }
        // Nobody listens any more: there is nobody to tell.
        if (std::fwrite(head.data(), 1, head.size(), framesOut()) != head.size() ||
            std::fwrite(body_.data(), 1, body_.size(), framesOut()) != body_.size()) {
            std::exit(EXIT_FAILURE);
        }
    }

private:
    char mark_;
    std::string body_;
};

void writeHead(const JetTables& jet) {
    Frame head(pipe::kHead);
    head.number(pipe::kVersion).number(static_cast<std::uint16_t>(jet.tables().size()));
    for (const Table& table : jet.tables()) {
        head.name(table.name)
            .number(std::uint64_t{table.rows})
            .number(static_cast<std::uint16_t>(table.columns.size()));
        for (const Column& column : table.columns) {
            head.number(static_cast<std::uint8_t>(column.kind)).number(column.size).name(column.name);
        }
    }
    head.number(static_cast<std::uint16_t>(jet.elsewhere().size()));
    for (const std::string& name : jet.elsewhere()) {
        head.name(name);
    }
    head.write();
}

void writeRow(const std::vector<JetTables::Value>& row) {
    Frame frame(pipe::kRow);
    for (const JetTables::Value& value : row) {
        frame.number(value ? static_cast<std::uint32_t>(value->size()) : pipe::kNull);
        frame.bytes(value ? std::string_view(*value) : std::string_view());
    }
    frame.write();
}

void writeFile(const std::string& path) {
    JetTables jet(path);
    writeHead(jet);
    for (const Table& table : jet.tables()) {
        const std::uint64_t rows = jet.readRows(table, writeRow);
        Frame(pipe::kTableEnd).number(rows).write();
    }
    Frame(pipe::kEnd).write();
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: benthor-readjet <file>\n", stderr);
        return 2;
    }
    if (framesOut() == nullptr) {
        return EXIT_FAILURE;
    }
    clearenv(); // the library takes letters from it
    if (!limitMyself()) {
        Frame(pipe::kFault).bytes("The program that reads Jet files could not be limited.").write();
        std::fflush(framesOut());
        return EXIT_FAILURE;
    }
    try {
        writeFile(arguments[1]);
    } catch (const Fault& fault) {
        Frame(pipe::kFault).bytes(std::string_view(fault.what()).substr(0, pipe::kMostFault)).write();
        std::fflush(framesOut());
        return EXIT_FAILURE;
    }
    return std::fflush(framesOut()) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
