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

FaultFrame::FaultFrame(const QString& textName, const QString& closeName, QWidget* parent)
    : QFrame(parent)
    , m_title(new QLabel(this))
    , m_text(new QLabel(this))
    , m_close(new QPushButton(icon("close"), tr("Close"), this)) {
    m_text->setObjectName(textName);
    m_close->setObjectName(closeName);
    m_title->setFont(strong(body()));
    m_title->setTextFormat(Qt::PlainText);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(spaceWide + scaled(signSize) + spaceBase, spaceSmall, spaceSmall, spaceSmall);
    layout->setHorizontalSpacing(spaceWide);
    layout->setVerticalSpacing(2);
    layout->addWidget(m_title, 0, 0);
    layout->addWidget(m_text, 1, 0);
    layout->addWidget(m_close, 0, 1, 2, 1, Qt::AlignVCenter);
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
