#pragma once

#include "platform/processes.h"
#include "platform/screen/screen.h"

#include <functional>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace benthor::firmware {

/// Who tells what runs and ends it: the machine, unless a test puts itself in its place.
struct ProcessSource {
    std::function<std::vector<platform::RunningProcess>()> list = platform::runningProcesses;
    std::function<platform::Ending(const platform::RunningProcess&)> end = platform::endProcess;
};

/// The list of running programs. Others that use the serial line disturb a device's programming; here the
/// user finds and ends them.
class RunProg : public platform::Screen {
    Q_OBJECT

public:
    explicit RunProg(ProcessSource source = {});

    /// Reads what runs now. The chosen process and the topmost in sight keep their places if they still run.
    void FillList();

protected:
    void loading() override;
    QSize firstSize() const override { return {480, 600}; }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildLayout();
    void buildList();
    QWidget* buildFoot();
    void addRow(const platform::RunningProcess& process);
    platform::RunningProcess processAt(int row) const;
    int rowOf(const platform::RunningProcess& process) const;
    int selectedRow() const;
    std::vector<platform::RunningProcess> fromTheTopmost() const;
    void showFilter();
    void takeShownRow();
    void List1_click();
    void Command2_click();

    ProcessSource source_;
    QListWidget* List1_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* Command2_ = nullptr;
    QLineEdit* filter_ = nullptr;
    QLabel* count_ = nullptr;
};

} // namespace benthor::firmware
