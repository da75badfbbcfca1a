#include "platform/look/widgets/faultframe.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

namespace benthor::look {

namespace {

constexpr int signSize = 24;

} // namespace

FaultFrame::FaultFrame(QLabel* text, const QString& closeName, QWidget* parent)
    : QFrame(parent)
    , title_(new QLabel(this))
    , text_(text)
    , close_(new QPushButton(icon("close"), tr("Close"), this)) {
    close_->setObjectName(closeName);
    title_->setFont(strong(body()));
    title_->setTextFormat(Qt::PlainText);
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(spaceWide + scaled(signSize) + spaceBase, spaceSmall, spaceSmall, spaceSmall);
    layout->setHorizontalSpacing(spaceWide);
    layout->setVerticalSpacing(2);
    layout->addWidget(title_, 0, 0);
    layout->addWidget(text_, 1, 0);
    layout->addWidget(close_, 0, 1, 2, 1, Qt::AlignVCenter);
    layout->setColumnStretch(0, 1);
}

void FaultFrame::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    drawPanel(&painter, rect(), tokens().surface, tokens().bad);
    const int side = scaled(signSize);
    drawIcon(&painter, QStringLiteral("warning"), QRect(spaceWide, 0, side, height()), side, tokens().bad);
}

} // namespace benthor::look
