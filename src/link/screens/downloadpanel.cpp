#include "link/screens/downloadpanel.h"

#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/commandbutton.h"
#include "platform/look/widgets/fold.h"
#include "platform/look/widgets/numberlabel.h"

#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace benthor::link {

namespace {

constexpr int kLeastWidth = 240;
constexpr int kFourLetters = 4; // "Dive" before the number

look::CommandButton* getButton(const char* caption, const char* iconName) {
    return new look::CommandButton(QLatin1String(caption), QLatin1String(iconName),
                                   look::CommandButton::Kind::Large);
}

QPushButton* button(const char* name, const char* caption) {
    auto* made = named(new QPushButton(QLatin1String(caption)), name);
    made->setAutoDefault(false);
    return made;
}

} // namespace

DownloadPanel::DownloadPanel(QWidget* parent)
    : QWidget(parent)
    , cmddownload_(getButton("Get Selected Dives", "get-selected"))
    , cmddownloadnew_(getButton("Get New Dives", "get-new"))
    , cmddownloadall_(getButton("Get All Dives", "get-all"))
    , DiveSeriesName_(named(new QLineEdit, "DiveSeriesName"))
    , fileName_(look::makeCaption(QString()))
    , startdivenum_(named(new QLineEdit, "startdivenum"))
    , Command1_(button("Command1", "Get Dive"))
    , Command9_(button("Command9", "Get Dives"))
    , Command3_(button("Command3", "Store Dive Text"))
    , savetodatabase_(button("savetodatabase", "Save to Database"))
    , Label5_(named(look::makeCaption(QStringLiteral("Dive")), "Label5(2)"))
    , downloadingdive_(named(new QLabel, "downloadingdive"))
    , Text1_(named(new QLabel, "Text1"))
    , DiveCount_(named(new look::NumberLabel(24), "DiveCount")) {
    setObjectName(QStringLiteral("Frame2"));
    cmddownload_->setNames("cmddownload", "Picture5(1)", "Label16");
    cmddownload_->setProperty("primary", true);
    cmddownloadall_->setNames("cmddownloadall", "Picture2(1)", "Label12");
    cmddownloadnew_->setNames("cmddownloadnew", "Picture1(1)", "");
    cmddownloadnew_->setQuietLine(QStringLiteral("those not yet in My Dives"));
    cmddownloadall_->setQuietLine(QStringLiteral("every dive of the device"));

    auto* down = new QVBoxLayout(this);
    down->setContentsMargins({});
    down->setSpacing(look::spaceSmall);
    down->addWidget(cmddownload_);
    down->addWidget(cmddownloadnew_);
    down->addWidget(cmddownloadall_);
    down->addSpacing(look::spaceTight);
    down->addWidget(buildSeries());
    down->addWidget(buildSingle());
    down->addStretch(1);
    down->addWidget(buildReceived());
    // The width that the open fold needs is kept while it is shut, so that nothing moves.
    single_->setOpen(true);
    setMinimumWidth(std::max(kLeastWidth, minimumSizeHint().width()));
    single_->setOpen(false);
}

QWidget* DownloadPanel::buildSeries() {
    auto* card = new look::Card;
    card->body()->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase, look::spaceSmall);
    card->body()->setSpacing(look::spaceTight);
    QLabel* caption = look::makeCaption(QStringLiteral("Dive series"));
    caption->setBuddy(DiveSeriesName_);
    DiveSeriesName_->setAccessibleName(caption->text());
    fileName_->setWordWrap(true);
    card->body()->addWidget(caption);
    card->body()->addWidget(DiveSeriesName_);
    card->body()->addWidget(fileName_);
    return card;
}

QWidget* DownloadPanel::buildSingle() {
    auto* card = new look::Card;
    card->body()->setContentsMargins(look::spaceSmall, look::spaceTight, look::spaceSmall, look::spaceTight);
    auto* fold = new look::Fold(QStringLiteral("Single dive"));
    single_ = fold;
    card->body()->addWidget(fold);
    fold->body()->setSpacing(look::spaceSmall);
    fold->body()->setContentsMargins(look::spaceTight, look::spaceTight, look::spaceTight, look::spaceSmall);

    auto* request = new QHBoxLayout;
    request->setSpacing(look::spaceSmall);
    startdivenum_->setMinimumWidth(look::scaled(36));
    startdivenum_->setAccessibleName(QStringLiteral("Number of the dive"));
    startdivenum_->setToolTip(startdivenum_->accessibleName());
    request->addWidget(startdivenum_, 1);
    request->addWidget(Command1_);
    request->addWidget(Command9_);
    fold->body()->addLayout(request);

    auto* which = new QHBoxLayout;
    which->setSpacing(look::spaceTight);
    int index = 0;
    for (const char* caption : {"Last one", "All", "Latest"}) {
        auto* option = new QRadioButton(QLatin1String(caption));
        option->setObjectName(QStringLiteral("Option2(%1)").arg(index));
        option->setChecked(index == 0);
        which->addWidget(option);
        ++index;
    }
    fold->body()->addLayout(which);

    Command3_->setIcon(look::icon("save"));
    fold->body()->addWidget(Command3_);
    auto* capture = new QHBoxLayout;
    capture->setSpacing(look::spaceSmall);
    for (QLabel* label : {downloadingdive_, Text1_}) {
        label->setFont(look::numbers(13));
    }
    Text1_->setToolTip(QStringLiteral("Bytes received of this dive"));
    capture->addWidget(Label5_);
    capture->addWidget(downloadingdive_);
    capture->addStretch(1);
    capture->addWidget(Text1_);
    fold->body()->addLayout(capture);
    return card;
}

QWidget* DownloadPanel::buildReceived() {
    auto* card = new look::Card;
    card->body()->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase, look::spaceBase);
    card->body()->setSpacing(look::spaceSmall);
    DiveCount_->setCaption(QStringLiteral("Dives received"));
    DiveCount_->setText(QStringLiteral("0"));
    card->body()->addWidget(DiveCount_);
    savetodatabase_->setIcon(look::icon("database"));
    savetodatabase_->setToolTip(QStringLiteral("Imports the dives that wait in the folder new"));
    card->body()->addWidget(savetodatabase_);
    return card;
}

void DownloadPanel::syncButtons(const LinkState& link) {
    for (look::CommandButton* one : {cmddownload_, cmddownloadnew_, cmddownloadall_}) {
        showEnabled(one, link.downloadbuttons);
        one->setPictureShown(link.downloadbuttons);
    }
    const auto& rows = link.Mgrid.rows;
    const auto picked = std::count_if(rows.begin() + 1, rows.end(),
                                      [](const DirectoryRow& row) { return row.mark == RowMark::Selected; });
    cmddownload_->setQuietLine(picked == 0   ? QStringLiteral("click dives in the list")
                               : picked == 1 ? QStringLiteral("1 dive picked")
                                             : QStringLiteral("%1 dives picked").arg(picked));
}

/// The files that the picked dives will be, as far as the line has room.
QString DownloadPanel::fileNames(const LinkState& link) const {
    QStringList names;
    for (const DirectoryRow& row : link.Mgrid.rows) {
        if (row.mark == RowMark::Selected && names.size() < 2) {
            names += link.download.DiveSeriesName + row.cells[0].mid(kFourLetters) + QLatin1String(".txt");
        }
    }
    if (names.isEmpty()) {
        names += link.download.DiveSeriesName + QLatin1String("1.txt");
    }
    return QLatin1String("saved as ") + names.join(QLatin1String(", "));
}

void DownloadPanel::sync(const LinkState& link) {
    syncButtons(link);
    const Download& run = link.download;
    showText(DiveSeriesName_, run.DiveSeriesName);
    showText(fileName_, fileNames(link));
    showText(startdivenum_, run.startdivenum);
    showEnabled(Command3_, run.Command3Enabled);
    showText(downloadingdive_, run.downloadingdive.text);
    for (QLabel* label : {Label5_, downloadingdive_, Text1_}) {
        showVisible(label, run.downloadingdive.visible);
    }
    showText(Text1_, run.Text1);
    showText(DiveCount_, run.DiveCount.isEmpty() ? QStringLiteral("0") : run.DiveCount);
}

} // namespace benthor::link
