#pragma once

#include "link/linkstate.h"
#include "platform/grid/flexmodel.h"
#include "platform/look/widgets/card.h"

class QLabel;

namespace benthor::platform {
class FlexGrid;
}

namespace benthor::look {
class CommandButton;
}

namespace benthor::link {

/// The device's directory: the grid `Mgrid` with Refresh and a key to its colours in its head.
class DirectoryCard : public look::Card {
    Q_OBJECT

public:
    explicit DirectoryCard(QWidget* parent = nullptr);

    void sync(const Directory& directory);
    look::CommandButton* refresh() const { return cmdstore_; }
    platform::FlexGrid* grid() const { return Mgrid_; }

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* buildHead();
    void setUpColumns(int cols);
    void takeTheme();
    platform::RowSign signOf(int row) const;

    QLabel* count_;
    look::CommandButton* cmdstore_;
    platform::FlexGrid* Mgrid_;
    std::vector<DirectoryRow> shown_; ///< as the grid shows it
    QIcon selectedSign_;
    QIcon storedSign_;
};

} // namespace benthor::link
