#include "firmware/screens/imagecard.h"

#include "firmware/guidance.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/toldbutton.h"
#include "platform/screen/toldqcolor.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QListWidget>

namespace benthor::firmware {

using link::showText;
using link::showVisible;
using look::named;

namespace {

QColor buttonColour(ToldColour colour) {
    return colour == kButtonGrey ? QColor() : platform::toQColor(colour);
}

/// A value that carries a told colour shows it as its ground.
void showGround(QLineEdit* box, ToldColour colour) {
    const QColor ground = buttonColour(colour);
    if (box->property("toldBackground").value<QColor>() == ground) {
        return;
    }
    box->setProperty("toldBackground", ground);
    QPalette palette;
    if (ground.isValid()) {
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Window, ground);
        palette.setColor(QPalette::Text, look::readableOn(ground));
    }
    box->setPalette(palette);
}

void showNotice(QLabel* label, const Notice& notice) {
    showText(label, notice.words);
    look::setInk(label, notice.grave ? look::Ink::Bad : look::Ink::Quiet);
}

} // namespace

ImageCard::ImageCard(QWidget* parent)
    : Card(parent)
    , Label9_(named(new look::ClickableLabel(QStringLiteral("Choose File")), "Label9"))
    , Lbldetails_(named(look::makeCaption(QString()), "Lbldetails"))
    , Text5_(named(new QLineEdit, "Text5"))
    , Command7_(named(new look::ToldButton(QStringLiteral("Choose File")), "Command7"))
    , File1_(named(new QListWidget, "File1"))
    , Text2_(named(new QLineEdit, "Text2"))
    , image_(named(look::makeCaption(QString()), "imagewords"))
    , origin_(named(look::makeCaption(QString()), "valueorigin")) {
    body()->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceBase);
    body()->setSpacing(look::spaceSmall);
    auto* head = new QHBoxLayout;
    head->setSpacing(look::spaceBase);
    head->addWidget(look::makeHeading(QStringLiteral("Image")));
    Label9_->setInk(look::Ink::Accent);
    Label9_->setFont(look::caption());
    head->addWidget(Label9_);
    Lbldetails_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Lbldetails_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    Lbldetails_->setWordWrap(true); // with a large font
    head->addWidget(Lbldetails_, 1);
    body()->addLayout(head);
    body()->addWidget(buildFile());
    body()->addWidget(buildValues(), 1);
    connect(Label9_, &look::ClickableLabel::clicked, this, &ImageCard::chooseClicked);
    connect(Command7_, &QPushButton::clicked, this, &ImageCard::chooseClicked);
    connect(File1_, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { emit fileClicked(item->text()); });
    connect(File1_, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { emit fileTaken(item->text()); });
}

QWidget* ImageCard::buildFile() {
    auto* row = new QWidget;
    auto* across = new QHBoxLayout(row);
    across->setContentsMargins({});
    across->setSpacing(look::spaceSmall);
    Text5_->setReadOnly(true);
    Text5_->setFont(look::fixed(12));
    Text5_->setAccessibleName(QStringLiteral("Path of the image"));
    Command7_->setIcon(look::icon("open-folder"));
    Command7_->setToolTip(
        QStringLiteral("Click to choose reprogram file to send to KD. After this the file name "
                       "willappear in text box to right."));
    Command7_->setAutoDefault(false);
    across->addWidget(Text5_, 1);
    across->addWidget(Command7_);
    return row;
}

QLineEdit* ImageCard::value(const char* name, const char* caption, QWidget* parent) {
    auto* box = named(new QLineEdit, name);
    box->setReadOnly(true);
    box->setFont(look::fixed(20));
    box->setFixedHeight(look::scaled(36));
    box->setMinimumWidth(look::scaled(72));
    box->setAccessibleName(QLatin1String(caption));
    auto* down = new QVBoxLayout;
    down->setSpacing(2);
    down->addWidget(look::makeCaption(QLatin1String(caption)));
    down->addWidget(box);
    static_cast<QHBoxLayout*>(parent->layout())->addLayout(down);
    return box;
}

QWidget* ImageCard::buildValues() {
    auto* row = new QWidget;
    auto* across = new QHBoxLayout(row);
    across->setContentsMargins({});
    across->setSpacing(look::spaceWide);
    auto* files = new QVBoxLayout;
    files->setSpacing(look::spaceTight);
    File1_->setAccessibleName(QStringLiteral("Images in the folder"));
    File1_->setToolTip(QStringLiteral("Double-click, or Return, chooses an image"));
    File1_->setFont(look::fixed(12));
    File1_->setMinimumSize(look::scaled(150), look::scaled(64));
    File1_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    Text2_->setReadOnly(true);
    Text2_->setFont(look::fixed(11));
    Text2_->setPlaceholderText(QStringLiteral("No name clicked"));
    Text2_->setAccessibleName(QStringLiteral("Name clicked in the list"));
    files->addWidget(File1_, 1);
    files->addWidget(Text2_);
    across->addLayout(files, 2);

    auto* right = new QVBoxLayout;
    right->setSpacing(look::spaceTight);
    auto* values = new QWidget;
    auto* boxes = new QHBoxLayout(values);
    boxes->setContentsMargins({});
    boxes->setSpacing(look::spaceBase);
    Text13_ = value("Text13", "Expected", values);
    Text15_ = value("Text15", "or", values);
    Text14_ = value("Text14", "Device", values);
    right->addWidget(values);
    for (QLabel* words : {origin_, image_}) {
        words->setWordWrap(true);
        words->setMinimumWidth(look::scaled(200));
        right->addWidget(words);
    }
    right->addStretch(1);
    across->addLayout(right, 3);
    return row;
}

void ImageCard::setFiles(const QStringList& names) {
    QStringList shown;
    for (int row = 0; row < File1_->count(); ++row) {
        shown += File1_->item(row)->text();
    }
    if (shown != names) {
        File1_->clear();
        File1_->addItems(names);
    }
}

void ImageCard::sync(const ReprogState& state) {
    showText(Lbldetails_, QStringLiteral("Save sog and chklst.txt files from email to: \\Reprog"));
    Lbldetails_->setToolTip(state.reprogfolder);
    showText(Text2_, state.Text2);
    showText(Text5_, state.Text5);
    if (Text5_->toolTip() != state.Text5) {
        Text5_->setToolTip(state.Text5);
        Text5_->end(false); // the name, not the way to it
    }
    const QColor colour = buttonColour(state.Command7Colour);
    if (Command7_->toldBackground() != colour) {
        Command7_->setToldBackground(colour);
    }
    showVisible(Command7_, !state.advanced);
    showText(Text13_, state.check.Text13);
    showText(Text15_, state.check.Text15);
    showText(Text14_, state.Text14);
    showGround(Text14_, state.Text14Colour);
    showNotice(image_, imagewords(state));
    showNotice(origin_, valuewords(state));
}

} // namespace benthor::firmware
