#pragma once

#include "platform/files.h"
#include "store/jet/readjet.h"
#include "tests/store/jet/framewriter.h"
#include "tests/store/jet/madejet.h"

#include <QTemporaryDir>

namespace benthor::tests {

/// What stands for a Jet file where a reader of a test gives its rows.
inline QByteArray jetHead() {
    return QByteArray("\0\1\0\0", 4) + "Standard Jet DB" + QByteArray(3000, 'x');
}

/// Stands in for the program that reads Jet files, for as long as it lives: gives a store of so many dives
/// whatever it is asked for.
class MadeReader {
public:
    explicit MadeReader(int dives) {
        install(streamOf(madeStore(dives)), "exec cat \"$(dirname \"$0\")/frames\"\n");
    }
    /// One that says what is wrong with every file.
    explicit MadeReader(const char* fault) {
        install(FrameWriter('F').text(fault).frame(), "cat \"$(dirname \"$0\")/frames\"\nexit 1\n");
    }
    ~MadeReader() { store::setjetreader({}); }
    MadeReader(const MadeReader&) = delete;
    MadeReader& operator=(const MadeReader&) = delete;

    /// From now on it says nothing behind the head of the stream.
    void stall() { install(frames_, "head -c 40 \"$(dirname \"$0\")/frames\"\nexec sleep 60\n"); }

    /// The stream of a sound store.
    static std::string streamOf(const std::vector<MadeTable>& tables) {
        FrameWriter head('J');
        head.number(store::pipe::kVersion).number(static_cast<std::uint16_t>(tables.size()));
        std::string rows;
        for (const MadeTable& table : tables) {
            head.name(table.name)
                .number(static_cast<std::uint64_t>(table.rows.size()))
                .number(static_cast<std::uint16_t>(table.fields.size()));
            for (const JetField& field : table.fields) {
                head.number(static_cast<std::uint8_t>(field.kind)).number(field.size).name(field.name);
            }
            for (const MadeRow& row : table.rows) {
                FrameWriter made('R');
                for (const MadeValue& value : row) {
                    value ? made.value(*value) : made.null();
                }
                rows += made.frame();
            }
            rows += FrameWriter('E').number(static_cast<std::uint64_t>(table.rows.size())).frame();
        }
        return head.number(std::uint16_t{0}).frame() + rows + FrameWriter('Z').frame();
    }

private:
    void install(const std::string& frames, const QByteArray& script) {
        frames_ = frames;
        const QString program = folder_.filePath(QStringLiteral("reader"));
        if (!platform::writeFileWhole(folder_.filePath(QStringLiteral("frames")), frames) ||
            !platform::writeFileWhole(program, "#!/bin/sh\n" + script) ||
            !QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
            qFatal("the reader cannot be made");
        }
        store::setjetreader(program);
    }

    QTemporaryDir folder_;
    std::string frames_;
};

} // namespace benthor::tests
