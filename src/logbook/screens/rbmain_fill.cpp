// Filling the list, and the order it is filled in.

#include "logbook/divelist.h"
#include "logbook/listfill.h"
#include "logbook/screens/listfoot.h"
#include "logbook/screens/listtoolbar.h"
#include "logbook/screens/rbmain.h"
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
#include <QElapsedTimer>
#include <QHash>
#include <QLabel>
#include <QScopedValueRollback>

namespace benthor::logbook {

namespace {

constexpr double kFontPoints = 8;
constexpr int kNameColumn = 4;
// Time of checking between two paintings: the window stays alive, and painting does not slow the checks.
constexpr int kPaintEveryMilliseconds = 40;

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
void rbmain::loadDirection() {
    const int wanted = platform::userSettings().number(platform::optionsSection(), downwardSetting(), 0);
    if (wanted == sortnumber(sortkey_) + 1) {
        sortBy(QString(sortkey_), true);
    }
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

void rbmain::filldivelist() {
    if (filling_) {
        return;
    }
    const Routine routine(*this);
    const QScopedValueRollback filling(filling_, true);
    const store::DiveInHand inHand;
    if (!showDives()) {
        Timer3_.setEnabled(true);
        return;
    }
    if (!checkDives()) {
        return;
    }
    tell(QString());
    chooseOnly(1);
    MSFlexGrid1_->setTopRow(1);
}

/// Reads the dives into the grid. False when there are none.
bool rbmain::showDives() {
    MSFlexGrid1_->clearColours();
    faulty_.clear();
    faultyDives_.clear();
    clickedRow_ = 0;
    clicks_.clear();
    divecount_ = 0;
    ListedDives list;
    try {
        list = readdives(store(), sortnumber(sortkey_), process().depthunit, downward_);
        unit_ = process().depthunit;
    } catch (const platform::StoreError& error) {
        if (storeFault_.isEmpty()) {
            storeFault_ = error.text();
        }
    }
    MSFlexGrid1_->setFontSize(kFontPoints);
    const int count = static_cast<int>(list.rows.size());
    moving_ = true;
    MSFlexGrid1_->setRows(1 + count);
    moving_ = false;
    if (count == 0) {
        refreshStrip();
        return false;
    }
    const int columns = static_cast<int>(list.headers.size());
    MSFlexGrid1_->setCols(columns);
    for (int col = 0; col < columns; ++col) {
        MSFlexGrid1_->setText(0, col, list.headers.at(col));
        MSFlexGrid1_->setColumnWidthTwips(col, list.widths[static_cast<size_t>(col)]);
        MSFlexGrid1_->setColumnAlignment(col, list.figures[static_cast<size_t>(col)] ? Qt::AlignRight
                                                                                     : Qt::AlignLeft);
    }
    for (int row = 1; row <= count; ++row) {
        MSFlexGrid1_->setRowTexts(row, std::move(list.rows[static_cast<size_t>(row) - 1]));
    }
    showSort();
    divecount_ = count;
    faulty_.assign(static_cast<size_t>(count) + 1, false);
    return true;
}

void rbmain::takeUnit() {
    if (unit_ != process().depthunit) {
        takeTexts();
    }
}

void rbmain::takeTexts() {
    if (filling_ || divecount_ == 0) {
        return;
    }
    ListedDives list;
    if (!platform::skipErrors(
            [&] { list = readdives(store(), sortnumber(sortkey_), process().depthunit, downward_); })) {
        return;
    }
    unit_ = process().depthunit;
    QHash<QString, QStringList> texts;
    for (QStringList& cells : list.rows) {
        const QString diveid = cells.value(0);
        texts.insert(diveid, std::move(cells));
    }
    for (int row = 1; row <= divecount_; ++row) {
        const auto cells = texts.constFind(MSFlexGrid1_->text(row, 0));
        for (int col = 0; cells != texts.constEnd() && col < MSFlexGrid1_->cols(); ++col) {
            if (const QString text = cells->value(col); text != MSFlexGrid1_->text(row, col)) {
                MSFlexGrid1_->setText(row, col, text);
            }
        }
    }
    showStrip();
}

/// Runs the validators over all rows. False when the screen was unloaded meanwhile.
bool rbmain::checkDives() {
    QElapsedTimer sincePainting;
    sincePainting.start();
    const auto checked = [this, &sincePainting](int row, bool good) {
        if (!good) {
            MSFlexGrid1_->setRowColours(row, platform::toQColor(platform::kToldRed), {});
            faulty_[static_cast<size_t>(row)] = true;
            noteFault(MSFlexGrid1_->text(row, 0));
        }
        if (isVisible() && sincePainting.elapsed() >= kPaintEveryMilliseconds) {
            tell(QStringLiteral("Checking dive %1 of %2")
                     .arg(QString::number(row), QString::number(divecount_)));
            if (!paintPending()) {
                return false;
            }
            sincePainting.restart();
        }
        return true;
    };
    return checkdives(
        store(), platform::ProgramFolder::current(), divecount_,
        [this](int row) {
            return ListedDive{MSFlexGrid1_->text(row, 0), MSFlexGrid1_->text(row, kNameColumn)};
        },
        checked);
}

/// Serves painting alone. False when the screen was unloaded meanwhile.
bool rbmain::paintPending() {
    const platform::TickHold hold;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
    return !isUnloaded() && !platform::allWaitsEnd();
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
