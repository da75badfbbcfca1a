#include "guides/screens/frmsplash.h"

#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/screen/ticktimer.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace benthor::guides {

namespace {
constexpr int kShownMilliseconds = 1500;
constexpr int kMarkSize = 96;
} // namespace

frmSplash::frmSplash()
    : Screen(QStringLiteral("frmSplash")) {
    setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    setWindowTitle(QStringLiteral("Benthor"));

    auto* frame = new look::Card;
    frame->setObjectName(QStringLiteral("Frame1"));
    frame->setCursor(Qt::PointingHandCursor);
    frame->installEventFilter(this);
    auto* mark = new QLabel;
    mark->setPixmap(look::applicationIcon().pixmap(QSize(kMarkSize, kMarkSize), devicePixelRatio()));
    auto* name = new QLabel;
    name->setObjectName(QStringLiteral("lblProductName"));
    name->setFont(look::big(32));
    auto* version = new QLabel;
    version->setObjectName(QStringLiteral("lblVersion"));
    look::setInk(version, look::Ink::Quiet);

    QVBoxLayout* column = frame->body();
    column->setSpacing(look::spaceSmall);
    column->addStretch(1);
    column->addWidget(mark, 0, Qt::AlignHCenter);
    column->addSpacing(look::spaceSmall);
    column->addWidget(name, 0, Qt::AlignHCenter);
    column->addWidget(version, 0, Qt::AlignHCenter);
    column->addStretch(1);

    auto* ground = new QWidget;
    auto* around = new QVBoxLayout(ground);
    around->addWidget(frame);
    setCentralWidget(ground);

    Timer1_ = new platform::TickTimer(QStringLiteral("Timer1"), kShownMilliseconds,
                                      platform::TickTimer::Start::Enabled, this);
    connect(Timer1_, &platform::TickTimer::tick, this, &frmSplash::handOver);
}

void frmSplash::loading() {
    findChild<QLabel*>(QStringLiteral("lblProductName"))->setText(QStringLiteral("Benthor"));
    findChild<QLabel*>(QStringLiteral("lblVersion"))
        ->setText(QStringLiteral("Version ") + QCoreApplication::applicationVersion());
}

bool frmSplash::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        handOver();
        return true;
    }
    return Screen::eventFilter(watched, event);
}

void frmSplash::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Space || event->key() == Qt::Key_Escape) {
        handOver();
    }
}

void frmSplash::handOver() {
    Timer1_->setEnabled(false);
    emit handedOver();
}

} // namespace benthor::guides
