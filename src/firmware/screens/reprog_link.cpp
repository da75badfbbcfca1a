#include "firmware/screens/reprog_link.h"

#include "firmware/guidance.h"
#include "firmware/screens/advancedcard.h"
#include "firmware/screens/imagecard.h"
#include "firmware/screens/keyrow.h"
#include "firmware/screens/progresscard.h"
#include "firmware/screens/reprog_link_host.h"
#include "firmware/screens/stepspath.h"
#include "firmware/session.h"
#include "link/screens/rawtext.h"
#include "link/screens/showing.h"
#include "platform/look/widgets/columnarea.h"
#include "platform/programfolder.h"
#include "platform/screen/ticktimer.h"

#include <QAction>
#include <QCheckBox>
#include <QKeyEvent>

namespace benthor::firmware {

using link::showEnabled;
using link::showText;
using link::showVisible;
using platform::ProgramFolder;

namespace {

constexpr int kTick = 500;

} // namespace

ReProg_Link::ReProg_Link(FirmwareNeighbours& neighbours, const link::LinkLines& lines)
    : Screen(QStringLiteral("ReProg_Link"))
    , neighbours_(neighbours)
    , host_(std::make_unique<Host>(*this, lines)) {
    setWindowTitle(QStringLiteral("KD Reprogramming Link"));
    buildMenus();
    buildBody();
    connectControls();
    Timer1_ =
        new platform::TickTimer(QStringLiteral("Timer1"), kTick, platform::TickTimer::Start::Enabled, this);
    connect(Timer1_, &platform::TickTimer::tick, this, &ReProg_Link::Timer1_tick);
}

ReProg_Link::~ReProg_Link() = default;

void ReProg_Link::loading() {
    state_.lastimage = neighbours_.lastImage();
    openreprog(state_, *host_, ProgramFolder::current().root(), neighbours_.takeGivenImage());
    if (!isUnloaded()) {
        sync();
    }
}

void ReProg_Link::unloading() {
    closereprog(state_, *host_);
    neighbours_.setLastImage(state_.lastimage);
    if (state_.rehearsal) {
        neighbours_.stopRehearsal();
    }
}

void ReProg_Link::Timer1_tick() {
    perform([this] {
        firmware::Timer1_tick(state_, *host_);
        syncFiles();
    });
}

/// The list of images follows the folder: a file saved from a mail shows up by itself.
void ReProg_Link::syncFiles() {
    image_->setFiles(ProgramFolder::current().listFiles(QStringLiteral("Reprog"), QStringLiteral("*.sog")));
}

void ReProg_Link::fieldEdited(const QString& field, const QString& text) {
    SendFields& fields = state_.fields;
    for (const auto& [name, value] :
         {std::pair{"Text3", &fields.Text3}, std::pair{"Text11", &fields.Text11},
          std::pair{"Text9", &fields.Text9}, std::pair{"Text10", &fields.Text10},
          std::pair{"Text8", &fields.Text8}, std::pair{"Text12", &fields.Text12}}) {
        if (field == QLatin1String(name)) {
            *value = text;
        }
    }
}

void ReProg_Link::fileTaken(const QString& name) {
    perform([this, &name] {
        state_.Text2 = name;
        chooseimage(state_, ProgramFolder::current().path(u"Reprog", name));
    });
}

void ReProg_Link::openImage(const QString& path) {
    perform([this, &path] { chooseimage(state_, path); });
}

void ReProg_Link::mnuAdvanced_click() {
    perform([this] { state_.advanced = mnuAdvanced_->isChecked(); });
}

void ReProg_Link::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && state_.advanced) {
        perform([this] { state_.advanced = false; });
        return;
    }
    Screen::keyPressEvent(event);
}

void ReProg_Link::sync() {
    const bool open = host_->MSComm1().PortOpen();
    const NextStep next = nextstep(state_, open, open ? QString() : host_->portHint());
    for (QWidget* part : {static_cast<QWidget*>(image_), static_cast<QWidget*>(keys_),
                          static_cast<QWidget*>(advanced_), static_cast<QWidget*>(Check1_)}) {
        showEnabled(part, !state_.sending && state_.awaited.isEmpty());
    }
    Timer1_->setEnabled(state_.Timer1 && isLoaded());
    path_->sync(state_.Label4, lampreasons(state_, open));
    image_->sync(state_);
    progress_->sync(state_, next);
    keys_->sync(state_, next.key);
    advanced_->sync(state_);
    showVisible(advancedArea_, state_.advanced);
    Text4_->follow(state_.Text4);
    showText(length_, QStringLiteral("%1 characters").arg(state_.Text4.size()));
    if (Check1_->isChecked() != state_.baud9600) {
        Check1_->setChecked(state_.baud9600);
    }
    mnuAdvanced_->setChecked(state_.advanced);
    mnuAutoRefresh_->setChecked(state_.autorefresh);
    mnuRehearse_->setChecked(state_.rehearsal);
    showVisible(banner_, state_.rehearsal);
    if (state_.rehearsal) {
        neighbours_.rehearsalReports(state_.check.Text13.toLatin1());
    }
    const QString title = QStringLiteral("KD Reprogramming Link");
    setWindowTitle(state_.rehearsal ? QStringLiteral("REHEARSAL - ") + title : title);
}

} // namespace benthor::firmware
