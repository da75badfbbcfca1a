#include "gas/screens/changespanel.h"

#include "platform/look/look.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace benthor::gas {

namespace {

constexpr int kLeastList = 60;

QString unread() {
    return QStringLiteral("not read");
}

} // namespace

ChangesPanel::ChangesPanel(QWidget* parent)
    : QWidget(parent)
    , head_(new QLabel)
    , table_(new QTableWidget(0, 3)) {
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase, look::spaceSmall);
    down->setSpacing(look::spaceTight);
    head_->setWordWrap(true);
    head_->setTextFormat(Qt::PlainText);
    table_->setHorizontalHeaderLabels(
        {QStringLiteral("Setting"), QStringLiteral("In the device"), QStringLiteral("After an update")});
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(look::scaled(22));
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    table_->setFont(look::caption());
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionMode(QAbstractItemView::NoSelection);
    table_->setFocusPolicy(Qt::NoFocus);
    table_->setAccessibleName(QStringLiteral("What an update changes"));
    table_->setMinimumHeight(look::scaled(kLeastList));
    down->addWidget(head_);
    down->addWidget(table_, 1);
}

/// Whatever room there is, the words are read as a whole, and the list has the rest.
bool ChangesPanel::event(QEvent* event) {
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) {
        const int needed = head_->heightForWidth(contentsRect().width() - 2 * look::spaceBase);
        const QMargins around = layout()->contentsMargins();
        const int rest = height() - around.top() - needed - layout()->spacing() - around.bottom();
        const int list = std::clamp(rest, 0, look::scaled(kLeastList));
        if (needed != head_->minimumHeight() || list != table_->minimumHeight()) {
            head_->setMinimumHeight(needed);
            table_->setMinimumHeight(list);
        }
    }
    return done;
}

QString ChangesPanel::heading(bool read, bool goes) const {
    return !goes   ? QStringLiteral("Nothing goes out: the reason stands beside Update.")
           : !read ? QStringLiteral("The device has not reported its setup: none of these was read from it.")
           : changes_ == 0
               ? QStringLiteral("The device has what stands here.")
               : QStringLiteral("An update changes %1 of what the device reported.").arg(changes_);
}

void ChangesPanel::show(const QString& device, const QString& text, int warnings) {
    const QString state = device + QLatin1Char('\n') + text + QString::number(warnings);
    if (state == shown_) {
        return;
    }
    shown_ = state;
    const bool goes = !text.isEmpty();
    const QList<SetupChange> changes = goes ? setupchanges(device, text) : QList<SetupChange>();
    changes_ = static_cast<int>(changes.size());
    QString words = heading(isReport(device), goes);
    if (goes && warnings > 0) {
        words += warnings == 1 ? QStringLiteral(" There is a warning beside Update.")
                               : QStringLiteral(" There are %1 warnings beside Update.").arg(warnings);
    }
    head_->setText(words);
    look::setInk(head_, goes && warnings == 0 ? look::Ink::Text : look::Ink::Bad);
    table_->setRowCount(changes_);
    for (int row = 0; row < changes_; ++row) {
        const SetupChange& change = changes.at(row);
        const std::array<QString, 3> cells{change.setting, change.before.isEmpty() ? unread() : change.before,
                                           change.after};
        for (int col = 0; col < 3; ++col) {
            auto* item = new QTableWidgetItem(cells[static_cast<size_t>(col)]);
            item->setToolTip(item->text());
            table_->setItem(row, col, item);
        }
    }
}

} // namespace benthor::gas
