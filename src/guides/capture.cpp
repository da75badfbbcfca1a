#include "guides/capture.h"

#include "platform/files.h"

#include <FreeImage.h>
#include <QBuffer>
#include <QFile>
#include <QImage>

#include <memory>

namespace benthor::guides {

namespace {

struct Unload {
    void operator()(FIBITMAP* image) const { FreeImage_Unload(image); }
};
using Image = std::unique_ptr<FIBITMAP, Unload>;

struct CloseMemory {
    void operator()(FIMEMORY* memory) const { FreeImage_CloseMemory(memory); }
};
using Memory = std::unique_ptr<FIMEMORY, CloseMemory>;

/// What the library has reported since it was emptied. The library calls one function for the process.
QString& reported() {
    static QString words;
    return words;
}

void report(FREE_IMAGE_FORMAT, const char* words) {
    reported() = QString::fromLocal8Bit(words);
}

QByteArray bitmapOf(const QImage& picture) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    picture.convertToFormat(QImage::Format_RGB888).save(&buffer, "BMP");
    return buffer.data();
}

} // namespace

QString captureName(const QString& divefilename) {
    constexpr qsizetype kEnding = 3;
    return divefilename.left(std::max<qsizetype>(0, divefilename.size() - kEnding)) + QLatin1String("jpg");
}

QString saveCapture(const QImage& picture, const QString& bitmapPath, const QString& jpegPath) {
    reported().clear();
    FreeImage_SetOutputMessage(report);
    if (picture.isNull()) {
        // A bitmap of an earlier capture must not pass for this one.
        QFile::remove(bitmapPath);
    } else if (const platform::FileResult written = platform::writeFileWhole(bitmapPath, bitmapOf(picture));
               !written) {
        return written.error;
    }
    const Image screen(FreeImage_Load(FIF_BMP, QFile::encodeName(bitmapPath).constData(), 0));
    if (screen == nullptr) {
        return reported();
    }
    const Image scaled(FreeImage_Rescale(screen.get(), kCaptureWidth, kCaptureHeight, FILTER_BILINEAR));
    if (scaled == nullptr) {
        return reported();
    }
    // The library writes into memory: on a full disk it would have emptied the picture that is there first.
    const Memory jpeg(FreeImage_OpenMemory());
    BYTE* bytes = nullptr;
    DWORD size = 0;
    if (FreeImage_SaveToMemory(FIF_JPEG, scaled.get(), jpeg.get(), JPEG_QUALITYSUPERB) == FALSE ||
        FreeImage_AcquireMemory(jpeg.get(), &bytes, &size) == FALSE) {
        return reported();
    }
    const platform::FileResult written =
        platform::writeFileWhole(jpegPath, QByteArrayView(bytes, static_cast<qsizetype>(size)));
    return written ? reported() : written.error;
}

} // namespace benthor::guides
