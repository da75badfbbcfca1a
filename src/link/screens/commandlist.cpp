#include "link/screens/commandlist.h"

#include "link/console.h"

#include "link/commandmenu.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/pictures.h"
#include "platform/look/style/paint.h"
#include "platform/look/widgets/entryrow.h"

#include <QButtonGroup>
#include <QEvent>
#include <QPainter>
#include <QRadioButton>
#include <QVBoxLayout>

namespace benthor::link {

namespace {

constexpr int kSaverPicture = 24;

const char* iconOf(int index) {
    switch (index) {
    case kChoiceLogo:
        return "picture";
    case kChoiceIntervalGet:
        return "interval";
    case kChoiceIntervalSend:
        return "interval-send";
    case kChoiceSetup:
        return "cylinder";
    case kChoiceBook:
        return "book";
    case kChoiceUserId:
        return "person";
    case kChoiceQuit:
        return "power";
    default:
        return "gauge";
    }
}

void redden(look::EntryRow& row) {
    row.picture()->setInk(look::Ink::Bad);
    row.caption()->setInk(look::Ink::Bad);
}

/// The picture is as pale as the row it stands on.
QPixmap edged(QPixmap picture) {
    const QRect whole(QPoint(), (picture.size() / picture.devicePixelRatio()));
    QPainter painter(&picture);
    look::drawPanel(&painter, whole, QColor(), look::tokens().edge);
    return picture;
}

/// What cannot be undone stands in a red edge.
class RedFrame : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        look::drawPanel(&painter, rect(), QColor(), look::tokens().bad);
    }
};

} // namespace

CommandList::CommandList(QWidget* parent)
    : look::Card(parent)
    , options_(new QButtonGroup(this)) {
    body()->setContentsMargins(look::spaceSmall, look::spaceSmall, look::spaceSmall, look::spaceSmall);
    body()->setSpacing(0);
    for (const int index : {0, 1, 2, 5, 6, 8, 11}) {
        body()->addWidget(addRow(this, index));
    }
    look::ClickableLabel* saver =
        rows_.value(0)->addSign(QStringLiteral("Image1"), QStringLiteral("chevron-right"));
    disconnect(saver, &look::ClickableLabel::clicked, rows_.value(0), &look::EntryRow::clicked);
    connect(saver, &look::ClickableLabel::clicked, this, [this] { emit pictureClicked(0); });
    body()->addSpacing(look::spaceTight);
    body()->addWidget(new look::Rule);
    body()->addSpacing(look::spaceTight);
    body()->addWidget(buildOptions());
    body()->addStretch(1);
    body()->addSpacing(look::spaceBase); // it stands apart in a low window, too
    body()->addWidget(new look::Rule);
    body()->addSpacing(look::spaceBase);
    body()->addWidget(buildRestart());
    // A chosen entry is written bold and needs the most room.
    for (look::EntryRow* row : std::as_const(rows_)) {
        row->setChosen(true);
        row->setMinimumWidth(row->layout()->minimumSize().width());
        row->setChosen(false);
    }
    redden(*rows_.value(kChoiceQuit));
}

look::EntryRow* CommandList::addRow(QWidget* column, int index) {
    auto* row = new look::EntryRow(QLatin1String(iconOf(index)), listCaption(index),
                                   look::EntryRow::Kind::Normal, column);
    row->setFixedHeight(look::scaledRow(44));
    row->setNames(QStringLiteral("Picture14(%1)").arg(index), QStringLiteral("Label19(%1)").arg(index));
    // A click on the picture takes the interval along; the row itself acts as its caption.
    disconnect(row->picture(), &look::ClickableLabel::clicked, row, &look::EntryRow::clicked);
    connect(row->picture(), &look::ClickableLabel::clicked, this,
            [this, index] { emit pictureClicked(index); });
    connect(row, &look::EntryRow::clicked, this, [this, index] { emit captionClicked(index); });
    rows_.insert(index, row);
    return row;
}

QWidget* CommandList::buildOptions() {
    auto* box = new QWidget;
    auto* down = new QVBoxLayout(box);
    down->setContentsMargins(look::spaceBase, 0, 0, 0);
    down->setSpacing(look::spaceTight);
    for (int index = 0; index < optionCount; ++index) {
        auto* option = new QRadioButton(optionCaption(index), box);
        option->setObjectName(QStringLiteral("Option1(%1)").arg(index));
        options_->addButton(option, index);
        // The others are chosen by their rows and by the menu.
        option->setVisible(index == 3 || index == 4);
        down->addWidget(option);
    }
    connect(options_, &QButtonGroup::idClicked, this, &CommandList::optionClicked);
    return box;
}

QWidget* CommandList::buildRestart() {
    auto* frame = new RedFrame;
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(1, 1, 1, 1);
    look::EntryRow* row = addRow(frame, kChoiceQuit);
    row->caption()->setToolTip(QStringLiteral("Ends PC Link mode; the device stores its data and restarts"));
    layout->addWidget(row);
    return frame;
}

void CommandList::sync(const Console& console) {
    for (auto it = rows_.cbegin(); it != rows_.cend(); ++it) {
        const bool chosen = it.key() == console.option && it.key() != kChoiceQuit;
        if (it.value()->isChosen() != chosen) {
            it.value()->setChosen(chosen);
        }
    }
    QAbstractButton* option = options_->button(console.option);
    if (option != nullptr && !option->isChecked()) {
        option->setChecked(true);
    }
    showVisible(options_->button(kChoiceOther), console.Option1_9Visible);
}

void CommandList::setSaverPicture(const QImage& picture) {
    saver_ = picture;
    if (!picture.isNull()) {
        const int side = look::scaled(kSaverPicture);
        rows_.value(0)->picture()->setPixmap(
            edged(look::picturePixmap(picture, QSize(side, side), devicePixelRatioF())));
        rows_.value(0)->picture()->setAlignment(Qt::AlignCenter); // as the icons of the other rows
    }
}

void CommandList::changeEvent(QEvent* event) {
    look::Card::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !saver_.isNull()) {
        setSaverPicture(QImage(saver_));
    }
}

} // namespace benthor::link
