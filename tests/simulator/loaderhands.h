#pragma once

#include "simulator/loader.h"

#include <QtTest>

// What a test does with a loader, and what it expects of it in return.

namespace benthor::tests {

using namespace simulator;
using State = Loader::State;

inline const QByteArray kMode = "REPROG MODE";
inline const QByteArray kPrompt = "R, Enter";
inline const QByteArray kOldCheck = "1C4E";

/// What a program puts on the line of a file: the first byte, whole records, the last one filled up.
inline QByteArray records(const QByteArray& file) {
    return file.leftJustified(1 + 128 * (file.size() / 128), '\0', true);
}

inline quint32 sumOf(const QByteArray& bytes) {
    quint32 sum = 0;
    for (const char byte : bytes) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

inline QByteArray toldSum(quint32 sum) {
    return "received " + QByteArray::number(sum, 16).toUpper().rightJustified(8, '0') + "  Prog y/n\r\n";
}

/// What comes in `milliseconds`.
inline QByteArray after(Loader& loader, const QByteArray& bytes, int milliseconds = 200) {
    loader.receive(bytes);
    QByteArray said;
    for (int passed = 0; passed < milliseconds; passed += 20) {
        said += loader.advance(20);
    }
    return said;
}

inline Loader inMode(FirmwareType type = FirmwareType::Rb) {
    Loader loader(type);
    after(loader, "R");
    loader.takeLog();
    return loader;
}

inline QByteArray ownImage() {
    static const QByteArray image = firmwareImage(FirmwareType::Rb, 51, 1);
    return image;
}

/// The check value that an image of ours holds.
inline QByteArray storedCheck(const QByteArray& image) {
    return image.last(2).toHex().toUpper();
}

/// The whole transfer, up to what it tells at its end.
inline QByteArray send(Loader& loader, const QByteArray& file) {
    QByteArray said = after(loader, "&", 0);
    for (qsizetype at = 0; at < records(file).size(); at += 128) {
        said += after(loader, records(file).mid(at, 128), 40);
    }
    return said + after(loader, "&&", Loader::endMilliseconds + 60);
}

/// Up to the verdict, and that it is good.
inline Loader withVerdict(LoaderFaults faults = {}) {
    Loader loader = inMode();
    loader.faults = faults;
    send(loader, ownImage());
    return loader;
}

/// No word of these may stand where it is not meant.
inline void hasNone(const QByteArray& text, std::initializer_list<const char*> words) {
    for (const char* word : words) {
        QVERIFY2(!text.contains(word), word + QByteArray(" in: ") + text);
    }
}

inline QByteArray digitsOf(const QByteArray& text) {
    const qsizetype word = text.lastIndexOf("shell:");
    return word < 0 ? QByteArray() : text.mid(word + 29, 4);
}

inline const QByteArray kProgramming = "MEMORY A Erased\r\nMEMORY A Programmed\r\nMEMORY B Erased\r\n"
                                       "MEMORY B Programmed\r\nMEMORY C Erased\r\nMEMORY C Programmed\r\n";

} // namespace benthor::tests
