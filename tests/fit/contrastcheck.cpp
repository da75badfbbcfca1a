#include "tests/fit/contrastcheck.h"

#include "platform/look/contrast.h"

#include <QHash>
#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include <cmath>

namespace benthor::tests {

namespace {

struct PaintedText {
    QString words;
    QRect place;
    QColor ink;
    QColor ground;
    QImage seen; ///< of the place, with the words
};

/// The colour of most of the picture's pixels.
QColor commonest(const QImage& picture) {
    QHash<QRgb, int> counts;
    QRgb most = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (++counts[pixel] > counts.value(most)) {
                most = pixel;
            }
        }
    }
    return QColor(most);
}

/// Paints into a picture, and writes down every text with its colour and with what was there before.
class TextEngine final : public QPaintEngine {
public:
    explicit TextEngine(QImage& picture)
        : QPaintEngine(AllFeatures)
        , picture_(picture) {}

    QList<PaintedText> texts;

    bool begin(QPaintDevice* device) override {
        Q_UNUSED(device)
        return painter_.begin(&picture_);
    }
    bool end() override { return painter_.end(); }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState& now) override {
        const DirtyFlags dirty = now.state();
        transform_ = now.transform();
        opacity_ = now.opacity();
        pen_ = now.pen();
        painter_.setPen(now.pen());
        painter_.setBrush(now.brush());
        painter_.setBrushOrigin(now.brushOrigin());
        painter_.setBackground(now.backgroundBrush());
        painter_.setBackgroundMode(now.backgroundMode());
        painter_.setOpacity(opacity_);
        painter_.setCompositionMode(now.compositionMode());
        painter_.setRenderHints(painter_.renderHints(), false);
        painter_.setRenderHints(now.renderHints(), true);
        if (dirty.testFlag(DirtyClipRegion)) {
            QPainterPath path;
            path.addRegion(now.clipRegion());
            clip(path, now.clipOperation());
        }
        if (dirty.testFlag(DirtyClipPath)) {
            clip(now.clipPath(), now.clipOperation());
        }
        if (dirty.testFlag(DirtyClipEnabled)) {
            clipped_ = now.isClipEnabled();
        }
    }

    void drawPath(const QPainterPath& path) override {
        prepare();
        painter_.drawPath(path);
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        prepare();
        switch (mode) {
        case PolylineMode:
            painter_.drawPolyline(points, count);
            return;
        case ConvexMode:
            painter_.drawConvexPolygon(points, count);
            return;
        default:
            painter_.drawPolygon(points, count, mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        }
    }
    void drawRects(const QRectF* rects, int count) override {
        prepare();
        painter_.drawRects(rects, count);
    }
    void drawLines(const QLineF* lines, int count) override {
        prepare();
        painter_.drawLines(lines, count);
    }
    void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& part) override {
        prepare();
        painter_.drawPixmap(place, pixmap, part);
    }
    void drawImage(const QRectF& place, const QImage& image, const QRectF& part,
                   Qt::ImageConversionFlags flags) override {
        prepare();
        painter_.drawImage(place, image, part, flags);
    }
    void drawTiledPixmap(const QRectF& place, const QPixmap& pixmap, const QPointF& from) override {
        prepare();
        painter_.drawTiledPixmap(place, pixmap, from);
    }
    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        prepare();
        const QRectF box(at.x(), at.y() - item.ascent(), item.width(), item.ascent() + item.descent());
        const QRect whole = transform_.mapRect(box).toAlignedRect();
        QRect place = whole & picture_.rect();
        if (painter_.hasClipping()) {
            place &= transform_.mapRect(painter_.clipBoundingRect()).toAlignedRect();
        }
        QColor ground;
        if (!place.isEmpty()) {
            ground = commonest(picture_.copy(place));
        }
        painter_.setFont(item.font());
        painter_.drawText(at, item.text());
        constexpr int kSeen = 3; // of a text of which less is seen somebody else answers for the rest
        if (item.text().trimmed().isEmpty() || place.width() * kSeen < whole.width() ||
            place.height() * kSeen < whole.height()) {
            return;
        }
        const double share = pen_.color().alphaF() * opacity_;
        texts += {item.text(), place, look::mixed(ground, pen_.color(), share), ground, picture_.copy(place)};
    }

private:
    void clip(const QPainterPath& path, Qt::ClipOperation operation) {
        const QPainterPath placed = transform_.map(path);
        clipped_ = operation != Qt::NoClip;
        clip_ = operation == Qt::IntersectClip && hasClip_ ? clip_.intersected(placed) : placed;
        hasClip_ = clipped_;
    }

    /// The clipping of the widget that paints is none of the painter's.
    void prepare() {
        painter_.resetTransform();
        painter_.setClipping(false);
        if (!systemClip().isEmpty()) {
            painter_.setClipRegion(systemClip());
        }
        if (clipped_ && hasClip_) {
            painter_.setClipPath(clip_, systemClip().isEmpty() ? Qt::ReplaceClip : Qt::IntersectClip);
        }
        painter_.setTransform(transform_);
    }

    QImage& picture_;
    QPainter painter_;
    QTransform transform_;
    QPen pen_;
    double opacity_ = 1;
    QPainterPath clip_;
    bool clipped_ = false;
    bool hasClip_ = false;
};

class TextDevice final : public QPaintDevice {
public:
    explicit TextDevice(const QSize& size)
        : picture(size, QImage::Format_RGB32)
        , engine(picture) {
        picture.fill(Qt::white);
    }
    QPaintEngine* paintEngine() const override { return &engine; }

    QImage picture;
    mutable TextEngine engine;

protected:
    int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
        case PdmWidth:
            return picture.width();
        case PdmHeight:
            return picture.height();
        case PdmDepth:
            return picture.depth();
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return 96;
        }
    }
};

/// Whether what was painted later left the words as they were: a tenth of the pixels may be crossed by a
/// line.
bool isStillSeen(const PaintedText& text, const QImage& picture) {
    const QImage now = picture.copy(text.place);
    int changed = 0;
    for (int y = 0; y < now.height(); ++y) {
        for (int x = 0; x < now.width(); ++x) {
            changed += now.pixel(x, y) != text.seen.pixel(x, y) ? 1 : 0;
        }
    }
    return changed * 10 <= now.width() * now.height();
}

} // namespace

QStringList paleTexts(QWidget* window, double least, const QList<QRgb>& exempt) {
    TextDevice device(window->size());
    window->render(&device, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    QStringList faults;
    for (const PaintedText& text : std::as_const(device.engine.texts)) {
        const double ratio = look::contrastRatio(text.ink, text.ground);
        const double best = look::contrastRatio(look::readableOn(text.ground), text.ground);
        if (ratio >= std::min(least, best) - 0.01 || exempt.contains(text.ink.rgb()) ||
            !isStillSeen(text, device.picture)) {
            continue;
        }
        const QString line = QStringLiteral("\"%1\" in %2 on %3: %4 of %5")
                                 .arg(text.words.simplified().left(40), text.ink.name(), text.ground.name())
                                 .arg(ratio, 0, 'f', 2)
                                 .arg(least);
        if (!faults.contains(line)) {
            faults += line;
        }
    }
    return faults;
}

} // namespace benthor::tests
