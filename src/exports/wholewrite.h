#pragma once

#include <QByteArrayView>
#include <QIODevice>

namespace benthor::exports {

/// Writes all of `bytes`. ExportError when the device takes less.
void writeWhole(QIODevice& device, QByteArrayView bytes);

/// Hands on what a file of Qt's still holds back. ExportError when it cannot be written.
void flushWhole(QIODevice& device);

} // namespace benthor::exports
