// Filling the list, and the order it is filled in.

#include "logbook/divelist.h"
#include "logbook/listfill.h"
#include "logbook/screens/listfoot.h"
#include "logbook/screens/listtoolbar.h"
#include "logbook/screens/rbmain.h"
#include "platform/look/type.h"
#include "platform/look/widgets/faultframe.h"
#include "platform/look/widgets/segmentedchoice.h"
#include "platform/look/widgets/wholelabel.h"
#include "platform/screen/toldqcolor.h"
#include "platform/skiperrors.h"
#include "platform/storewait.h"
#include "platform/usersettings.h"
#include "session/process.h"
#include "store/diveinhand.h"

#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QLabel>
#include <QScopedValueRollback>

namespace benthor::logbook {

namespace {

constexpr double kFontPoints = 8;
constexpr int kNameColumn = 4;
// Time of checking between two paintings: the window stays alive, and painting does not slow the checks.
constexpr int kPaintEveryMilliseconds = 40;
/// A screenful on a high display.
constexpr int kFirstRows = 100;
/// The grid's property that says whether all its dives are there and checked.
constexpr const char* kFilled = "filled";

struct SortColumn {
    int sortnumber;
    int displaycolumn;
};
constexpr std::array<SortColumn, 5> kSortColumns{{{kSortByIdentifier, 0},
                                                  {kSortByName, kNameColumn},
                                                  {kSortByMaxDepth, 2},
                                                  {kSortByDate, 3},
                                                  {kSortBySite, 5}}};

/// The sort number whose order was last wanted downward, plus 1; 0 for none. The key in the program folder
/// says nothing of it.
QString downwardSetting() {
    return QStringLiteral("Dive List Downward");
}

} // namespace

void rbmain::mnusdate_click() {
    sortBy(QStringLiteral("d"));
}

void rbmain::mnuslocation_click() {
    sortBy(QStringLiteral("l"));
}

void rbmain::mnusmd_click() {
    sortBy(QStringLiteral("m"));
}

void rbmain::mnussite_click() {
    sortBy(QStringLiteral("s"));
}

void rbmain::mnusdiveid_click() {
    sortBy(identifierkey());
}

void rbmain::sortBy(const QString& key, bool downward) {
    sortkey_ = key;
    downward_ = downward;
    showSort();
    filldivelist();
}

/// Runs the menu action of a sort number; a number without one fills in the order of the dives.
void rbmain::runSort(int sortnumber) {
    switch (sortnumber) {
    case kSortByName:
        return mnuslocation_click();
    case kSortByMaxDepth:
        return mnusmd_click();
    case kSortByDate:
        return mnusdate_click();
    case kSortBySite:
        return mnussite_click();
    default:
        showSort();
        filldivelist();
    }
}

/// A second click on a heading turns its order round.
void rbmain::MSFlexGrid1_HeaderClick(int col) {
    for (const SortColumn& sort : kSortColumns) {
        if (sort.displaycolumn != col) {
            continue;
        }
        if (sortnumber(sortkey_) == sort.sortnumber) {
            sortBy(QString(sortkey_), !downward_);
        } else if (sort.sortnumber == kSortByIdentifier) {
            mnusdiveid_click();
        } else {
            runSort(sort.sortnumber);
        }
        platform::userSettings().setNumber(platform::optionsSection(), downwardSetting(),
                                           downward_ ? sort.sortnumber + 1 : 0);
        return;
    }
}

/// What was wanted at the end of the last list.
bool rbmain::wantedDownward() const {
    const int wanted = platform::userSettings().number(platform::optionsSection(), downwardSetting(), 0);
    return wanted == sortnumber(sortkey_) + 1;
}

void rbmain::showSort() {
    const int number = sortnumber(sortkey_);
    bar_->sort()->setCurrent(number == kSortByIdentifier ? -1 : number);
    for (QAction* entry : sortEntries_->actions()) {
        entry->setChecked(entry->data().toInt() == number);
    }
    QList<int> sortable;
    int shown = -1;
    for (const SortColumn& sort : kSortColumns) {
        sortable += sort.displaycolumn;
        if (sort.sortnumber == number) {
            shown = sort.displaycolumn;
        }
    }
    MSFlexGrid1_->setSortableColumns(sortable);
    MSFlexGrid1_->setSortIndicator(shown, !downward_);
}

/// Serves painting alone, now and then, where the screen can be seen; `before` runs before that. A window
/// that the user closes is closed. False when it was this one.
bool rbmain::paintPending(const std::function<void()>& before) {
    if (!isVisible() || (sincePainting_.isValid() && sincePainting_.elapsed() < kPaintEveryMilliseconds)) {
        return !isUnloaded() && !platform::allWaitsEnd();
    }
    before();
    const bool goesOn = yieldPainting();
    sincePainting_.restart();
    return goesOn;
}

void rbmain::filldivelist() {
    if (filling_) {
        return;
    }
    const Routine routine(*this);
    const QScopedValueRollback filling(filling_, true);
    const store::DiveInHand inHand;
    MSFlexGrid1_->setProperty(kFilled, false);
    const Shown shown = showDives();
    if (shown == Shown::Ended) {
        return;
    }
    if (shown == Shown::None) {
        Timer3_.setEnabled(true);
        MSFlexGrid1_->setProperty(kFilled, true);
        return;
    }
    if (!checkDives()) {
        return;
    }
    if (list_.stamp != store().stamp()) {
        list_.stamp = {};
    }
    tell(QString());
    chooseOnly(1);
    MSFlexGrid1_->setTopRow(1);
    MSFlexGrid1_->setProperty(kFilled, true);
}

/// Reads the dives into the grid; the first of them can be seen at once. A failing store gives none.
rbmain::Shown rbmain::showDives() {
    MSFlexGrid1_->clearColours();
    MSFlexGrid1_->setFontSize(kFontPoints * look::fontScale());
    faulty_.clear();
    faultyDives_.clear();
    clickedRow_ = 0;
    clicks_.clear();
    bool goesOn = true;
    if (showFilled()) {
        return divecount_ == 0 ? Shown::None : Shown::Some;
    }
    try {
        list_ = {};
        list_.sortnumber = sortnumber(sortkey_);
        list_.downward = downward_;
        DiveReading reading(store(), list_.sortnumber, downward_, list_.dives);
        list_.stamp = store().stamp();
        unit_ = process().depthunit;
        reading.readFirst(kFirstRows);
        showRows();
        sincePainting_.start();
        if (divecount_ > kFirstRows) {
            goesOn = showEarly();
        }
        while (goesOn && reading.readMore()) {
            goesOn = paintPending([this] { MSFlexGrid1_->viewport()->update(); });
        }
    } catch (const platform::StoreError& error) {
        if (storeFault_.isEmpty()) {
            storeFault_ = error.text();
        }
        list_ = {};
        showRows();
    }
    askForTexts(); // widths go by rows from all over the list
    return !goesOn ? Shown::Ended : divecount_ == 0 ? Shown::None : Shown::Some;
}

/// What the list before this one has handed over, brought up to date; false where that is not to be had.
bool rbmain::showFilled() {
    if (!list_.takeChanges(store(), sortnumber(sortkey_), downward_)) {
        return false;
    }
    process().querytext = listquery(list_.sortnumber, downward_).text();
    unit_ = process().depthunit;
    showRows();
    sincePainting_.start();
    return true;
}

FilledList rbmain::handOver() {
    if (filling_ || isElsewhere()) {
        return {};
    }
    return std::exchange(list_, {});
}

void rbmain::showRows() {
    const int count = list_.dives.count();
    divecount_ = 0;
    moving_ = true;
    MSFlexGrid1_->setRows(1 + count);
    moving_ = false;
    if (count == 0) {
        refreshStrip();
        return;
    }
    const ListColumns& shown = list_.dives.columns();
    const int columns = static_cast<int>(shown.headers.size());
    MSFlexGrid1_->setCols(columns);
    askForTexts();
    for (int col = 0; col < columns; ++col) {
        MSFlexGrid1_->setText(0, col, shown.headers.at(col));
        MSFlexGrid1_->setColumnWidthTwips(col, shown.widths[static_cast<size_t>(col)]);
        MSFlexGrid1_->setColumnAlignment(col, shown.figures[static_cast<size_t>(col)] ? Qt::AlignRight
                                                                                      : Qt::AlignLeft);
    }
    showSort();
    divecount_ = count;
    faulty_.assign(static_cast<size_t>(count) + 1, false);
}

/// From now on the grid asks for the text of a cell when it is looked at.
void rbmain::askForTexts() {
    MSFlexGrid1_->setTextFunction([this](int row, int col) { return list_.dives.cell(row, col, unit_); });
}

/// The first screenful is there. False when the screen was unloaded meanwhile.
bool rbmain::showEarly() {
    showWhileLoading();
    return !isVisible() || yieldPainting();
}

void rbmain::takeUnit() {
    if (filling_ || divecount_ == 0 || unit_ == process().depthunit) {
        return;
    }
    unit_ = process().depthunit;
    askForTexts();
    showStrip();
}

void rbmain::takeTextsOf(const QString& diveid, const platform::StoreSpan& save) {
    if (filling_ || divecount_ == 0) {
        return;
    }
    follow(save, {diveid});
    platform::skipErrors([&] {
        for (const int number : list_.dives.takeText(store(), diveid)) {
            MSFlexGrid1_->textsChanged(number);
        }
    });
    showStrip();
}

/// Runs the validators over all rows. False when the screen was unloaded meanwhile.
bool rbmain::checkDives() {
    const auto between = [this](int row) {
        return paintPending([this, row] {
            tell(QStringLiteral("Checking dive %1 of %2")
                     .arg(QString::number(row), QString::number(divecount_)));
        });
    };
    const auto checked = [this, &between](int row, bool good) {
        if (!good) {
            MSFlexGrid1_->setRowColours(row, platform::toQColor(platform::kToldRed), {});
            faulty_[static_cast<size_t>(row)] = true;
            noteFault(MSFlexGrid1_->text(row, 0));
        }
        return between(row);
    };
    if (divecount_ > kFirstRows) {
        sincePainting_.invalidate(); // what is going on is told from the beginning
    }
    return checkdives(store(), platform::ProgramFolder::current(), list_.dives, {checked, between},
                      list_.sound);
}

void rbmain::noteFault(const QString& diveid) {
    faultyDives_ += diveid;
    const qsizetype others = faultyDives_.size() - 1;
    showFaults(others == 0 ? QStringLiteral("%1 cannot be read whole: download it again").arg(diveid)
                           : QStringLiteral("%1 and %2 more cannot be read whole: download them again")
                                 .arg(diveid, QString::number(others)),
               process().problemtext);
}

void rbmain::showFaults(const QString& title, const QString& problemtext) {
    Frame2_->title()->setText(title);
    Label16_->setText(problemtext);
    Frame2_->setStale(false);
    Frame2_->show();
}

void rbmain::tell(const QString& quietLine) {
    foot_->quietLine()->setText(quietLine);
}

} // namespace benthor::logbook
