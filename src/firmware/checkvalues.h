#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

namespace benthor::firmware {

inline constexpr auto kStockImage = "bpcsp2shchk.sog"; ///< default, and for a device of the type "rb"
inline constexpr auto kStockImageKd = "hdckd3chk.sog"; ///< for a device of the type "kd"
inline constexpr auto kCheckList = "chklst.txt";

/// What is known of the value that a device has to report once it holds an image. Texts are hexadecimal,
/// upper case, four digits.
struct CheckValues {
    QString Text13;      ///< value expected; empty: none is known
    QString Text15;      ///< the other value that is as good: that number plus 6331, without leading zeros
    bool listed = false; ///< the list names the image
    QString listed4;     ///< what the list says; empty: nothing
    QString stored4;     ///< what the image's last two bytes say; empty where they hold no value
    qint64 length = -1;  ///< of the image, in bytes; -1: it can't be read
    int firstbyte = -1;  ///< of the image; -1: it has none
    bool operator==(const CheckValues&) const = default;
};

/// From the list's text and the image, null where that can't be read. The name is what follows the last "/"
/// or
/// "\" of `path`, its last four characters replaced by ".sog"; a path without a separator has no name and is
/// not in the list. The last line for a name wins; case is ignored. The image holds a value where its length
/// less two is a multiple of 138, and that one goes before the list's.
CheckValues checkvalues(const QString& path, const QByteArray& list, QIODevice* image);

/// The same with the files read: the list `folder`/chklst.txt, its name in any case, of which at most 32000
/// bytes count, and the image `path`, at most 500000 bytes long to hold a value. A file that is missing or
/// can't be read holds nothing; nothing is an error.
CheckValues readchecksums(const QString& path, const QString& folder);

} // namespace benthor::firmware
