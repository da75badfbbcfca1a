#include "exports/wholewrite.h"

#include "exports/exporterror.h"

#include <QFileDevice>

namespace benthor::exports {

namespace {

[[noreturn]] void fail(const QIODevice& device) {
    throw ExportError(QStringLiteral("The file cannot be written: %1.").arg(device.errorString()));
}

} // namespace

void writeWhole(QIODevice& device, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const qint64 taken = device.write(bytes.data(), bytes.size());
        if (taken <= 0) {
            fail(device);
        }
        bytes = bytes.sliced(taken);
    }
}

void flushWhole(QIODevice& device) {
    auto* const file = qobject_cast<QFileDevice*>(&device);
    if (file != nullptr && !file->flush()) {
        fail(device);
    }
}

} // namespace benthor::exports
