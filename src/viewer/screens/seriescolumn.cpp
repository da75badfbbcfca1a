#include "viewer/screens/seriescolumn.h"

#include "platform/look/look.h"
#include "platform/look/widgets/seriesbox.h"
#include "viewer/screens/curvestyle.h"

#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>

namespace benthor::viewer {

using look::SeriesBox;
using Swatch = look::SeriesBox::Swatch;

/// A box; its caption and its curves are those of the series that it brings in.
struct SeriesColumn::Entry {
    int number = 0; ///< 1 to 14, or 15 with the index
    Swatch swatch = Swatch::Line;
    const char* tip = "";
    int index = 0;
    const char* caption = ""; ///< of a box that brings none in
};

namespace {

constexpr int kFirstDisabled = 2;
constexpr int kLastDisabled = 13;
constexpr int kFirstCheck = 1;
constexpr int kLastCheck = 14;
constexpr int kSticks = 3;
/// Of the right margin: a scroll bar stands there and cuts nothing.
int scrollRoom() {
    return QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

} // namespace

SeriesColumn::SeriesColumn(QWidget* parent)
    : Card(parent) {
    content_ = new QWidget;
    column_ = new QVBoxLayout(content_);
    column_->setContentsMargins(0, 0, scrollRoom(), 0);
    addGroup(QStringLiteral("Dive"), {{1},
                                      {2, Swatch::Step, "Number of the gas breathed"},
                                      {4, Swatch::Diamond, "Marks set during the dive", 0, "Mark"},
                                      {5}});
    addGroup(QStringLiteral("Oxygen"),
             {{3, Swatch::Line, "Oxygen partial pressure"}, {9, Swatch::Line, "Cells a, b, c"}, {10}});
    addGroup(QStringLiteral("Ceiling"), {{11}});
    addGroup(QStringLiteral("Scrubber"), {{12, Swatch::Line, "What is left of the filter, per cent"},
                                          {14},
                                          {13, Swatch::None, "CO2 at ambient pressure", 0, "Pamb"},
                                          {6, Swatch::Ramp, "Temperature profile meter, 8 thermistors"},
                                          {15, Swatch::Ramp, "Stick 0 of the temperature profile meter", 0},
                                          {15, Swatch::Ramp, "Stick 1 of the temperature profile meter", 1},
                                          {15, Swatch::Ramp, "Stick 2 of the temperature profile meter", 2}});
    addGroup(QStringLiteral("Power and gas"), {{7, Swatch::Line, "Backup and main battery"},
                                               {8, Swatch::Line, "Diluent and oxygen cylinder"}});
    column_->addStretch();

    auto* area = new QScrollArea;
    area->setWidget(content_);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setAutoFillBackground(false);
    content_->setAutoFillBackground(false);
    body()->setContentsMargins(look::spaceBase, look::spaceBase, std::max(0, look::spaceBase - scrollRoom()),
                               look::spaceBase);
    body()->addWidget(area);
    setDense(false);
}

void SeriesColumn::addGroup(const QString& title, const std::vector<Entry>& entries) {
    auto* heading = look::makeCaption(title);
    heading->setFont(look::strong(look::caption()));
    if (column_->count() > 0) {
        heading->setContentsMargins(0, look::spaceSmall, 0, 0);
    }
    column_->addWidget(heading);
    for (const Entry& entry : entries) {
        const std::vector<SeriesSource> series = seriesOfBox(entry.number, entry.index);
        auto* box = new SeriesBox(QLatin1String(series.empty() ? entry.caption : series.front().caption));
        box->setSwatch(entry.swatch, curvesOfBox(entry.number, entry.index));
        box->setToolTip(QLatin1String(entry.tip));
        box->setEnabled(entry.number == 1);
        if (entry.number == 15) {
            box->setObjectName(QStringLiteral("Check15(%1)").arg(entry.index));
            check15_[static_cast<size_t>(entry.index)] = box;
            connect(box, &QCheckBox::toggled, this, [this, index = entry.index] {
                excludeEachOther(index);
                emit changed();
            });
        } else {
            box->setObjectName(QStringLiteral("Check%1").arg(entry.number));
            check_[static_cast<size_t>(entry.number)] = box;
            connect(box, &QCheckBox::toggled, this, &SeriesColumn::changed);
        }
        column_->addWidget(box);
    }
}

void SeriesColumn::excludeEachOther(int index) {
    SeriesBoxes told = boxes();
    setCheck15(told, index, check15(index)->isChecked());
    for (size_t stick = 0; stick < check15_.size(); ++stick) {
        const QSignalBlocker quiet(check15_[stick]);
        check15_[stick]->setChecked(told.check15.test(stick));
    }
}

QCheckBox* SeriesColumn::check(int number) const {
    return check_[static_cast<size_t>(number)];
}

QCheckBox* SeriesColumn::check15(int index) const {
    return check15_[static_cast<size_t>(index)];
}

SeriesBoxes SeriesColumn::boxes() const {
    SeriesBoxes boxes;
    for (size_t number = 1; number < check_.size(); ++number) {
        boxes.check.set(number, check_[number]->isChecked());
    }
    for (size_t index = 0; index < check15_.size(); ++index) {
        boxes.check15.set(index, check15_[index]->isChecked());
    }
    return boxes;
}

void SeriesColumn::disableSeries() {
    for (int number = kFirstDisabled; number <= kLastDisabled; ++number) {
        check(number)->setEnabled(false);
    }
}

void SeriesColumn::enableSeries(const std::bitset<16>& enabled) {
    for (size_t number = 1; number < check_.size(); ++number) {
        if (enabled.test(number)) {
            check_[number]->setEnabled(true);
        }
    }
}

int SeriesColumn::neededWidth() const {
    const QMargins margins = body()->contentsMargins();
    return content_->minimumSizeHint().width() + margins.left() + margins.right();
}

void SeriesColumn::setDense(bool dense) {
    column_->setSpacing(dense ? 0 : look::spaceTight - 1);
}

void SeriesColumn::setResearch(bool on) {
    for (const int index : {1, 2}) {
        check15(index)->setEnabled(on);
    }
    if (!on) {
        check15(0)->setEnabled(false);
        check(13)->setEnabled(false);
    }
}

void SeriesColumn::saveTo(ViewerState& state) const {
    state.boxes = boxes();
    for (int number = kFirstCheck; number <= kLastCheck; ++number) {
        state.enabled.set(static_cast<size_t>(number), check(number)->isEnabledTo(this));
    }
    for (int index = 0; index < kSticks; ++index) {
        state.enabled15.set(static_cast<size_t>(index), check15(index)->isEnabledTo(this));
    }
}

void SeriesColumn::takeFrom(const ViewerState& state) {
    const QSignalBlocker quiet(this);
    for (int number = kFirstCheck; number <= kLastCheck; ++number) {
        const auto bit = static_cast<size_t>(number);
        check(number)->setEnabled(state.enabled.test(bit));
        check(number)->setChecked(state.boxes.check.test(bit));
    }
    for (int index = 0; index < kSticks; ++index) {
        const auto bit = static_cast<size_t>(index);
        check15(index)->setEnabled(state.enabled15.test(bit));
        check15(index)->setChecked(state.boxes.check15.test(bit));
    }
}

} // namespace benthor::viewer
