#include "logbook/screens/rbdetails.h"

#include "logbook/screens/picturetile.h"
#include "logbook/unsaveddetails.h"
#include "platform/files.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/printing.h"
#include "session/process.h"

#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPrinter>

namespace benthor::logbook {

using platform::dialogs;
using platform::ProgramFolder;
using platform::StoreError;

namespace {

/// Of the values that no list of choices takes, and where a save is for good.
QString besidesOf(const SavedDetails& done) {
    QString word;
    if (!done.refused.isEmpty()) {
        word += QStringLiteral("; with its single quote not kept for choosing again: %1")
                    .arg(done.refused.join(QStringLiteral(", ")));
    }
    if (!done.notTakenBack.isEmpty()) {
        word += QStringLiteral("; this save cannot be taken back: %1").arg(done.notTakenBack);
    }
    return word;
}

QString wordOf(const SavedDetails& done) {
    return QStringLiteral("Saved") + besidesOf(done);
}

void setItems(QComboBox& box, const QStringList& items) {
    const QString text = box.currentText();
    box.clear();
    box.addItems(items);
    box.setEditText(text);
}

} // namespace

void rbdetails::loading() {
    try {
        const DiveDetails details =
            loaddetails(process().database, process().currentdiveid, process().depthunit);
        dive_ = details.dive;
        show(details);
        showPickLists();
        stored_ = edited();
    } catch (const StoreError& error) {
        contents()->setEnabled(false);
        tell(error.text());
    }
}

void rbdetails::unloading() {
    if (!deleted_) {
        takeInHand();
        emit captureWanted();
    }
    keeping();
}

void rbdetails::keeping() {
    saveOrAsk();
}

QString rbdetails::saveQuietly() {
    if (dive_.isEmpty()) {
        return {};
    }
    besides_.clear();
    takeTypedBuddy();
    try {
        const SavedDetails done = savedetails(process().database, dive_, edited());
        noteSaved(done.span);
        besides_ = besidesOf(done);
        if (!besides_.isEmpty()) {
            tell(wordOf(done));
        }
        return {};
    } catch (const StoreError& error) {
        return error.text();
    }
}

bool rbdetails::hasTyped() const {
    return !dive_.isEmpty() && (buddyTyped_ || !(edited() == stored_));
}

void rbdetails::takeStored() {
    try {
        const DiveDetails details = loaddetails(process().database, dive_.diveid, process().depthunit);
        List1_->clear();
        show(details);
        showPickLists();
        buddyTyped_ = false;
        stored_ = edited();
        tell(QString());
    } catch (const StoreError& error) {
        tell(error.text());
    }
}

void rbdetails::closeForDeletion() {
    deleted_ = true;
    dive_ = {}; // a way out that is under way already stores nothing either
    unload();
}

void rbdetails::show(const DiveDetails& details) {
    const DeviceSays& device = details.device;
    const std::array<QString, 10> texts{device.diveid,   device.divedate, device.timeup,  device.duration,
                                        device.maxdepth, device.interval, device.version, device.otu,
                                        device.atmos,    device.dusage};
    for (size_t i = 0; i < texts.size(); ++i) {
        device_[i]->setText(texts[i]);
    }
    depthcaption_->setText(device.depthcaption);
    const DiverAdds& diver = details.diver;
    Txtdiver_->setText(diver.username);
    Cbodepartment_->setEditText(diver.department);
    Cbosite_->setEditText(diver.site);
    cbowhether_->setEditText(diver.weather);
    txtlocation_->setText(diver.location);
    txtsuit_->setText(diver.suit);
    txtdivenote_->setPlainText(diver.divenote);
    txtsitenote_->setPlainText(diver.sitenote);
    txtcomments_->setPlainText(diver.comments);
    List1_->addItems(diver.buddies);
    const auto paths = picturepaths(diver.sitenote);
    for (size_t i = 0; i < paths.size(); ++i) {
        tiles_[i]->setPath(paths[i]);
    }
    setWindowTitle(QStringLiteral("Dive and Log details - ") + device.diveid);
}

void rbdetails::showPickLists() {
    const PickLists lists = loadpicklists(process().database);
    setItems(*Cbodepartment_, lists.departments);
    setItems(*Cbosite_, lists.sites);
    setItems(*cbowhether_, lists.weathers);
    setItems(*cbobuddy_, lists.buddies);
}

DiverAdds rbdetails::edited() const {
    QStringList buddies;
    for (int i = 0; i < List1_->count(); ++i) {
        buddies += List1_->item(i)->text();
    }
    return {Txtdiver_->text(),           Cbodepartment_->currentText(),
            Cbosite_->currentText(),     txtlocation_->text(),
            cbowhether_->currentText(),  txtsuit_->text(),
            txtdivenote_->toPlainText(), txtsitenote_->toPlainText(),
            txtcomments_->toPlainText(), buddies};
}

void rbdetails::cmdSave_click() {
    const Routine routine(*this);
    if (dive_.isEmpty()) {
        return;
    }
    try {
        const SavedDetails done = savedetails(process().database, dive_, edited());
        noteSaved(done.span);
        showPickLists();
        tell(wordOf(done));
    } catch (const StoreError& error) {
        dialogs().message(
            this, QStringLiteral("The details of %1 are not stored.\n\n%2").arg(dive_.diveid, error.text()),
            platform::BoxKind::Warning);
    }
}

/// On the way out there is no screen to stay on: what cannot be stored is tried again for as long as the user
/// wants it.
void rbdetails::saveOrAsk() {
    takeTypedBuddy();
    while (!dive_.isEmpty()) {
        try {
            const bool changed = !(edited() == stored_); // else it was told when it was saved
            const SavedDetails done = savedetails(process().database, dive_, edited());
            noteSaved(done.span);
            const bool plain = done.refused.isEmpty() && done.notTakenBack.isEmpty();
            if (!plain && changed && isUnloaded()) {
                dialogs().message(this, wordOf(done), platform::BoxKind::Information);
            } else if (!plain && changed) {
                tell(wordOf(done));
            }
            return;
        } catch (const StoreError& error) {
            if (edited() == stored_) {
                return; // nothing was typed since, and nothing is lost
            }
            const bool again = dialogs().confirm(
                this,
                QStringLiteral(
                    "The details of %1 cannot be stored.\n\n%2\n\nTry again? With No they are lost.")
                    .arg(dive_.diveid, error.text()),
                QStringLiteral("Dive and Log details"), platform::BoxKind::Warning);
            if (!again) {
                rescue(error.text());
                return;
            }
        }
    }
}

void rbdetails::noteSaved(const platform::StoreSpan& span) {
    stored_ = edited();
    emit saved(span);
    if (!rescued_.isEmpty()) {
        static_cast<void>(platform::removeFile(ProgramFolder::current().path(std::exchange(rescued_, {}))));
    }
}

/// The session ends and nobody can be asked: what was typed is kept in a text beside the store.
void rbdetails::rescue(const QString& reason) {
    if (!platform::withoutDialogs()) {
        return;
    }
    const ProgramFolder& folder = ProgramFolder::current();
    const QString before = std::exchange(rescued_, writeunsaved(folder, dive_, edited(), reason));
    if (!before.isEmpty() && !rescued_.isEmpty()) {
        static_cast<void>(platform::removeFile(folder.path(before)));
    }
}

/// Whoever comes next finds the dive of this screen in hand.
void rbdetails::takeInHand() const {
    if (!dive_.isEmpty()) {
        process().currentdiveid = dive_.diveid;
    }
}

void rbdetails::Cmdcancel_click() {
    takeInHand();
    emit diveViewWanted();
}

void rbdetails::FormPrint() {
    const Routine routine(*this);
    const std::shared_ptr<QPrinter> printer = dialogs().printer(this);
    if (printer != nullptr && !platform::printWidget(*printer, *this)) {
        dialogs().message(this, QStringLiteral("The printer takes nothing."), platform::BoxKind::Warning);
    }
}

void rbdetails::cmdadd_click() {
    const QString buddy = cbobuddy_->currentText();
    if (!buddy.isEmpty()) {
        List1_->addItem(buddy);
    }
    buddyTyped_ = false;
    typed();
}

/// Return in the box of buddies. The text stays, ready to be written over.
void rbdetails::cbobuddy_return() {
    cmdadd_click();
    cbobuddy_->lineEdit()->selectAll();
}

/// The box hands a Return that its line has told of on to that line once more; here it counts once.
bool rbdetails::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && cbobuddy_ != nullptr && watched == cbobuddy_->lineEdit()) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            cbobuddy_return();
            return true;
        }
    }
    return Screen::eventFilter(watched, event);
}

/// On the way out a name that was typed and never added is meant all the same.
void rbdetails::takeTypedBuddy() {
    const QString buddy = cbobuddy_->currentText();
    if (!dive_.isEmpty() && buddyTyped_ && !buddy.trimmed().isEmpty() &&
        List1_->findItems(buddy, Qt::MatchFixedString).isEmpty()) {
        List1_->addItem(buddy);
    }
    buddyTyped_ = false;
}

/// What was said of the last save is no longer true.
void rbdetails::typed() {
    if (!quietLine_->text().isEmpty() && contents()->isEnabled() && !(edited() == stored_)) {
        tell(QString());
    }
}

void rbdetails::cmdremove_click() {
    delete List1_->takeItem(List1_->currentRow());
    typed();
}

void rbdetails::givePictureUp(int index) {
    tiles_[static_cast<size_t>(index)]->setPath(QString());
    txtsitenote_->setPlainText(withoutpicture(txtsitenote_->toPlainText(), index));
}

void rbdetails::Image1_click(int index) {
    const Routine routine(*this);
    const QString path = dialogs().openFile(this, QStringLiteral("Open"), QDir::homePath(),
                                            QStringLiteral("Text Files (*.jpg)|*.jpg|All Files (*.*)|*.*"));
    if (path.isEmpty() || isUnloaded()) {
        return;
    }
    tiles_[static_cast<size_t>(index)]->setPath(path);
    txtsitenote_->setPlainText(withpicture(txtsitenote_->toPlainText(), index, path));
}

void rbdetails::tell(const QString& quietLine) {
    quietLine_->setText(quietLine);
}

} // namespace benthor::logbook
