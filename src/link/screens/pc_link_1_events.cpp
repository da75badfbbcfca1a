// What the user and the clock do, handed to the link's logic.

#include "link/commandmenu.h"
#include "link/console.h"
#include "link/directory.h"
#include "link/download.h"
#include "link/logo.h"
#include "link/screens/commandcard.h"
#include "link/screens/commandlist.h"
#include "link/screens/directorycard.h"
#include "link/screens/downloadpanel.h"
#include "link/screens/drawer.h"
#include "link/screens/linkhead.h"
#include "link/screens/pc_link_1.h"
#include "link/screens/pc_link_1_host.h"
#include "link/screens/waitcard.h"
#include "link/supervision.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/commandbutton.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>

namespace benthor::link {

namespace {

constexpr int kShiftBit = 1;
constexpr int kControlBit = 2;

constexpr int kSeriesHint = 1;

int shiftBits(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? kShiftBit : 0) |
           (modifiers & Qt::ControlModifier ? kControlBit : 0);
}

} // namespace

void PC_Link_1::buildTimers() {
    struct Beat {
        const char* name;
        int interval;
        bool enabled;
        std::function<void()> tick;
    };
    const std::vector<Beat> beats{
        {"Timer1", 500, true, [this] { Timer1_tick(); }},
        {"Timer2", 500, true, [this] { link::Timer2_tick(link_, *host_); }},
        {"Timer3", 500, false, [this] { Timer3_tick(); }},
        {"Timer4", 10000, true, [this] { link::Timer4_tick(link_, isVisible()); }},
        {"Timer5", 2000, false, [this] { link::Timer5_tick(link_); }},
        {"Timer6", 1000, false, [this] { takeReadings(link::Timer6_tick(link_)); }},
        {"Timer7", 1000, true, [this] { takeReadings(link::Timer7_tick(link_)); }},
        {"Timer8", 5000, true, [this] { link::Timer8_tick(link_, *host_); }},
    };
    using platform::TickTimer;
    for (const Beat& one : beats) {
        auto* timer =
            new TickTimer(QLatin1String(one.name), one.interval,
                          one.enabled ? TickTimer::Start::Enabled : TickTimer::Start::Disabled, this);
        connect(timer, &TickTimer::tick, this, [this, tick = one.tick] { perform(tick); });
        timers_.insert(timer->objectName(), timer);
    }
}

void PC_Link_1::Timer1_tick() {
    link::Timer1_tick(link_, *host_);
    if (!isUnloaded()) {
        sync();
        emit statusPainted();
    }
}

void PC_Link_1::Timer3_tick() {
    link::Timer3_tick(link_, *host_);
    if (!isUnloaded() && link_.download.TXTWaitVisible) {
        wait_->setShown(true);
        wait_->step(link_.rxbuf.size(), cutWords());
    }
}

void PC_Link_1::onClick(const QAbstractButton* button, const std::function<void()>& work) {
    connect(button, &QAbstractButton::clicked, this, [this, work] { perform(work); });
}

void PC_Link_1::onEdit(const QLineEdit* box, const std::function<void(const QString&)>& work) {
    connect(box, &QLineEdit::textEdited, this,
            [this, work](const QString& text) { perform([&work, &text] { work(text); }); });
}

void PC_Link_1::connectControls() {
    connectButtons();
    connectBoxes();
    connectDirectory();
    connect(head_->swap(), &look::ClickableLabel::clicked, this,
            [this] { perform([this] { Label13_click(); }); });
    connect(head_->menuScreen(), &look::ClickableLabel::clicked, this,
            [this] { perform([this] { Label11_click(); }); });
    connect(commands_, &CommandList::captionClicked, this,
            [this](int index) { perform([this, index] { Label19_click(link_, *host_, index); }); });
    connect(commands_, &CommandList::pictureClicked, this,
            [this](int index) { perform([this, index] { Picture14_click(link_, *host_, index); }); });
    connect(commands_, &CommandList::optionClicked, this, [this](int index) {
        perform([this, index] {
            link_.console.option = index;
            preparecommand(link_);
        });
    });
}

void PC_Link_1::connectButtons() {
    onClick(download_->getSelected(), [this] { cmddownload_click(link_, *host_); });
    onClick(download_->getAll(), [this] { cmddownloadall_click(link_, *host_); });
    onClick(download_->getNew(), [this] { cmddownloadnew_click(link_, *host_); });
    onClick(directory_->refresh(), [this] { cmdstore_click(link_, *host_); });
    onClick(download_->saveToDatabase(), [this] { host_->runImport(); });
    onClick(download_->getDive(), [this] { Command1_click(link_, *host_); });
    onClick(download_->getDives(), [this] { Command9_click(link_, *host_); });
    onClick(download_->storeText(), [this] { Command3_click(link_, *host_); });
    onClick(command_->send(), [this] { Command2_click(link_, *host_); });
    onClick(command_->sendFile(), [this] { Command5_click(link_, *host_); });
    onClick(command_->convertLogo(), [this] { Command8_click(link_, *host_); });
    onClick(command_->open(), [this] { mnuOpen_click(link_, *host_); });
}

void PC_Link_1::connectBoxes() {
    Console& console = link_.console;
    onEdit(head_->port(), [this](const QString& text) { setcomnum(link_, *host_, text); });
    onEdit(download_->series(), [this](const QString& text) { DiveSeriesName_change(text); });
    onEdit(download_->diveNumber(), [this](const QString& text) { setstartdivenum(link_, text); });
    onEdit(command_->valueToSend(), [this](const QString& text) { Text16_change(link_, text); });
    onEdit(command_->data(), [this](const QString& text) { Text9_change(link_, text); });
    onEdit(command_->index(), [&console](const QString& text) { console.Text12.text = text; });
    onEdit(drawer_->command(), [&console](const QString& text) { console.Text3 = text; });
    onEdit(drawer_->prefix(), [&console](const QString& text) { console.Text11 = text; });
    onEdit(drawer_->trailer(), [&console](const QString& text) {
        console.Text10 = QString(text).replace(QStringLiteral("↵"), QLatin1String("\r\n"));
    });
    onEdit(drawer_->reply(), [&console](const QString& text) { console.Text6 = text; });
    connect(drawer_, &Drawer::textToSendEdited, this,
            [this](const QString& text) { perform([this, &text] { link_.console.Text7 = text; }); });
}

void PC_Link_1::connectDirectory() {
    using platform::FlexGrid;
    FlexGrid* Mgrid = directory_->grid();
    connect(Mgrid, &FlexGrid::cellClicked, this, [](int row) { process().servedrow = row; });
    connect(Mgrid, &FlexGrid::headerClicked, this, [] { process().servedrow = 0; });
    connect(Mgrid, &FlexGrid::mouseReleased, this,
            [this](int row, int rowSel, Qt::KeyboardModifiers modifiers) {
                perform([&] { Mgrid_mouseup(link_, row, rowSel, shiftBits(modifiers)); });
            });
    connect(Mgrid, &FlexGrid::keyPressed, this, &PC_Link_1::Mgrid_keydown);
}

/// Space does at the current row what a click does there, with the same modifiers.
void PC_Link_1::Mgrid_keydown(QKeyEvent* event) {
    const platform::FlexGrid* Mgrid = directory_->grid();
    if (event->key() != Qt::Key_Space || Mgrid->row() < 1) {
        return;
    }
    event->accept();
    perform([&] {
        process().servedrow = Mgrid->row();
        Mgrid_mouseup(link_, Mgrid->row(), Mgrid->rowSel(), shiftBits(event->modifiers()));
    });
}

void PC_Link_1::Label13_click() {
    const bool download = windowTitle().contains(QLatin1String("Download"));
    emit swapWanted(download ? QStringLiteral("Command") : QStringLiteral("Dive"));
}

void PC_Link_1::Label11_click() {
    process().linkidle = true;
    emit menuWanted();
}

void PC_Link_1::DiveSeriesName_change(const QString& text) {
    link_.download.DiveSeriesName = text;
    link_.infotext = hint(kSeriesHint);
    host_->hintOnMain(link_.infotext);
}

} // namespace benthor::link
