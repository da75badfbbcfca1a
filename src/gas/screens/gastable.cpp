#include "gas/screens/gastable.h"

#include "gas/screens/numberbox.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/screen/toldqcolor.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QPainter>
#include <QRadioButton>

namespace benthor::gas {

namespace {

constexpr int kRowHeight = 32;
constexpr int kBoxHeight = 28; // the edges of one row's boxes stand off those of the next
constexpr int kHeadHeight = 29;
constexpr int kFirstMark = 6; // column
constexpr int kCellWidth = 42;
constexpr int kDepthWidth = 50; // a depth may come with its tenth
constexpr int kAccentEdge = 3;

QString arrayName(const char* name, int index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

/// Of a gas that is not active; it reads on every told ground, in high contrast, too.
constexpr QRgb kRestingInk = 0x405265;

/// A cell of a told colour keeps dark words in both themes.
void paintCell(QLineEdit& cell, platform::ToldColour told) {
    const QColor ground = platform::toQColor(told);
    QPalette palette = cell.palette();
    if (palette.color(QPalette::Active, QPalette::Base) == ground) {
        return;
    }
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::Base, ground);
        palette.setColor(group, QPalette::Text,
                         group == QPalette::Disabled ? QColor(kRestingInk) : QColor(Qt::black));
    }
    cell.setPalette(palette);
}

void showText(QLineEdit& box, const QString& text) {
    if (box.text() != text) {
        const int at = box.cursorPosition();
        box.setText(text);
        box.setCursorPosition(std::min<int>(at, static_cast<int>(text.size())));
    }
}

} // namespace

GasTable::GasTable(QWidget* parent)
    : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(look::spaceSmall, look::spaceTight, look::spaceTight, look::spaceTight);
    grid->setHorizontalSpacing(3);
    grid->setVerticalSpacing(0);
    buildHead();
    for (int row = 0; row < kGases; ++row) {
        buildRow(row);
    }
    grid->setColumnStretch(0, 1);
}

void GasTable::buildHead() {
    auto* grid = static_cast<QGridLayout*>(layout());
    struct Head {
        const char* caption;
        const char* tip;
    };
    static constexpr std::array<Head, 8> kHeads{
        {{"Gas Idx", "Gas index number as referenced in KD"},
         {"O2", ""},
         {"He", ""},
         {"MODm", ""},
         {"PPO2", ""},
         {"EAND", "Equivalent Air Narcossis depth"},
         {"Active",
          "Gas active indicates dive is to be used in dive, and willbe used in decompression look ahead."},
         {"Start", "Select gas used to start dive with"}}};
    for (size_t col = 0; col < kHeads.size(); ++col) {
        QLabel* head = look::makeCaption(QLatin1String(kHeads[col].caption));
        head->setToolTip(QLatin1String(kHeads[col].tip));
        if (col >= kFirstMark) { // these fill their columns
            head->setContentsMargins(look::spaceTight, 0, look::spaceTight, 0);
        }
        head->setAlignment(col == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
        grid->addWidget(head, 0, static_cast<int>(col));
        if (col == 3) {
            Label4_ = head;
            Label4_->setObjectName(QStringLiteral("Label4(0)"));
        }
    }
    grid->setRowMinimumHeight(0, look::scaledRow(kHeadHeight));
}

NumberBox* GasTable::cell(const char* name, int row, Cell kind, const char* tip) {
    auto* box = new NumberBox(QLatin1String(tip));
    box->setObjectName(arrayName(name, row));
    static const QMap<Cell, QString> kinds{{Cell::O2, QStringLiteral("O2 per cent")},
                                           {Cell::He, QStringLiteral("He per cent")},
                                           {Cell::MOD, QStringLiteral("MOD")},
                                           {Cell::PPO2, QStringLiteral("PPO2")}};
    box->setAccessibleName(QStringLiteral("%1 of gas %2").arg(kinds.value(kind)).arg(row));
    box->setAlignment(Qt::AlignRight);
    box->setFixedSize(look::scaled(kind == Cell::MOD ? kDepthWidth : kCellWidth),
                      look::scaledRow(kBoxHeight));
    box->setFont(look::numbers(13));
    if (kind == Cell::PPO2) {
        // Rewritten with two places at each change: taken when it is finished, not at each key.
        connect(box, &QLineEdit::editingFinished, this, [this, box, row] { takeTyped(*box, row); });
    } else {
        connect(box, &QLineEdit::textEdited, this,
                [this, kind, row](const QString& text) { emit cellEdited(kind, row, text); });
    }
    return box;
}

void GasTable::takeTyped(NumberBox& box, int row) {
    if (box.isModified()) {
        box.setModified(false);
        emit cellEdited(Cell::PPO2, row, box.text());
    }
}

void GasTable::finishTyping() {
    for (size_t row = 0; row < rows_.size(); ++row) {
        takeTyped(*rows_[row].Text4, static_cast<int>(row));
    }
}

bool GasTable::isHalfTyped() const {
    return std::any_of(rows_.begin(), rows_.end(), [](const Row& row) { return row.Text4->isModified(); });
}

void GasTable::buildRow(int row) {
    static constexpr char kMixTip[] = "Enter percentage of each gas component";
    Row& one = rows_[static_cast<size_t>(row)];
    one.Label1 = new look::ClickableLabel;
    one.Label1->setObjectName(arrayName("Label1", row));
    one.Label1->setFocusPolicy(Qt::NoFocus);
    connect(one.Label1, &look::ClickableLabel::clicked, this, [this, row] { emit rowChosen(row); });
    one.Text1 = cell("Text1", row, Cell::O2, kMixTip);
    one.Text2 = cell("Text2", row, Cell::He, kMixTip);
    one.Text3 = cell("Text3", row, Cell::MOD, "");
    one.Text4 = cell("Text4", row, Cell::PPO2, "Partial Pressure of oxygen at MOD");
    one.lblEan = new QLabel;
    one.lblEan->setObjectName(arrayName("lblEan", row));
    one.lblEan->setAccessibleName(QStringLiteral("EAND of gas %1").arg(row));
    one.lblEan->setToolTip(QStringLiteral("Equivalent Air Narcossis depth"));
    one.lblEan->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    one.lblEan->setFont(look::numbers(13));
    one.lblEan->setMinimumWidth(look::scaled(36));
    one.Check1 = new QCheckBox;
    one.Check1->setObjectName(arrayName("Check1", row));
    one.Check1->setAccessibleName(QStringLiteral("Gas %1 active").arg(row));
    one.Check1->setToolTip(QStringLiteral(
        "Select gases to be used on this dive. Allselected gasses will be used in decompression look "
        "ahead, so only select actual gasses that will be used."));
    connect(one.Check1, &QCheckBox::clicked, this, [this, row](bool on) { emit activeClicked(row, on); });
    one.Option1 = new QRadioButton;
    one.Option1->setObjectName(arrayName("Option1", row));
    one.Option1->setAccessibleName(QStringLiteral("Start with gas %1").arg(row));
    one.Option1->setToolTip(QStringLiteral("Select gas used to start dive with"));
    connect(one.Option1, &QRadioButton::clicked, this, [this, row] { emit startClicked(row); });
    auto* grid = static_cast<QGridLayout*>(layout());
    int col = 0;
    for (QWidget* widget : std::initializer_list<QWidget*>{one.Label1, one.Text1, one.Text2, one.Text3,
                                                           one.Text4, one.lblEan}) {
        grid->addWidget(widget, row + 1, col++);
    }
    grid->addWidget(one.Check1, row + 1, col++, Qt::AlignCenter);
    grid->addWidget(one.Option1, row + 1, col, Qt::AlignCenter);
    grid->setRowMinimumHeight(row + 1, look::scaledRow(kRowHeight));
}

void GasTable::show(const GasPlan& plan, const QList<WrongCell>& wrong) {
    Label4_->setText(plan.headfeet ? QStringLiteral("MODft") : QStringLiteral("MODm"));
    for (size_t i = 0; i < rows_.size(); ++i) {
        showRow(plan, i);
    }
    showWrong(wrong);
    if (current_ != plan.currentgasrow) {
        current_ = plan.currentgasrow;
        update();
    }
}

void GasTable::showRow(const GasPlan& plan, size_t i) {
    const GasRow& gas = plan.rows[i];
    const Row& row = rows_[i];
    const bool current = plan.currentgasrow == static_cast<int>(i);
    row.Label1->setText(gas.name);
    row.Label1->setInk(current ? look::Ink::Accent : look::Ink::Text);
    showText(*row.Text1, gas.O2);
    showText(*row.Text2, gas.He);
    showText(*row.Text3, gas.MOD);
    // Half typed it stays, also while the diver looks into another window.
    if (!row.Text4->isModified()) {
        showText(*row.Text4, gas.PPO2);
    }
    for (NumberBox* box : {row.Text1, row.Text2, row.Text3}) {
        box->setEnabled(gas.cellsEnabled);
    }
    paintCell(*row.Text1, kLightCyan);
    paintCell(*row.Text2, gas.HeColour);
    paintCell(*row.Text3, gas.pressureColour);
    paintCell(*row.Text4, gas.pressureColour);
    row.lblEan->setText(gas.EAND);
    look::setInk(row.lblEan, gas.active ? look::Ink::Text : look::Ink::Quiet);
    row.Check1->setChecked(gas.active);
    row.Check1->setEnabled(gas.activeEnabled);
    row.Option1->setChecked(plan.start == static_cast<int>(i));
    row.Option1->setEnabled(gas.startEnabled);
}

void GasTable::showWrong(const QList<WrongCell>& wrong) {
    for (size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        const auto why = [&wrong, i](Cell cell) {
            for (const WrongCell& one : wrong) {
                if (one.cell == cell && one.row == static_cast<int>(i)) {
                    return one.why;
                }
            }
            return QString();
        };
        row.Text1->setWrong(why(Cell::O2));
        row.Text2->setWrong(why(Cell::He));
        row.Text3->setWrong(why(Cell::MOD));
        row.Text4->setWrong(why(Cell::PPO2));
    }
}

/// The gas in hand lies on the soft accent.
void GasTable::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    if (current_ < 0) {
        return;
    }
    const QRect row = static_cast<QGridLayout*>(layout())->cellRect(current_ + 1, 0);
    const look::Tokens& token = look::tokens();
    QPainter painter(this);
    const QRect band(0, row.top(), width(), row.height());
    painter.fillRect(band, token.accentsoft);
    painter.fillRect(QRect(0, band.top(), kAccentEdge, band.height()), token.accent);
}

} // namespace benthor::gas
