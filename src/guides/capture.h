#pragma once

#include <QString>

class QImage;

namespace benthor::guides {

/// Size of every capture, in pixels.
constexpr int kCaptureWidth = 800;
constexpr int kCaptureHeight = 600;

/// The capture's name: that of the dive's text file with "jpg" for its last three characters.
QString captureName(const QString& divefilename);

/// Saves `picture` as the working bitmap, and that, scaled to 800 by 600, as a JPEG of the best quality. What
/// the image library or the disk reports is returned. Each file is written whole or not at all: a failed step
/// leaves it, and the JPEG behind it, as it was. Without a picture there is no bitmap and no JPEG.
QString saveCapture(const QImage& picture, const QString& bitmapPath, const QString& jpegPath);

} // namespace benthor::guides
