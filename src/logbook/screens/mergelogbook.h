#pragma once

#include "logbook/merge.h"
#include "platform/screen/screen.h"

#include <memory>

class QLabel;
class QPushButton;
class QTreeView;

namespace benthor::logbook {

class MergeModel;

/// Brings dives of another logbook into this one: what comes is chosen from a list of all of its dives.
class mergelogbook : public platform::Screen {
    Q_OBJECT

public:
    mergelogbook();
    ~mergelogbook() override;

    /// Stores what is typed of dives elsewhere, before anything is merged; returns why that failed, or
    /// nothing.
    void setTypedKeeper(std::function<QString()> keeper) { typedKeeper_ = std::move(keeper); }

    /// Depths are shown in the unit in hand.
    void takeUnit();
    /// Shows the dives of the logbook at `path`, a program folder or a store.
    void showLogbook(const QString& path);

signals:
    void merged(const MergeResult& result); ///< the screen goes

protected:
    void loading() override;
    QSize firstSize() const override { return {1000, 640}; }

private:
    void buildLayout();
    QWidget* buildHead();
    QWidget* buildFoot();
    void cmdotherfolder_click();
    void cmdotherstore_click();
    void cmdmerge_click();
    void cmdclosemerge_click();
    bool mayMerge();
    std::unique_ptr<OtherLogbook> openOther(const QString& path);
    void reopenOther();
    std::optional<std::vector<MergeDive>> readPlan();
    void takePlan(std::vector<MergeDive> dives);
    void doMerge();
    void showChoice();
    void noDives(const QString& note);

    std::function<QString()> typedKeeper_;
    std::unique_ptr<OtherLogbook> other_;
    MergeModel* model_ = nullptr;
    QTreeView* treemerge_ = nullptr;
    QLabel* lblotherlogbook_ = nullptr;
    QLabel* lblmerge_ = nullptr;
    QPushButton* cmdmerge_ = nullptr;
};

} // namespace benthor::logbook
