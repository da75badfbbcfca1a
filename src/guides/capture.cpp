#include "guides/capture.h"

#include <FreeImage.h>
#include <QFile>
#include <QImage>

#include <memory>

namespace benthor::guides {

namespace {

struct Unload {
    void operator()(FIBITMAP* image) const { FreeImage_Unload(image); }
};
using Image = std::unique_ptr<FIBITMAP, Unload>;

/// What the library has reported since it was emptied. The library calls one function for the process.
QString& reported() {
    static QString words;
    return words;
}

void report(FREE_IMAGE_FORMAT, const char* words) {
    reported() = QString::fromLocal8Bit(words);
}

} // namespace

QString captureName(const QString& divefilename) {
    constexpr qsizetype kEnding = 3;
    return divefilename.left(std::max<qsizetype>(0, divefilename.size() - kEnding)) + QLatin1String("jpg");
}

QString saveCapture(const QImage& picture, const QString& bitmapPath, const QString& jpegPath) {
    reported().clear();
    FreeImage_SetOutputMessage(report);
    // A bitmap of an earlier capture must not pass for this one.
    QFile::remove(bitmapPath);
    if (!picture.isNull()) {
        picture.convertToFormat(QImage::Format_RGB888).save(bitmapPath, "BMP");
    }
    const Image screen(FreeImage_Load(FIF_BMP, QFile::encodeName(bitmapPath).constData(), 0));
    if (screen == nullptr) {
        return reported();
    }
    const Image scaled(FreeImage_Rescale(screen.get(), kCaptureWidth, kCaptureHeight, FILTER_BILINEAR));
    if (scaled != nullptr) {
        FreeImage_Save(FIF_JPEG, scaled.get(), QFile::encodeName(jpegPath).constData(), JPEG_QUALITYSUPERB);
    }
    return reported();
}

} // namespace benthor::guides
