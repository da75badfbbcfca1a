#include "guides/screens/frmsplash.h"

#include "guides/screens/comealong.h"
#include "platform/look/access/access.h"
#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace benthor::guides {

namespace {
constexpr int kShownMilliseconds = 1500;
constexpr int kMarkSize = 96;
} // namespace

frmSplash::frmSplash(bool maintain)
    : Screen(QStringLiteral("frmSplash"))
    , maintain_(maintain)
    , Command1_(new QPushButton(QStringLiteral("FIX DATABASE"))) {
    setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    setWindowTitle(QStringLiteral("Benthor"));

    auto* frame = look::named(new look::Card, "Frame1");
    Frame1_ = frame;
    frame->setCursor(Qt::PointingHandCursor);
    frame->installEventFilter(this);
    frame->setFocusPolicy(Qt::StrongFocus);
    frame->setAccessibleName(QStringLiteral("Go on"));
    look::setReaderRole(frame, QAccessible::Button);
    look::setReaderAction(frame, QAccessibleActionInterface::pressAction(), [this] { handOver(); });
    auto* mark = new QLabel;
    mark->setPixmap(look::applicationIcon().pixmap(QSize(kMarkSize, kMarkSize), devicePixelRatio()));
    lblProductName_ = look::named(new QLabel, "lblProductName");
    lblProductName_->setFont(look::big(32));
    lblVersion_ = look::named(new QLabel, "lblVersion");
    look::setInk(lblVersion_, look::Ink::Quiet);

    QVBoxLayout* column = frame->body();
    column->setSpacing(look::spaceSmall);
    column->addStretch(1);
    column->addWidget(mark, 0, Qt::AlignHCenter);
    column->addSpacing(look::spaceSmall);
    column->addWidget(lblProductName_, 0, Qt::AlignHCenter);
    column->addWidget(lblVersion_, 0, Qt::AlignHCenter);
    column->addStretch(1);
    Command1_->setObjectName(QStringLiteral("Command1"));
    Command1_->setProperty("quiet", true);
    Command1_->setAutoDefault(false);
    Command1_->setFocusPolicy(Qt::TabFocus); // Return is for going on, not for this
    Command1_->setCursor(Qt::ArrowCursor);
    Command1_->setToolTip(QStringLiteral("Puts a backup in the place of a damaged dive store"));
    connect(Command1_, &QPushButton::clicked, this, &frmSplash::Command1_click);
    column->addWidget(Command1_, 0, Qt::AlignHCenter);

    auto* ground = new QWidget;
    auto* around = new QVBoxLayout(ground);
    around->addWidget(frame);
    setContents(ground);

    Timer1_ = new platform::TickTimer(QStringLiteral("Timer1"), kShownMilliseconds,
                                      platform::TickTimer::Start::Enabled, this);
    connect(Timer1_, &platform::TickTimer::tick, this, &frmSplash::handOver);
}

void frmSplash::loading() {
    Frame1_->setFocus();
    lblProductName_->setText(QStringLiteral("Benthor"));
    lblVersion_->setText(QStringLiteral("Version ") + QCoreApplication::applicationVersion());
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

/// However it ends, the start goes on.
void frmSplash::Command1_click() {
    const Routine routine(*this);
    Timer1_->setEnabled(false);
    emit repairBegins();
    restore();
    Timer1_->setEnabled(true);
}

void frmSplash::restore() {
    platform::Dialogs& dialogs = platform::dialogs();
    if (!maintain_) {
        dialogs.message(this,
                        QStringLiteral("Another copy of Benthor, or benthorctl, has the dive store open. "
                                       "Close it first."),
                        platform::BoxKind::Warning);
        return;
    }
    const bool yes = dialogs.confirm(
        this,
        QStringLiteral("Fix Database?\nRestore backup database file to fix database corruption. Note, most "
                       "recent planned dives willbe lost! Backup2.mdb is most recent backup file"),
        QStringLiteral("Restore backup database"));
    if (!yes) {
        return;
    }
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    const QString chosen =
        dialogs.openFile(this, QStringLiteral("Open"), folder.root(), QStringLiteral("*.mdb | *.mdb"));
    const bool older = chosen.endsWith(QLatin1String("mdb")) && store::isjetfile(chosen);
    store::JetCounts counts;
    const store::Restore result = older ? store::restorejet(folder, chosen, counts, comealongprogress(chosen))
                                        : store::restorestore(folder, chosen);
    if (!result.error.isEmpty()) {
        dialogs.message(this, result.error, platform::BoxKind::Warning);
    }
    if (result.done) {
        Command1_->setEnabled(false);
        QString words =
            QStringLiteral("The dive store was restored from %1.").arg(QDir::toNativeSeparators(chosen));
        if (older) {
            words += QStringLiteral("\n\n") + readwithoutfault(counts);
        }
        if (!result.keptAs.isEmpty()) {
            words += QStringLiteral("\n\nThe store of before is kept as %1.")
                         .arg(QDir::toNativeSeparators(folder.path(result.keptAs)));
        }
        dialogs.message(this, words, platform::BoxKind::Information);
    }
}

void frmSplash::handOver() {
    Timer1_->setEnabled(false);
    emit handedOver();
}

} // namespace benthor::guides
