#include "pages.h"

#include "platform/look/look.h"
#include "platform/look/pictures.h"

#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QSvgRenderer>

namespace benthor::look {

QWidget* iconsPage() {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    int place = 0;
    for (const QString& name : iconNames()) {
        auto* both = new QLabel;
        both->setPixmap(icon(name).pixmap(QSize(24, 24), qApp->devicePixelRatio()));
        auto* small = new QLabel;
        small->setPixmap(icon(name).pixmap(QSize(18, 18), qApp->devicePixelRatio()));
        auto* faint = new QLabel;
        faint->setPixmap(icon(name).pixmap(QSize(18, 18), qApp->devicePixelRatio(), QIcon::Disabled));
        auto* row = new QHBoxLayout;
        row->addWidget(both);
        row->addWidget(small);
        row->addWidget(faint);
        row->addWidget(makeCaption(name), 1);
        grid->addLayout(row, place / 6, place % 6);
        ++place;
    }
    return page;
}

QWidget* picturesPage() {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    const QDir folder(QStringLiteral(BENTHOR_ASSETS "/pictures"));
    int place = 0;
    for (const QString& file : folder.entryList({QStringLiteral("*.svg")})) {
        QSvgRenderer renderer(folder.filePath(file));
        QImage image(576, 400, QImage::Format_RGB32);
        QPainter painter(&image);
        renderer.render(&painter);
        painter.end();
        auto* label = new QLabel;
        label->setPixmap(picturePixmap(image, QSize(288, 200), page->devicePixelRatioF()));
        grid->addWidget(label, place / 3, place % 3);
        ++place;
    }
    auto* own = new QLabel;
    own->setPixmap(applicationIcon().pixmap(QSize(64, 64)));
    grid->addWidget(own, 2, 0);
    return page;
}

} // namespace benthor::look
