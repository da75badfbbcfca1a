#include "platform/look/icons.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

// Must stand outside a namespace: the resource of a static library is left out unless it is named.
static void initialiseIcons() {
    Q_INIT_RESOURCE(look);
}

namespace benthor::look {

namespace {

const QString iconFolder = QStringLiteral(":/benthor/icons/");

/// The drawing of icon `name`, empty if there is none. Read once.
const QByteArray& drawing(const QString& name) {
    static const bool initialised = (initialiseIcons(), true);
    Q_UNUSED(initialised)
    static QHash<QString, QByteArray> drawings;
    auto found = drawings.constFind(name);
    if (found == drawings.constEnd()) {
        QFile file(iconFolder + name + QStringLiteral(".svg"));
        found = drawings.insert(name, file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
    return *found;
}

/// `name` in `pixels` device pixels a side, kept in the pixmap cache.
QPixmap rendered(const QString& name, int pixels, const QColor& colour) {
    if (pixels <= 0 || drawing(name).isEmpty()) {
        return {};
    }
    const QString key =
        QStringLiteral("benthor-icon %1 %2 %3").arg(name).arg(pixels).arg(colour.rgba(), 0, 16);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) {
        return pixmap;
    }
    QByteArray coloured = drawing(name);
    coloured.replace("currentColor", colour.name().toLatin1());
    QSvgRenderer renderer(coloured);
    pixmap = QPixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(colour.alphaF());
    renderer.render(&painter, QRectF(0, 0, pixels, pixels));
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

class ThemeIconEngine : public QIconEngine {
public:
    ThemeIconEngine(QString name, const QColor& colour)
        : name_(std::move(name))
        , colour_(colour) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        const int side = std::min(rect.width(), rect.height());
        const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
        const QPoint corner(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2);
        painter->drawPixmap(corner, iconPixmap(name_, side, colourFor(mode, state), dpr));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return rendered(name_, std::min(size.width(), size.height()), colourFor(mode, state));
    }

    QIconEngine* clone() const override { return new ThemeIconEngine(*this); }
    QString key() const override { return QStringLiteral("benthor"); }
    QString iconName() override { return name_; }
    bool isNull() override { return drawing(name_).isEmpty(); }
    QSize actualSize(const QSize& size, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        const int side = std::min(size.width(), size.height());
        return {side, side};
    }

private:
    QColor colourFor(QIcon::Mode mode, QIcon::State state) const {
        const Tokens& token = tokens();
        if (mode == QIcon::Disabled) {
            return mixed(token.surface, token.textquiet, 0.6);
        }
        if (colour_.isValid()) {
            return colour_;
        }
        return state == QIcon::On ? token.ontext : token.text;
    }

    QString name_;
    QColor colour_;
};

} // namespace

QStringList iconNames() {
    static const QStringList theNames = [] {
        initialiseIcons();
        QStringList names;
        for (const QString& file :
             QDir(iconFolder).entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name)) {
            names << file.chopped(4);
        }
        return names;
    }();
    return theNames;
}

QIcon icon(const char* name) {
    return icon(QString::fromLatin1(name));
}

QIcon icon(const QString& name) {
    return icon(name, QColor());
}

QIcon icon(const QString& name, const QColor& colour) {
    return QIcon(new ThemeIconEngine(name, colour));
}

QPixmap iconPixmap(const QString& name, int size, const QColor& colour, qreal dpr) {
    QPixmap pixmap = rendered(name, qRound(size * dpr), colour);
    pixmap.setDevicePixelRatio(dpr);
    return pixmap;
}

QIcon applicationIcon() {
    initialiseIcons();
    return QIcon(QStringLiteral(":/benthor/benthor.svg"));
}

} // namespace benthor::look
