#include "platform/look/pictures.h"

#include <QPainter>
#include <QPainterPath>

namespace benthor::look {

namespace {

/// White becomes a little darker than the dark theme's surface, black nearly white.
QRgb turned(QRgb pixel) {
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    QColor(pixel).getHslF(&hue, &saturation, &lightness);
    if (saturation < 0.02F) { // greys take the tint of the theme's surfaces
        hue = 0.58F;
        saturation = 0.3F;
    }
    return QColor::fromHslF(hue, saturation, 0.09F + (1.0F - lightness) * 0.85F).rgb();
}

} // namespace

QImage themedPicture(const QImage& picture, Theme theme) {
    if (theme == Theme::Light || picture.isNull()) {
        return picture;
    }
    QImage result = picture.convertToFormat(QImage::Format_RGB32);
    // Drawings are large even areas: one reckoning serves a whole run of pixels.
    QRgb last = 0;
    QRgb lastTurned = turned(last);
    for (int y = 0; y < result.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const QRgb pixel = line[x] & RGB_MASK;
            if (pixel != last) {
                last = pixel;
                lastTurned = turned(pixel);
            }
            line[x] = lastTurned;
        }
    }
    return result;
}

QPixmap picturePixmap(const QImage& picture, const QSize& size, qreal dpr) {
    if (picture.isNull() || size.isEmpty()) {
        return {};
    }
    const QSize fitted = picture.size().scaled(size * dpr, Qt::KeepAspectRatio);
    const QImage drawn =
        themedPicture(picture, theme()).scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPixmap result(fitted);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(result.rect()), radius * dpr, radius * dpr);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QBrush(drawn));
    painter.drawPath(shape);
    painter.end();
    result.setDevicePixelRatio(dpr);
    return result;
}

} // namespace benthor::look
