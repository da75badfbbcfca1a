#include "shell/screens/main_screen.h"

#include "divefiles/importer.h"
#include "divefiles/waitingfiles.h"
#include "link/linkstatus.h"
#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/fold.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/overlaycard.h"
#include "platform/look/widgets/status.h"
#include "platform/look/widgets/toldbutton.h"
#include "platform/look/widgets/wholelabel.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/toldqcolor.h"
#include "session/process.h"
#include "shell/newfolderwatch.h"
#include "shell/screens/neighbours.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace benthor::shell {

using platform::ProgramFolder;

namespace {

template <class T> T* named(T* widget, const char* name) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

/// The estimate that nothing writes; it stays folded away as it was laid out.
QWidget* makeEstimate() {
    auto* fold = new look::Fold(QStringLiteral("Estimate"));
    auto* across = new QHBoxLayout;
    across->addWidget(named(new QProgressBar, "ProgressBar1"), 1);
    across->addWidget(named(new QLabel, "lblcurrentsizes"));
    across->addWidget(named(new QLabel, "lblpercentage"));
    across->addWidget(named(new QLabel, "lblreminutes"));
    across->addWidget(look::makeCaption(QStringLiteral("minutes remaining")));
    fold->body()->addLayout(across);
    return fold;
}

} // namespace

/// The importer's steps on the main screen. The screen may be unloaded at a yield: what follows then touches
/// nothing of it, and the run ends after the file in hand.
class MainScreen::Progress : public divefiles::ImportScreen {
public:
    explicit Progress(MainScreen& screen)
        : screen_(screen) {}

    void runbegins() override {
        screen_.Picture9_->hide();
        screen_.Command4_->setEnabled(false);
        screen_.List1_->clear();
        screen_.stopped_ = false;
        screen_.showProgress(0, 0);
        screen_.Frame2_->show(); // here alone, and hidden in runends
        screen_.lblprogress_->show();
        screen_.QWidget::repaint();
    }
    void nofiles() override { screen_.showCommand4(false, false); }
    void copying(int number, int files) override {
        screen_.lblcopying_->setText(QStringLiteral("Keeping a copy of each: %1 of %2")
                                         .arg(QString::number(number), QString::number(files)));
        screen_.lblcopying_->show();
        files_ = files;
        screen_.showProgress(number - 1, files);
    }
    /// Keys and clicks wait in their queue and ticks are held. Lines wait only where the desktop's event
    /// dispatcher can hold them back, so what they bring must do no harm here.
    void paint() override {
        constexpr int kPause = 30; // milliseconds
        if (screen_.isUnloaded() || (painted_.isValid() && painted_.elapsed() < kPause)) {
            return;
        }
        const platform::TickHold hold;
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::ExcludeSocketNotifiers);
        painted_.start();
    }
    void filelisted(const QString& name) override { screen_.List1_->addItem(name); }
    void totals(int files, qint64 bytes) override {
        screen_.lbltotalfiles_->setText(QString::number(files));
        screen_.lbltotalsizes_->setText(QString::number(bytes));
        screen_.Timer4_->setEnabled(false);
    }
    void repaint() override { screen_.QWidget::repaint(); }
    void filebegins(int number, const QString& text) override {
        screen_.lblcopying_->hide();
        screen_.lblcurrentfile_->setText(QString::number(number));
        screen_.lblprogress_->setText(text);
        screen_.lblprogress_->show();
        screen_.showProgress(files_ + number - 1, files_);
        stored_ = number;
    }
    void yield() override { screen_.yieldEvents(); }
    void stopenabled() override {
        const bool first = !screen_.stopimport_->isEnabled();
        screen_.stopimport_->setEnabled(screen_.isLoaded());
        if (first) {
            screen_.stopimport_->setFocus();
        }
    }
    void message(const QString& text, const QString& below) override {
        if (screen_.isLoaded()) {
            platform::dialogs().message(&screen_, text, platform::BoxKind::Information, {}, below);
        }
    }
    void lastfiledone() override {
        screen_.lblprogress_->clear();
        if (files_ > 0) {
            screen_.showProgress(files_ + stored_, files_);
        }
        if (screen_.isLoaded()) {
            screen_.showWaiting(screen_.readNewFolder()); // while the end message stands, too
        }
    }
    void showdives() override {
        if (screen_.isLoaded()) {
            screen_.showinfopanel(); // the totals have changed
            screen_.showListBehindImport();
        }
    }
    void runbroke() override {
        if (screen_.isLoaded()) {
            screen_.showinfopanel();
            if (screen_.neighbours_.isDiveListOnScreen()) {
                screen_.showListBehindImport();
            }
        }
    }
    void runends() override {
        screen_.lblcopying_->hide();
        screen_.Frame2_->hide();
        screen_.stopimport_->setEnabled(false);
    }

private:
    MainScreen& screen_;
    QElapsedTimer painted_;
    int files_ = 0;
    int stored_ = 0; ///< the file in hand, from 1
};

void MainScreen::buildProgress(QWidget* area) {
    Frame2_ = named(new look::OverlayCard(area), "Frame2");
    QVBoxLayout* down = Frame2_->body();
    down->setSpacing(look::spaceBase);

    auto* head = new QHBoxLayout;
    auto* icon = new look::ClickableLabel;
    icon->setIconName(QStringLiteral("database"), 22);
    icon->setInk(look::Ink::Accent);
    icon->setFocusPolicy(Qt::NoFocus);
    head->addWidget(icon);
    head->addWidget(look::makeHeading(QStringLiteral("Database Update")));
    head->addStretch(1);
    lblcurrentfile_ = named(new QLabel, "lblcurrentfile");
    lblcurrentfile_->setFont(look::big(24));
    head->addWidget(lblcurrentfile_, 0, Qt::AlignBaseline);
    head->addWidget(look::makeCaption(QStringLiteral("of")), 0, Qt::AlignBaseline);
    lbltotalfiles_ = named(look::makeCaption(QString()), "lbltotalfiles");
    head->addWidget(lbltotalfiles_, 0, Qt::AlignBaseline);
    head->addWidget(look::makeCaption(QStringLiteral("files")), 0, Qt::AlignBaseline);
    down->addLayout(head);
    down->addWidget(new look::Rule);

    auto* file = new QHBoxLayout;
    lblprogress_ = named(new look::WholeLabel, "lblprogress");
    file->addWidget(lblprogress_, 1);
    lbltotalsizes_ = named(look::makeCaption(QString()), "lbltotalsizes");
    file->addWidget(lbltotalsizes_);
    file->addWidget(look::makeCaption(QStringLiteral("bytes in all")));
    down->addLayout(file);
    lblcopying_ = named(look::makeCaption(QString()), "lblcopying");
    lblcopying_->hide();
    down->addWidget(lblcopying_);

    importbar_ = named(new QProgressBar, "importbar");
    importbar_->setAccessibleName(QStringLiteral("How far the import is"));
    importbar_->setFormat(QStringLiteral("%p %"));
    down->addWidget(importbar_);
    auto* notice = new look::NoticeBand(QStringLiteral("DO NOT HIT OTHER KEYS OR TERMINATE PROGRAM"));
    named(notice->label(), "Label17");
    down->addWidget(notice);

    auto* foot = new QHBoxLayout;
    foot->addWidget(look::makeCaption(QStringLiteral("stops after the file in hand")));
    foot->addStretch(1);
    stopimport_ = named(new QPushButton(QStringLiteral("stop import")), "stopimport");
    stopimport_->setIcon(look::icon("stop"));
    stopimport_->setToolTip(QStringLiteral("Click to abort importing dives after current one finishes"));
    stopimport_->setEnabled(false);
    connect(stopimport_, &QPushButton::clicked, this, &MainScreen::stopImport);
    foot->addWidget(stopimport_);
    down->addLayout(foot);

    auto* files = new look::Fold(QStringLiteral("Files of this run"));
    List1_ = named(new QListWidget, "List1");
    List1_->setMaximumHeight(look::scaled(120));
    files->body()->addWidget(List1_);
    down->addWidget(files);
    down->addWidget(makeEstimate());
    Frame2_->hide();
}

void MainScreen::stopImport() {
    stopped_ = process().importing;
    import_->keepimporting = false;
}

void MainScreen::showListBehindImport() {
    mnucurrentmain_click();
    neighbours_.scrollDiveListTo(import_->imported);
}

/// Of both passes together: each file counts once when it is kept and once when it is stored.
void MainScreen::showProgress(int done, int files) {
    importbar_->setRange(0, std::max(1, 2 * files));
    importbar_->setValue(done);
}

void MainScreen::Command4_click() {
    const Routine routine(*this);
    Progress progress(*this);
    divefiles::importdives(ProgramFolder::current(), *import_, progress);
    if (isLoaded()) {
        showWaiting(readNewFolder());
    }
}

/// Counts the files that an import takes, and remembers what it passes by.
int MainScreen::readNewFolder() {
    divefiles::WaitingFiles found = divefiles::waitingfiles(ProgramFolder::current());
    for (divefiles::PassedBy& one : found.passedby) {
        one.name = shortenedName(one.name);
    }
    passedby_ = divefiles::passedbytext(found.passedby);
    if (!found.names.contains(import_->unreadable)) {
        import_->unreadable.clear();
    }
    return static_cast<int>(found.names.size());
}

/// The file is kept twice before it goes; the others wait for the next import.
void MainScreen::movetocorrupt_click() {
    const QString name = import_->unreadable;
    if (process().importing || name.isEmpty()) {
        return;
    }
    const platform::FileResult moved = divefiles::movetocorrupt(ProgramFolder::current(), name);
    if (!moved) {
        platform::dialogs().message(
            this,
            QStringLiteral(
                "The file \"%1\" cannot be moved to the folder \"corrupt\". It stays in the folder "
                "\"new\".\n%2")
                .arg(name, moved.error),
            platform::BoxKind::Warning);
    }
    showWaiting(readNewFolder());
}

void MainScreen::showCommand4(bool green, bool enabled) {
    Command4_->setToldBackground(platform::toQColor(green ? platform::kToldGreen : platform::kToldRed));
    Command4_->setEnabled(enabled);
}

/// The words beside the button, whose colour is the tick's, and what no import takes. The blue of the entry,
/// which is the tick's too, says that nothing waits.
void MainScreen::showWaiting(int waiting) {
    stopped_ = stopped_ && waiting > 0;
    waiting_->setText(stopped_ ? stoppedText(waiting) : waitingText(waiting));
    if (waiting > 0) {
        entries_.value(kDatabaseUpdate)->setToldCaptionColour({});
    }
    const QString notice = folderNotice(import_->unreadable, passedby_);
    if (folderNotice_->text() == notice) {
        return;
    }
    const bool blocked = !import_->unreadable.isEmpty();
    folderNotice_->setText(notice);
    look::setInk(folderNotice_, blocked ? look::Ink::Bad : look::Ink::Quiet);
    movetocorrupt_->setVisible(blocked);
    folderRow_->setVisible(!notice.isEmpty());
}

void MainScreen::Timer1_tick() {
    if (process().importing) {
        return;
    }
    const Routine routine(*this);
    if (neighbours_.isCalled()) { // a second copy was started
        bringToFront();
        QApplication::alert(this); // where the desktop keeps windows where they are
    }
    const QString caption = neighbours_.linkStatus().caption();
    const bool mayRead = mayImport(caption, neighbours_.linkStatus().isOnScreen());
    const int found = readNewFolder();
    if (mayRead && startsImport(found, filewatchcount_)) {
        showCommand4(true, true);
        Picture9_->show();
        Timer4_->setEnabled(false);
        selectEntry(kDatabaseUpdate);
        showWaiting(found);
        Command4_click();
        if (!isLoaded()) {
            return;
        }
        if (!neighbours_.isDiveListOnScreen()) {
            showListBehindImport();
        }
    }
    const int waiting = readNewFolder();
    if (waiting == 0) {
        showCommand4(false, false);
        entries_.value(kDatabaseUpdate)->setToldCaptionColour(platform::toQColor(platform::kToldBlue));
        Picture9_->hide();
    } else {
        showCommand4(true, true);
    }
    showWaiting(waiting);
    filewatchcount_ = watchedNext(waiting, filewatchcount_, mayRead);
    process().deviceconnected = neighbours_.linkStatus().caption() == QLatin1String("Connected") ? 1 : 0;
    neighbours_.placeTips(frameGeometry(), isMinimized());
}

} // namespace benthor::shell
