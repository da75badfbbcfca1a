#pragma once

#include "logbook/acts.h"
#include "platform/screen/screen.h"

class QLabel;
class QPushButton;
class QTreeWidget;

namespace benthor::logbook {

/// The dives that were deleted within the last thirty days: they are put back, or deleted for good.
class trash : public platform::Screen {
    Q_OBJECT

public:
    trash();

    /// Shows what is there by now; chosen dives stay chosen.
    void takeDives();

signals:
    void divesPutBack(const TurnedAct& turned); ///< the logbook has them
    void actsChanged();                         ///< what can be taken back is less by now

protected:
    void loading() override;
    QSize firstSize() const override { return {860, 560}; }

private:
    void buildLayout();
    QWidget* buildFoot();
    QPushButton* button(const char* name, const QString& caption, void (trash::*act)());
    std::vector<qint64> chosen() const;
    void showChoice();
    void cmdputback_click();
    void cmddeleteforgood_click();
    void cmdclosetrash_click();

    QTreeWidget* treetrash_ = nullptr;
    QLabel* lbltrash_ = nullptr;
    QPushButton* cmdputback_ = nullptr;
    QPushButton* cmddeleteforgood_ = nullptr;
};

} // namespace benthor::logbook
