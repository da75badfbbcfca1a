#include "logbook/screens/picturetile.h"

#include "platform/filename.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QThreadPool>

namespace benthor::logbook {

namespace {

constexpr QSize kLargest(1280, 960); // in pixels: more than any tile shows
constexpr QSize kSmallestTile(160, 96);

/// The picture no larger than kLargest, the way up that the camera says. Null when it cannot be read, or is
/// no file: a pipe would keep the thread, and with it the process at its end, waiting for ever.
QImage readScaled(const QString& path) {
    if (!platform::isFile(path)) {
        return {};
    }
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > kLargest.width() || size.height() > kLargest.height())) {
        reader.setScaledSize(size.scaled(kLargest, Qt::KeepAspectRatio));
    }
    return reader.read();
}

} // namespace

PictureTile::PictureTile(int index, QWidget* parent)
    : QWidget(parent)
    , Image1_(new look::ClickableLabel)
    , Label5_(new look::ClickableLabel) {
    Image1_->setObjectName(QStringLiteral("Image1(%1)").arg(index));
    Image1_->setAccessibleName(QStringLiteral("Picture %1").arg(index + 1));
    Image1_->setAlignment(Qt::AlignCenter);
    Image1_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    Label5_->setObjectName(QStringLiteral("Label5(%1)").arg(index));
    Label5_->setText(QStringLiteral("Click to load picture"));
    Label5_->setIconName(QStringLiteral("picture"), 20);
    Label5_->setInk(look::Ink::Quiet);
    auto* both = new QGridLayout(this); // the hint lies over the empty picture
    both->setContentsMargins(1, 1, 1, 1);
    both->addWidget(Image1_, 0, 0);
    both->addWidget(Label5_, 0, 0, Qt::AlignCenter);
    away_ = new look::ClickableLabel;
    away_->setObjectName(QStringLiteral("pictureaway(%1)").arg(index));
    away_->setIconName(QStringLiteral("close"), 18);
    away_->setInk(look::Ink::Quiet);
    away_->setAccessibleName(QStringLiteral("Take picture %1 away").arg(index + 1));
    away_->setToolTip(QStringLiteral("Takes the picture away from this dive; its file stays where it is"));
    both->addWidget(away_, 0, 0, Qt::AlignRight | Qt::AlignTop);
    connect(away_, &look::ClickableLabel::clicked, this, &PictureTile::givenUp);
    for (look::ClickableLabel* label : {Image1_, Label5_}) {
        connect(label, &look::ClickableLabel::clicked, this, &PictureTile::clicked);
    }
    setMinimumSize(kSmallestTile);
    showPicture();
}

void PictureTile::setPath(const QString& path) {
    path_ = path;
    picture_ = QImage();
    ++load_;
    loading_ = !path.isEmpty();
    showPicture();
    if (!loading_) {
        return;
    }
    const QPointer<PictureTile> tile(this);
    QThreadPool::globalInstance()->start([tile, path, load = load_] {
        const QImage picture = readScaled(path);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [tile, load, picture] {
                if (tile != nullptr) {
                    tile->take(load, picture);
                }
            },
            Qt::QueuedConnection);
    });
}

void PictureTile::take(int load, const QImage& picture) {
    if (load != load_) {
        return;
    }
    loading_ = false;
    picture_ = picture;
    showPicture();
}

void PictureTile::showPicture() {
    const bool there = hasPicture();
    Label5_->setVisible(!there);
    away_->setVisible(!path_.isEmpty());
    setToolTip(path_.isEmpty()     ? QString()
               : there || loading_ ? path_
                                   : QStringLiteral("This picture cannot be read: ") + path_);
    if (!there) {
        Image1_->setPixmap(QPixmap());
        Image1_->setText(QString());
        return;
    }
    const qreal dpr = devicePixelRatioF();
    const QSize room = contentsRect().adjusted(4, 4, -4, -4).size() * dpr;
    QPixmap pixmap = QPixmap::fromImage(picture_.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    pixmap.setDevicePixelRatio(dpr);
    Image1_->setPixmap(pixmap);
}

void PictureTile::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (hasPicture()) {
        showPicture();
    }
}

void PictureTile::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    const look::Tokens& token = look::tokens();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), look::radius, look::radius);
    painter.fillPath(shape, hasPicture() ? token.surface : token.sunken);
    painter.setPen(QPen(token.line, 1, hasPicture() ? Qt::SolidLine : Qt::DashLine));
    painter.drawPath(shape);
}

} // namespace benthor::logbook
