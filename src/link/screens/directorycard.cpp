#include "link/screens/directorycard.h"

#include "link/screens/breakingrow.h"
#include "link/screens/showing.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/look/widgets/commandbutton.h"
#include "platform/screen/toldqcolor.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>
#include <QVBoxLayout>

namespace benthor::link {

namespace {

constexpr int kRowTwips = 300;
constexpr double kCellPoints = 8.5; // what a row of 20 pixels holds with room to spare
constexpr int kDateTwips = 1800;
constexpr int kNarrowTwips = 600; // the rest are as wide as what they show
constexpr int kStartCode = 1;
constexpr int kFirstNumber = 4;

QString emptyDirectory() {
    return QStringLiteral("No dives listed yet.\n\nPut the device into PC Link mode, with the infra-red "
                          "adapter or the cable on a serial port.\nOnce the status reads Connected its dives "
                          "are listed here by themselves; Refresh asks again.");
}

/// A colour of the rows in the key: always that colour, and edged, as it may be that of the ground, too.
class KeyBlock : public QWidget {
public:
    explicit KeyBlock(platform::ToldColour colour)
        : colour_(platform::toQColor(colour)) {
        setFixedSize(look::scaled(12), look::scaled(12));
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        painter.fillRect(rect(), look::tokens().edge);
        painter.fillRect(rect().adjusted(1, 1, -1, -1), colour_);
    }

private:
    QColor colour_;
};

} // namespace

DirectoryCard::DirectoryCard(QWidget* parent)
    : look::Card(parent)
    , count_(look::makeCaption(QString()))
    , cmdstore_(new look::CommandButton(QStringLiteral("Refresh"), QStringLiteral("refresh"),
                                        look::CommandButton::Kind::Small))
    , Mgrid_(named(new platform::FlexGrid, "Mgrid")) {
    cmdstore_->setNames("cmdstore", "Picture3", "Label10");
    cmdstore_->setToolTip(QStringLiteral("Reads the list of dives from the device again"));
    body()->setContentsMargins(1, 1, 1, 1);
    body()->setSpacing(0);
    body()->addWidget(buildHead());
    body()->addWidget(Mgrid_, 1);
    roundOff(Mgrid_);
    Mgrid_->setAccessibleName(QStringLiteral("Dives of the device"));
    Mgrid_->setFontSize(kCellPoints * look::fontScale());
    Mgrid_->setFigureFont(look::numbers(12));
    Mgrid_->setDefaultRowHeightPx(kRowTwips / 15);
    Mgrid_->setEmptyText(emptyDirectory());
    setUpColumns(1);
    Mgrid_->setRowSigns([this](int row) { return signOf(row); });
    takeTheme();
}

QWidget* DirectoryCard::buildHead() {
    auto* head = new QWidget;
    auto* around = new QVBoxLayout(head);
    around->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase, look::spaceSmall);
    auto* row = new BreakingRow(look::spaceSmall);
    around->addWidget(row);
    const auto part = [row](int stretch) {
        auto* made = new QWidget;
        auto* layout = new QHBoxLayout(made);
        layout->setContentsMargins({});
        layout->setSpacing(look::spaceSmall);
        row->add(made, stretch);
        return layout;
    };
    QHBoxLayout* title = part(1);
    title->addWidget(look::makeHeading(QStringLiteral("Dives of the device")));
    title->addWidget(count_);
    title->addStretch(1);
    QHBoxLayout* across = part(0);
    across->addStretch(1);
    across->addWidget(new KeyBlock(platform::kToldBlue));
    across->addWidget(look::makeCaption(QStringLiteral("selected")));
    across->addSpacing(look::spaceSmall);
    across->addWidget(new KeyBlock(platform::kToldYellow));
    across->addWidget(look::makeCaption(QStringLiteral("already in My Dives")));
    across->addSpacing(look::spaceSmall);
    across->addWidget(cmdstore_);
    return head;
}

/// Setting the number of columns anew forgets what they were told.
void DirectoryCard::setUpColumns(int cols) {
    Mgrid_->setCols(cols);
    // One column is the grid before its headings are laid.
    Mgrid_->horizontalHeader()->setVisible(cols > 1);
    for (int col = 0; col < cols; ++col) {
        Mgrid_->setColumnAlignment(col, col >= kFirstNumber ? Qt::AlignRight : Qt::AlignLeft);
        const bool date = col == kStartCode + 1 || col == kStartCode + 2;
        Mgrid_->setColumnWidthTwips(col, col == kStartCode ? 0 : (date ? kDateTwips : kNarrowTwips));
    }
}

void DirectoryCard::sync(const Directory& directory) {
    if (Mgrid_->cols() != directory.cols) {
        setUpColumns(directory.cols);
        shown_.clear();
    }
    const int rows = directory.rowCount();
    if (Mgrid_->rows() != rows) {
        const int before = Mgrid_->rows();
        Mgrid_->setRows(rows);
        shown_.resize(static_cast<size_t>(std::min(static_cast<int>(shown_.size()), rows)));
        for (int row = before; row < rows; ++row) {
            Mgrid_->setRowHeightTwips(row, kRowTwips);
        }
        showText(count_, rows > 1 ? QString::number(rows - 1) : QString());
    }
    bool signs = false;
    for (int row = 0; row < rows; ++row) {
        const auto at = static_cast<size_t>(row);
        const DirectoryRow& now = directory.rows[at];
        const bool fresh = at >= shown_.size();
        if (fresh || now.cells != shown_[at].cells) {
            for (int col = 0; col < directory.cols && col < DirectoryRow::columns; ++col) {
                Mgrid_->setText(row, col, now.cells.at(static_cast<size_t>(col)));
            }
        }
        if (fresh || now.mark != shown_[at].mark) {
            const bool blue = now.mark == RowMark::Selected;
            const QColor back = now.mark == RowMark::None
                                    ? QColor()
                                    : platform::toQColor(blue ? platform::kToldBlue : platform::kToldYellow);
            Mgrid_->setRowColours(row, back, blue ? platform::toQColor(platform::kToldWhite) : QColor(), 1);
            signs = true;
        }
    }
    shown_ = directory.rows;
    if (signs) {
        Mgrid_->refreshSigns();
    }
}

platform::RowSign DirectoryCard::signOf(int row) const {
    const RowMark mark =
        static_cast<size_t>(row) < shown_.size() ? shown_[static_cast<size_t>(row)].mark : RowMark::None;
    switch (mark) {
    case RowMark::Selected:
        return {selectedSign_, QStringLiteral("Selected for download")};
    case RowMark::Stored:
        return {storedSign_, QStringLiteral("Already in My Dives")};
    case RowMark::None:
        break;
    }
    return {};
}

void DirectoryCard::takeTheme() {
    const look::Tokens& token = look::tokens();
    Mgrid_->setGridColours(
        {token.surface, token.text, token.ground, token.textquiet, token.line, token.accent});
    selectedSign_ = look::icon(QStringLiteral("check"), token.text);
    storedSign_ = look::icon(QStringLiteral("database"), token.textquiet);
    Mgrid_->refreshSigns();
}

void DirectoryCard::changeEvent(QEvent* event) {
    look::Card::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        takeTheme();
    }
}

} // namespace benthor::link
