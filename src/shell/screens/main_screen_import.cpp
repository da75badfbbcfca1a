#include "shell/screens/main_screen.h"

#include "divefiles/importer.h"
#include "divefiles/waitingfiles.h"
#include "link/linkstatus.h"
#include "logbook/acts.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/overlaycard.h"
#include "platform/look/widgets/toldbutton.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/toldqcolor.h"
#include "session/process.h"
#include "shell/newfolderwatch.h"
#include "shell/screens/neighbours.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>

namespace benthor::shell {

using platform::ProgramFolder;

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
        look::announce(&screen_,
                       QStringLiteral("The import has ended: %1 of %2 files").arg(stored_).arg(files_));
    }

private:
    MainScreen& screen_;
    QElapsedTimer painted_;
    int files_ = 0;
    int stored_ = 0; ///< the file in hand, from 1
};

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
    // A file that an undo owes to the folder belongs to what waits there.
    logbook::tidyacts(process().database, ProgramFolder::current());
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
