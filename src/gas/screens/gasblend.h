#pragma once

#include "gas/exchange.h"
#include "gas/screens/gastable.h"
#include "link/readings.h"
#include "platform/screen/screen.h"

class QAction;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

namespace benthor::look {
class ClickableLabel;
class ColumnArea;
class NoticeBand;
class StatusChip;
} // namespace benthor::look

namespace benthor::platform {
class TickTimer;
}

namespace benthor::gas {

class ChangesPanel;
class GasGraph;
class ReadingsPanel;
class SettingsForm;

/// What the gas screen asks of the link. The house answers; a test may.
class GasNeighbours {
public:
    virtual ~GasNeighbours() = default;

    /// The link; its screen is loaded hidden for it when it is not loaded.
    virtual link::SetupLink& setupLink() = 0;
    /// Brings the link's screen forward, on the face for sending.
    virtual void showLinkForSending() = 0;
    virtual void showLink() = 0;
};

/// The gas plan and the device's settings: what the device has, what the diver makes of it, and the way back.
class GasBlend : public platform::Screen {
    Q_OBJECT

public:
    explicit GasBlend(GasNeighbours& neighbours);
    ~GasBlend() override;

    /// What the device sent as its setup.
    void receiveSetup(const QByteArray& text);
    /// A line of live readings.
    void receiveReadings(const link::Readings& readings);

    /// A setup from a file that was opened from outside, read as Open reads one. What was typed and is
    /// replaced by it can be brought back.
    void openFile(const QString& path);
    /// Whether something stands here that the diver typed and that closing the screen keeps in part only.
    bool holdsTyped() const;
    /// A box over this screen.
    void say(const QString& text);
    /// Whether a body that the link is about to send as a setup may leave. Where it may not, the reason has
    /// been told, and this screen is in front.
    bool setupMayGo(const link::SetupBody& body);
    /// Update: what this screen shows goes to the device, or the reason is told. A screen that cannot be seen
    /// is shown.
    void Command1_click();

    const GasPlan& plan() const { return plan_; }
    void Timer5_tick();

protected:
    void loading() override;
    void unloading() override;
    void keeping() override;
    QSize firstSize() const override;
    std::optional<QPoint> ownPlace() const override { return QPoint(197, 51); }

private:
    // gasblend_layout.cpp
    void buildMenus();
    QAction* entry(class QMenu* menu, const char* name, const char* caption,
                   const std::function<void()>& work);
    void buildBody();
    void layBody();
    look::NoticeBand* band(const char* name);
    QWidget* buildFoot();
    QWidget* buildRefresh();
    QWidget* buildDebug();
    void buildHidden();
    QPlainTextEdit* rawText(QWidget* parent, const char* name, const char* caption);

    // gasblend.cpp
    void sync() override;
    void syncDebug();
    void syncLook();
    void syncReplaced();
    void syncRefresh();
    void cellEdited(Cell cell, int row, const QString& text);
    void refresh();
    void showDebug(bool shown);
    void mnuOpen_click();
    void mnuSave_click();
    void Command2_click();
    void sendBy(const std::function<Update()>& update);
    DeviceSetup device() const;

    GasNeighbours& neighbours_;
    GasPlan plan_;
    GasShown shown_;
    QString reported_;        ///< setup that the device last sent
    bool unreadable_ = false; ///< of the device at the last tick
    bool refreshrests_ = false;
    Say say_;
    Ask agree_;

    GasTable* table_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    GasGraph* graph_ = nullptr;
    ReadingsPanel* readings_ = nullptr;
    ChangesPanel* changes_ = nullptr;
    SettingsForm* form_ = nullptr;
    look::ColumnArea* formArea_ = nullptr;
    look::ColumnArea* graphArea_ = nullptr;
    QWidget* leftSide_ = nullptr;
    QWidget* debug_ = nullptr;
    QPlainTextEdit* Text6_ = nullptr;
    QPlainTextEdit* Text7_ = nullptr;
    QPlainTextEdit* Text8_0_ = nullptr;
    QPlainTextEdit* Text8_1_ = nullptr;
    look::NoticeBand* look_ = nullptr;     ///< what keeps the setup back, or deserves a second look
    look::NoticeBand* replaced_ = nullptr; ///< what was typed has been replaced
    QPushButton* refresh_ = nullptr;
    look::ClickableLabel* Picture1_ = nullptr;
    look::ClickableLabel* Label15_ = nullptr;
    std::vector<QLabel*> Text15_; ///< one for each letter of the settings
    look::StatusChip* Label7_ = nullptr;
    QLabel* Label14_ = nullptr;
    QLabel* Label20_ = nullptr;
    QLabel* Label22_ = nullptr;
    QAction* bringBack_ = nullptr;
    QAction* mnuMeters_ = nullptr;
    QAction* mnuFeet_ = nullptr;
    QAction* mnuDebug_ = nullptr;
    QAction* mnuDebugOff_ = nullptr;
    platform::TickTimer* Timer5_ = nullptr;
};

} // namespace benthor::gas
