#include "guides/screens/frmgets.h"

#include "divefiles/importnote.h"
#include "guides/screens/comealong.h"
#include "guides/screens/guidecard.h"
#include "guides/screens/maintaining.h"
#include "guides/screens/manual.h"
#include "logbook/acts.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "session/process.h"
#include "store/backup.h"
#include "store/maintenance.h"
#include "store/units.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace benthor::guides {

using platform::ProgramFolder;
using platform::skipErrors;

namespace {

/// Our picture for a step, in the program folder.
QString pictureOfStep(int step) {
    static const QStringList files{QString(), QStringLiteral("morvakd2.bmp"), QStringLiteral("divelist.bmp"),
                                   QStringLiteral("pclink.bmp")};
    return files.value(step);
}

} // namespace

frmGetS::frmGetS(bool maintain, StoreStart* begun)
    : Screen(QStringLiteral("frmGetS"))
    , maintain_(maintain)
    , begun_(begun) {
    setWindowTitle(QStringLiteral("Benthor - Getting Started"));
    auto* card = new GuideCard;
    buildWords(*card);
    buildFoot(*card);
    setContents(card);
    setMinimumSize(560, 360);
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &frmGetS::unload);
    showStep();
}

void frmGetS::buildWords(GuideCard& card) {
    picture_ = new QLabel;
    card.setPicture(picture_);
    Label4_ = look::makeCaption(QString());
    Label4_->setObjectName(QStringLiteral("Label4"));
    Label2_ = look::makeHeading(QString());
    Label2_->setObjectName(QStringLiteral("Label2"));
    Label2_->setFont(look::big(20));
    Label2_->setWordWrap(true);
    Label1_ = new QLabel;
    Label1_->setObjectName(QStringLiteral("Label1"));
    Label1_->setWordWrap(true);
    card.words()->addStretch(1);
    card.words()->addWidget(Label4_);
    card.words()->addWidget(Label2_);
    card.words()->addSpacing(look::spaceSmall);
    card.words()->addWidget(Label1_);
    card.words()->addStretch(2);
}

void frmGetS::buildFoot(GuideCard& card) {
    Check1_ = new QCheckBox(QStringLiteral("Show this screen at start up"));
    Check1_->setObjectName(QStringLiteral("Check1"));
    connect(Check1_, &QCheckBox::toggled, this, &frmGetS::Check1_toggled);
    auto* Option1 = new look::ClickableLabel;
    Option1->setObjectName(QStringLiteral("Option1"));
    Option1->setIconName(QStringLiteral("refresh"), 16);
    Option1->setInk(look::Ink::Quiet);
    Option1->setAccessibleName(QStringLiteral("Show this step again"));
    Option1->setToolTip(Option1->accessibleName());
    connect(Option1, &look::ClickableLabel::clicked, this, [this] { Command1_click(StepButton::Redraw); });
    const auto button = [this](const char* name, const char* caption, auto act) {
        auto* made = new QPushButton(QLatin1String(caption));
        made->setObjectName(QLatin1String(name));
        connect(made, &QPushButton::clicked, this, act);
        return made;
    };
    previous_ = button("Command1(0)", "Previous", [this] { Command1_click(StepButton::Previous); });
    next_ = button("Command1(1)", "Next", [this] { Command1_click(StepButton::Next); });
    auto* Command2 = button("Command2", "Finish", [this] { Command2_click(); });
    Command2->setToolTip(QStringLiteral("Closes the guide and opens the manual"));
    Command2->setProperty("primary", true);
    next_->setDefault(true);
    card.foot()->addWidget(Check1_);
    card.foot()->addStretch(1);
    card.foot()->addWidget(Option1);
    card.foot()->addSpacing(look::spaceSmall);
    card.foot()->addWidget(previous_);
    card.foot()->addWidget(next_);
    card.foot()->addSpacing(look::spaceSmall);
    card.foot()->addWidget(Command2);
}

/// A store that is missing or cannot be read says nothing about the guide, which then stays; what is wrong is
/// met by the main screen.
void frmGetS::loading() {
    const ProgramFolder& folder = ProgramFolder::current();
    if (maintain_ && !process().firststart) {
        maintainStore();
    }
    QString getstarted;
    skipErrors([&] {
        if (!process().database.isOpen()) {
            process().database.open(folder.path(u"rb.mdb"));
        }
        getstarted = store::readgetstarted(process().database);
    });
    if (store::guideisclosed(getstarted)) {
        if (!process().firststart) {
            process().database.close();
        }
        unload();
        return;
    }
    const QSignalBlocker quiet(Check1_);
    Check1_->setChecked(true);
    next_->setFocus();
}

/// Before anything else touches the store: an older one that comes along, backups, packing, missing fields,
/// the folder of dive texts and what an import left there.
void frmGetS::maintainStore() {
    const ProgramFolder& folder = ProgramFolder::current();
    const auto tell = [this](const QString& text) { platform::dialogs().message(this, text); };
    const bool begun = begun_ != nullptr && begun_->isUnderWay();
    if (!begun) {
        bringolderstore(this);
    }
    const store::Maintenance done = begun ? begun_->end(folder) : maintainbehindwindow(folder);
    if (!done.setAside.isEmpty()) {
        tell(
            QStringLiteral("The dive store is damaged and was not opened: %1\n\nNothing of it is lost: it is "
                           "kept as %2.")
                .arg(done.reason, folder.path(done.setAside)));
    }
    skipErrors([&] { store::addmissingfields(folder.path(u"rb.mdb"), tell); });
    store::makedbtxt(folder);
    divefiles::tidydbtxt(folder, logbook::awayfiles);
}

void frmGetS::showStep() {
    Label2_->setText(stepheading(step_));
    Label1_->setText(steptext(step_));
    Label4_->setText(stepcount(step_));
    GuideCard::showPicture(picture_, pictureOfStep(step_));
}

void frmGetS::Command1_click(StepButton button) {
    step_ = stepafter(step_, button);
    showStep();
}

void frmGetS::Command2_click() {
    const Routine routine(*this);
    openManual(this);
    unload();
}

void frmGetS::Check1_toggled(bool checked) {
    skipErrors(
        [checked] { store::writegetstarted(checked ? QStringLiteral("Open") : QStringLiteral("Close")); });
}

void frmGetS::changeEvent(QEvent* event) {
    Screen::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && picture_ != nullptr) {
        showStep();
    }
}

} // namespace benthor::guides
