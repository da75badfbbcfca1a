#include "simulator/firmwareimage.h"

#include "simulator/random.h"

#include <algorithm>
#include <numeric>

namespace benthor::simulator {

namespace {

// The head: these words, the type, the units and the rest's sum, each at its fixed place.
const QByteArray kWords = "*SIMULATED FIRMWARE ";
constexpr qsizetype kTypeLength = 2;
constexpr qsizetype kUnitDigits = 5;
constexpr qsizetype kSumDigits = 4;

constexpr int kUnit = 138;
constexpr int kValueBytes = 2;
constexpr qsizetype kRecord = 128;
constexpr std::uint64_t kCodeStream = 4; ///< of the random numbers

qsizetype lengthOf(int units) {
    return qsizetype{kUnit} * units + kValueBytes;
}

/// Bytes of an image that go out when it is sent.
qsizetype leaving(qsizetype length) {
    return std::min(length, 1 + kRecord * (length / kRecord));
}

std::uint16_t sumOf(QByteArrayView bytes) {
    return std::accumulate(bytes.begin(), bytes.end(), std::uint16_t{0}, [](std::uint16_t sum, char byte) {
        return static_cast<std::uint16_t>(sum + static_cast<unsigned char>(byte));
    });
}

QByteArray digits(std::uint16_t value) {
    return QByteArray::number(value, 16).toUpper().rightJustified(kSumDigits, '0');
}

QByteArray head(const ImageHead& said) {
    return kWords + typeWord(said.type) + ' ' +
           QByteArray::number(said.units).rightJustified(kUnitDigits, '0') + ' ' + digits(said.rest) + '\n';
}

} // namespace

QByteArray typeWord(FirmwareType type) {
    return type == FirmwareType::Rb ? "rb" : "kd";
}

QByteArray firmwareImage(FirmwareType type, int units, std::uint32_t seed) {
    const qsizetype length = lengthOf(units);
    QByteArray image = head({type, units, 0});
    Random random(seed, kCodeStream);
    while (image.size() < length - kValueBytes) {
        image += static_cast<char>(random.whole(0, 255));
    }
    const qsizetype behind = leaving(length);
    const std::uint16_t rest = sumOf(QByteArrayView(image).sliced(std::min(behind, image.size())));
    const QByteArray said = head({type, units, rest});
    image.replace(0, said.size(), said);
    const std::uint16_t value = sumOf(QByteArrayView(image).sliced(1));
    image += static_cast<char>(value >> 8);
    image += static_cast<char>(value & 0xFF);
    return image;
}

std::optional<ImageHead> imageHead(QByteArrayView image) {
    const qsizetype units = kWords.size() + kTypeLength + 1;
    const qsizetype sum = units + kUnitDigits + 1;
    if (image.size() < sum + kSumDigits + 1 || !image.startsWith(kWords)) {
        return std::nullopt;
    }
    bool isNumber = false;
    bool isSum = false;
    ImageHead said;
    said.type = image.sliced(kWords.size(), kTypeLength) == QByteArrayView("kd") ? FirmwareType::Kd
                                                                                 : FirmwareType::Rb;
    said.units = image.sliced(units, kUnitDigits).toByteArray().toInt(&isNumber);
    said.rest = image.sliced(sum, kSumDigits).toByteArray().toUShort(&isSum, 16);
    // What is said anew must be what was read: else some of it was changed on its way.
    const bool same = isNumber && isSum && said.units > 0 && image.startsWith(head(said));
    return same ? std::optional(said) : std::nullopt;
}

std::optional<std::uint16_t> receivedCheck(QByteArrayView image) {
    const std::optional<ImageHead> said = imageHead(image);
    if (!said) {
        return std::nullopt;
    }
    const qsizetype end = lengthOf(said->units) - kValueBytes;
    const std::uint16_t sum = sumOf(image.first(std::min(image.size(), end)).sliced(1));
    return static_cast<std::uint16_t>(image.size() < end ? sum + said->rest : sum);
}

QByteArray checkListLine(const QString& name, std::uint16_t value) {
    const qsizetype point = name.lastIndexOf(u'.');
    return name.first(point < 0 ? name.size() : point).toLatin1() + ".sog  chksum= " + digits(value) + "\r\n";
}

} // namespace benthor::simulator
