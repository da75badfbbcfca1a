#pragma once

#include "guides/guide.h"
#include "platform/screen/screen.h"

class QCheckBox;
class QLabel;
class QPushButton;

namespace benthor::guides {

/// The guide that a new user is met by, in four steps. Its first load in a process puts the store right,
/// whether the guide is wanted or not; where the store says that it is not, it closes itself at once.
class frmGetS : public platform::Screen {
    Q_OBJECT

public:
    /// `maintain`: this copy of the program is the one that may touch the store. `begun`: what the start may
    /// have done ahead; it outlives this.
    explicit frmGetS(bool maintain, class StoreStart* begun = nullptr);

    int step() const { return step_; }

protected:
    void loading() override;
    QSize firstSize() const override { return {720, 440}; }
    void changeEvent(QEvent* event) override;

private:
    void buildWords(class GuideCard& card);
    void buildFoot(class GuideCard& card);
    void maintainStore();
    void showStep();
    void Command1_click(StepButton button);
    void Command2_click();
    void Check1_toggled(bool checked);

    bool maintain_;
    StoreStart* begun_;
    int step_ = 0;
    QLabel* picture_ = nullptr;
    QLabel* Label1_ = nullptr;
    QLabel* Label2_ = nullptr;
    QLabel* Label4_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
};

} // namespace benthor::guides
