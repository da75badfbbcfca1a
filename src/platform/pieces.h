#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstring>

namespace benthor::platform {

/// Bytes on their way to a file, in whole pieces: each begins where a page of the file does. The system takes
/// twice as long for pieces that begin and end within pages.
class Pieces {
public:
    static constexpr qsizetype kSize = 64 * 1024;

    /// Takes these bytes, and hands every piece that is whole to `send`. Of many bytes all whole pieces go at
    /// once.
    template <class Send> void put(QByteArrayView bytes, const Send& send) {
        if (const qsizetype fits = kSize - size_; bytes.size() >= fits) {
            keep(bytes.first(fits));
            flush(send);
            bytes = bytes.sliced(fits);
            if (const qsizetype whole = bytes.size() / kSize * kSize; whole > 0) {
                send(bytes.first(whole));
                bytes = bytes.sliced(whole);
            }
        }
        keep(bytes);
    }

    /// Hands on what is left.
    template <class Send> void flush(const Send& send) {
        send(QByteArrayView(bytes_).first(std::exchange(size_, 0)));
    }

private:
    void keep(QByteArrayView bytes) {
        if (!bytes.isEmpty()) {
            std::memcpy(bytes_.data() + size_, bytes.data(), static_cast<std::size_t>(bytes.size()));
            size_ += bytes.size();
        }
    }

    QByteArray bytes_{kSize, Qt::Uninitialized};
    qsizetype size_ = 0; ///< of them taken
};

} // namespace benthor::platform
