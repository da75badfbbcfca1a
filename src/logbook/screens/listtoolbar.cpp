#include "logbook/screens/listtoolbar.h"

#include "logbook/divelist.h"

#include "logbook/screens/picturebutton.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/segmentedchoice.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace benthor::logbook {

namespace {

// From all captions to none; at each level some more actions are icons with a tip.
constexpr int kLevels = 6;
constexpr int kFewActionsCompact = 1;
constexpr int kWaysOutCompact = 2;
constexpr int kDeleteCompact = 3;
constexpr int kSortUntold = 4;
constexpr int kAllCompact = 5;

void setLabel(look::ClickableLabel* label, const QString& caption, bool compact) {
    label->setText(compact ? QString() : caption);
    label->setToolTip(compact ? caption : QString());
}

QString linkCaption() {
    return QStringLiteral("Download to PC");
}
QString mainCaption() {
    return QStringLiteral("Menu Screen");
}

look::ClickableLabel* wayOut(const char* name, const char* iconName, const QString& caption) {
    auto* label = new look::ClickableLabel;
    label->setObjectName(QLatin1String(name));
    label->setIconName(QLatin1String(iconName));
    label->setAccessibleName(caption);
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return label;
}

look::Rule* groupRule() {
    auto* rule = new look::Rule(Qt::Vertical);
    rule->setFixedHeight(look::scaled(26));
    return rule;
}

} // namespace

ListToolBar::ListToolBar(QWidget* parent)
    : look::Pane(Qt::BottomEdge, parent)
    , open_(new PictureButton(QStringLiteral("Open"), "open-folder", QStringLiteral("Picture1")))
    , publish_(new PictureButton(QStringLiteral("Publish"), "mail", QStringLiteral("Picture5(0)")))
    , spreadsheet_(
          new PictureButton(QStringLiteral("Save as spreadsheet"), "sheet", QStringLiteral("Picture3(0)")))
    , close_(new PictureButton(QStringLiteral("Close"), "close", QStringLiteral("Picture4")))
    , remove_(new PictureButton(QStringLiteral("Delete"), "trash", QStringLiteral("Picture2")))
    , toLink_(wayOut("Label8", "download", linkCaption()))
    , toMain_(wayOut("Label11", "home", mainCaption()))
    , sort_(new look::SegmentedChoice)
    , sortCaption_(look::makeCaption(QStringLiteral("Sort"))) {
    open_->setObjectName(QStringLiteral("cmdgo"));
    open_->setProperty("primary", true);
    spreadsheet_->setObjectName(QStringLiteral("cmdSave"));
    close_->setObjectName(QStringLiteral("cmdclose"));
    close_->setProperty("quiet", true);
    remove_->setObjectName(QStringLiteral("cmdelete"));
    remove_->setProperty("danger", true);
    sort_->addChoice(QStringLiteral("Date"), kSortByDate);
    sort_->addChoice(QStringLiteral("MaxDepth"), kSortByMaxDepth);
    sort_->addChoice(QStringLiteral("Dive Name"), kSortByName);
    sort_->addChoice(QStringLiteral("Site"), kSortBySite);
    arrange();
    measure();
}

void ListToolBar::arrange() {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(look::spaceBase, 10, look::spaceBase, 10);
    row->setSpacing(look::spaceSmall);
    row->addWidget(open_);
    row->addWidget(publish_);
    row->addWidget(spreadsheet_);
    row->addSpacing(look::spaceTight);
    row->addWidget(groupRule());
    row->addSpacing(look::spaceTight);
    row->addWidget(sortCaption_);
    row->addWidget(sort_);
    row->addStretch(1);
    row->addWidget(toLink_);
    row->addSpacing(look::spaceBase);
    row->addWidget(toMain_);
    row->addSpacing(look::spaceTight);
    row->addWidget(close_);
    row->addSpacing(look::spaceTight);
    row->addWidget(groupRule());
    row->addSpacing(look::spaceTight);
    row->addWidget(remove_);
}

void ListToolBar::setCompactness(int level) {
    if (level == level_) {
        return;
    }
    level_ = level;
    publish_->setCompact(level >= kFewActionsCompact);
    spreadsheet_->setCompact(level >= kFewActionsCompact);
    close_->setCompact(level >= kFewActionsCompact);
    setLabel(toLink_, linkCaption(), level >= kWaysOutCompact);
    setLabel(toMain_, mainCaption(), level >= kWaysOutCompact);
    open_->setCompact(level >= kAllCompact);
    remove_->setCompact(level >= kDeleteCompact);
    sortCaption_->setVisible(level < kSortUntold);
    layout()->invalidate();
}

void ListToolBar::fit() {
    for (int level = 0; level < kLevels; ++level) {
        setCompactness(level);
        if (layout()->sizeHint().width() <= width()) {
            return;
        }
    }
}

/// The room that the most compact form needs.
void ListToolBar::measure() {
    setCompactness(kLevels - 1);
    smallest_ = layout()->totalMinimumSize();
    updateGeometry();
}

void ListToolBar::resizeEvent(QResizeEvent* event) {
    look::Pane::resizeEvent(event);
    fit();
}

void ListToolBar::changeEvent(QEvent* event) {
    look::Pane::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        measure();
        fit();
    }
}

} // namespace benthor::logbook
