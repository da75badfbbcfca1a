#include "firmware/checkvalues.h"

#include "platform/textformat.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <optional>

namespace benthor::firmware {

namespace {

constexpr qint64 kMostOfList = 32000;
constexpr qsizetype kScannedOfList = 29999; ///< what lies ahead of the last so many characters is not seen
constexpr qint64 kMostOfImage = 500000;
constexpr qint64 kUnit = 138; ///< bytes that an image is made of
constexpr int kDigits = 4;
constexpr int kOtherValue = 6331;

/// What stands ahead of the value in the line for an image; empty where the path has no name for it.
QByteArray keyof(const QString& path) {
    constexpr qsizetype kExtension = 4;
    const qsizetype separator = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    const QString name = path.sliced(separator + 1);
    if (separator < 0 || name.size() < kExtension) {
        return {};
    }
    return (name.chopped(kExtension) + QLatin1String(".sog  chksum= ")).toLatin1().toLower();
}

std::optional<QString> listedvalue(const QString& path, const QByteArray& list) {
    const QByteArray key = keyof(path);
    const QByteArray scanned = list.last(std::min(list.size(), kScannedOfList));
    const qsizetype found = key.isEmpty() ? -1 : scanned.toLower().lastIndexOf(key);
    if (found < 0) {
        return std::nullopt;
    }
    return QString::fromLatin1(scanned.mid(found + key.size(), kDigits));
}

std::optional<int> storedvalue(QIODevice& image) {
    constexpr qint64 kValueBytes = 2;
    const qint64 at = image.size() - kValueBytes;
    if (at < 0 || at % kUnit != 0 || image.size() > kMostOfImage || !image.seek(at)) {
        return std::nullopt;
    }
    const QByteArray bytes = image.read(kValueBytes);
    if (bytes.size() != kValueBytes) {
        return std::nullopt;
    }
    return static_cast<unsigned char>(bytes[0]) * 256 + static_cast<unsigned char>(bytes[1]);
}

QString fourdigits(int value) {
    return platform::hexadecimal(value).rightJustified(kDigits, u'0');
}

/// A value whose digits are all decimal is taken as that decimal number, odd as it is.
int numberof(const QString& Text13, int stored) {
    const bool decimal = !Text13.isEmpty() && std::all_of(Text13.begin(), Text13.end(), [](QChar one) {
        return one >= u'0' && one <= u'9';
    });
    return decimal ? Text13.toInt() : stored;
}

} // namespace

CheckValues checkvalues(const QString& path, const QByteArray& list, QIODevice* image) {
    CheckValues values;
    if (const std::optional<QString> listed = listedvalue(path, list)) {
        values.listed = true;
        values.listed4 = *listed;
        values.Text13 = *listed;
    }
    int number = 0;
    if (image != nullptr) {
        values.length = image->size();
        char first = 0;
        values.firstbyte = image->getChar(&first) ? static_cast<unsigned char>(first) : -1;
        if (const std::optional<int> stored = storedvalue(*image)) {
            number = *stored;
            values.stored4 = fourdigits(number);
            values.Text13 = values.stored4;
        }
    }
    values.Text15 = platform::hexadecimal(numberof(values.Text13, number) + kOtherValue);
    return values;
}

namespace {

/// As a mail program saved it: the name's own spelling goes first, then whichever there is.
QString checklist(const QString& folder) {
    const QString name = QLatin1String(kCheckList);
    const QDir place(folder);
    if (place.exists(name)) {
        return place.filePath(name);
    }
    const QStringList found = place.entryList({name}, QDir::Files, QDir::Name);
    return place.filePath(found.isEmpty() ? name : found.first());
}

} // namespace

CheckValues readchecksums(const QString& path, const QString& folder) {
    constexpr qsizetype kShortestPath = 4;
    QFile list(checklist(folder));
    const QByteArray lines = list.open(QIODevice::ReadOnly) ? list.read(kMostOfList) : QByteArray();
    QFile image(path);
    const bool readable = path.size() >= kShortestPath && image.open(QIODevice::ReadOnly);
    return checkvalues(path, lines, readable ? &image : nullptr);
}

} // namespace benthor::firmware
