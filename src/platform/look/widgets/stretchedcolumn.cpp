#include "platform/look/widgets/stretchedcolumn.h"

#include "platform/look/type.h"

#include <QEvent>
#include <QHeaderView>
#include <QTreeView>

namespace benthor::look {

StretchedColumn::StretchedColumn(QTreeView* tree, int column, int least)
    : QObject(tree)
    , tree_(tree)
    , column_(column)
    , least_(least) {
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(column, QHeaderView::Fixed);
    tree->viewport()->installEventFilter(this);
    connect(tree->header(), &QHeaderView::sectionResized, this, [this](int section) {
        if (section != column_) {
            fit();
        }
    });
}

bool StretchedColumn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        fit();
    }
    return QObject::eventFilter(watched, event);
}

void StretchedColumn::fit() {
    QHeaderView* const header = tree_->header();
    const int others = header->length() - header->sectionSize(column_);
    header->resizeSection(column_, std::max(scaled(least_), tree_->viewport()->width() - others));
}

} // namespace benthor::look
