#include "gas/screens/changespanel.h"

#include "platform/look/look.h"

#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace benthor::gas {

namespace {

QString unread() {
    return QStringLiteral("not read");
}

} // namespace

ChangesPanel::ChangesPanel(QWidget* parent)
    : QWidget(parent)
    , head_(new QLabel)
    , table_(new QTableWidget(0, 3))
    , source_(look::makeCaption(QString())) {
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase, look::spaceSmall);
    down->setSpacing(look::spaceTight);
    head_->setWordWrap(true);
    source_->setWordWrap(true);
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
    table_->setMinimumHeight(look::scaled(60));
    down->addWidget(head_);
    down->addWidget(table_, 1);
    down->addWidget(source_);
}

void ChangesPanel::show(const QString& device, const QString& text, const QStringList& warnings,
                        const QString& source) {
    const QString state = device + QLatin1Char('\n') + text + warnings.join(QLatin1Char('\n')) + source;
    if (state == shown_) {
        return;
    }
    shown_ = state;
    const QList<SetupChange> changes = setupchanges(device, text);
    changes_ = static_cast<int>(changes.size());
    const bool read = device.size() >= kPositionOfY;
    QString words =
        !read ? QStringLiteral("The device has not reported its setup: none of these was read from it.")
        : changes.isEmpty()
            ? QStringLiteral("The device has what stands here.")
            : QStringLiteral("An update changes %1 of what the device reported.").arg(changes.size());
    for (const QString& warning : warnings) {
        words += QStringLiteral("\nLook twice: ") + warning;
    }
    head_->setText(words);
    look::setInk(head_, warnings.isEmpty() ? look::Ink::Text : look::Ink::Bad);
    source_->setText(source);
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
