#pragma once

#include <QObject>

class QTreeView;

namespace benthor::look {

/// A column of a tree that takes what the others leave of its width, and never less than what its words need:
/// where the others leave less the tree scrolls. Belongs to the tree.
class StretchedColumn : public QObject {
    Q_OBJECT

public:
    /// `least`: pixels of the layout at the usual font.
    StretchedColumn(QTreeView* tree, int column, int least);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QTreeView* tree_;
    int column_;
    int least_;
};

} // namespace benthor::look
