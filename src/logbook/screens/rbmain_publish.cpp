// What leaves the list: a dive by mail, the list as a spreadsheet.

#include "logbook/publish.h"
#include "logbook/screens/publishpanel.h"
#include "logbook/screens/rbmain.h"
#include "logbook/screens/summarystrip.h"
#include "logbook/sheetlines.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/pieces.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/mailer.h"
#include "platform/skiperrors.h"

#include <QFile>
#include <QScreen>

namespace benthor::logbook {

namespace {

constexpr int kFoldingPictures = 2;
constexpr int kManyRows = 100;
constexpr int kTextFilePosition = 26; // of the field that names the dive's text file

} // namespace

/// The lower pictures fold the panel; the one above them sends.
void rbmain::Picture5_click(int index) {
    if (index < kFoldingPictures) {
        foldPublish(publish_->isHidden());
    } else {
        publishDive();
    }
}

/// The screen has two heights: it grows by the panel where the display has room for that.
void rbmain::foldPublish(bool open) {
    if (open != publish_->isHidden()) {
        return;
    }
    const int room = publish_->sizeHint().height();
    publish_->setVisible(open);
    if (isMaximized() || isFullScreen()) {
        return;
    }
    if (!open) {
        resize(width(), height() - grownBy_);
        grownBy_ = 0;
        return;
    }
    const int lowest = screen()->availableGeometry().bottom();
    grownBy_ = std::clamp(lowest - frameGeometry().bottom(), 0, room);
    resize(width(), height() + grownBy_);
}

void rbmain::mnuexport_click() {
    exportDives(chosenDives());
}

void rbmain::mnuexportall_click() {
    exportDives(dives());
}

void rbmain::exportDives(const QStringList& dives) {
    const Routine routine(*this); // the dialog lets events run
    if (refuseElsewhere(QStringLiteral("No dive is exported from there."))) {
        return;
    }
    if (dives.isEmpty()) {
        platform::dialogs().message(this, QStringLiteral("No dive is blue. A click on a row makes it so."));
        return;
    }
    emit exportWanted(dives);
}

void rbmain::publishDive() {
    const Routine routine(*this);
    if (refuseElsewhere(QStringLiteral("No dive is sent from there."))) {
        return;
    }
    if (MSFlexGrid1_->row() < 1) {
        return;
    }
    const int row = rowMeant();
    PublishedDive dive;
    dive.recipient = publish_->recipient();
    dive.note = publish_->note();
    for (int col = 0; col < MSFlexGrid1_->cols(); ++col) {
        dive.headers += MSFlexGrid1_->text(0, col);
        dive.cells += MSFlexGrid1_->text(row, col);
    }
    dive.location = strip_->name();
    // No move reaches that far: the field stands at its own position.
    dive.dbtxtname = dive.cells.value(kTextFilePosition);
    const Publication publication = publishdive(platform::ProgramFolder::current(), dive);
    if (!publication.refusal.isEmpty()) {
        platform::dialogs().message(this, publication.refusal);
        return;
    }
    mailer_->send(publication.message, dive.cells.value(0) + QStringLiteral(".eml"));
}

void rbmain::connectMailer() {
    mailer_ = new platform::Mailer(this);
    connect(mailer_, &platform::Mailer::handedOver, this,
            [this] { tell(QStringLiteral("The message is in your mail program")); });
    connect(mailer_, &platform::Mailer::savedAs, this,
            [this](const QString& path) { tell(QStringLiteral("Message saved: %1").arg(path)); });
    connect(mailer_, &platform::Mailer::failed, this, [this](const QString& reason) {
        platform::dialogs().message(this, reason, platform::BoxKind::Warning);
    });
}

/// Some rows after the others; the file of a list that is closed meanwhile stays cut. Whether all is written.
bool rbmain::writeSheet(const QString& path) {
    QStringList headers;
    for (int col = 0; col < std::min(MSFlexGrid1_->cols(), static_cast<int>(kSheetColumns)); ++col) {
        headers += MSFlexGrid1_->text(0, col);
    }
    QFile file(path);
    bool written = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    std::string lines = spreadsheetheader(headers).toStdString();
    platform::Pieces pieces;
    const auto send = [&file, &written](QByteArrayView piece) {
        written = written && file.write(piece.data(), piece.size()) == piece.size();
    };
    const auto write = [&] {
        pieces.put(QByteArrayView(lines.data(), static_cast<qsizetype>(lines.size())), send);
        lines.clear();
        return written;
    };
    sincePainting_.start();
    if (divecount_ > kManyRows) {
        sincePainting_.invalidate(); // what is going on is told from the beginning
    }
    SheetLines sheet(list_.dives, unit_);
    bool goesOn = written;
    for (int row = 1; goesOn && row <= divecount_; ++row) {
        sheet.add(row, lines);
        if (row == 1 || row % kManyRows == 0) {
            goesOn = write() && paintPending([this, row] {
                         tell(QStringLiteral("Saving dive %1 of %2")
                                  .arg(QString::number(row), QString::number(divecount_)));
                     });
        }
    }
    tell(QString());
    goesOn = goesOn && write();
    pieces.flush(send); // what there is, where the list was closed meanwhile
    return goesOn && written && file.flush();
}

void rbmain::cmdSave_click() {
    const Routine routine(*this);
    const QString path = platform::dialogs().saveFile(
        this, QStringLiteral("Save as"), platform::ProgramFolder::current().path(u"divelist.csv"),
        QStringLiteral("Text Files (*.csv)|*.csv|All Files (*.*)|*.*"));
    const bool saved = !path.isEmpty() && writeSheet(path);
    platform::dialogs().message(this, saved ? QStringLiteral("Data saved to CSV file....!!")
                                            : QStringLiteral("Data is not saved to a file....!!"));
}

} // namespace benthor::logbook
