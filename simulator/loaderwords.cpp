#include "simulator/loaderwords.h"

namespace benthor::simulator {

namespace {

const QByteArray kLineEnd = "\r\n";

QByteArray memoryLine(std::size_t memory, const QByteArray& fate) {
    return QByteArray("MEMORY ") + static_cast<char>('A' + memory) + ' ' + fate;
}

QByteArray pageHead(FirmwareType type) {
    return "Status check" + kLineEnd + "Loader 4, type " + typeWord(type) + kLineEnd;
}

} // namespace

QByteArray smallBeacon() {
    return "ooooooooooo";
}

QByteArray largeBeacon() {
    return "OOOOOOOOO";
}

QByteArray erasedLine(std::size_t memory) {
    return memoryLine(memory, "Erased");
}

QByteArray programmedLine(std::size_t memory) {
    return memoryLine(memory, "Programmed");
}

QByteArray memoryLines(const Memories& programmed) {
    QByteArray lines;
    for (std::size_t memory = 0; memory < programmed.size(); ++memory) {
        lines += (memory > 0 ? kLineEnd : QByteArray()) + erasedLine(memory);
        if (programmed[memory]) {
            lines += kLineEnd + programmedLine(memory);
        }
    }
    return lines;
}

QByteArray checkLine(FirmwareType type, const QByteArray& check) {
    const QByteArray name = type == FirmwareType::Rb ? "bpcsp2" : "hdckd3";
    return "shell: " + name + " loader 4 check " + check;
}

QByteArray promptPage(FirmwareType type, const Memories& programmed, const QByteArray& check) {
    return pageHead(type) + memoryLines(programmed) + kLineEnd + checkLine(type, check) + kLineEnd +
           "Keys: R, Enter; 1, Refresh; Q, Restart";
}

QByteArray modePage(FirmwareType type) {
    return pageHead(type) + "REPROG MODE" + kLineEnd + "Keys: &, Erase; 1, Refresh; Q, Restart";
}

QByteArray sumLine(std::uint32_t sum) {
    return "received " + QByteArray::number(sum, 16).toUpper().rightJustified(8, '0') + "  Prog y/n";
}

QByteArray eraseQuestion() {
    return "Erase all three? Y/N";
}

QByteArray keptLine() {
    return "Kept";
}

QByteArray restartLine() {
    return "Restart";
}

QByteArray compareLine() {
    return "stage 8:f";
}

} // namespace benthor::simulator
