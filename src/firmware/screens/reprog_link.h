#pragma once

#include "firmware/reprogstate.h"
#include "firmware/screens/firmwareneighbours.h"
#include "link/screens/linklines.h"
#include "platform/screen/screen.h"

#include <functional>
#include <memory>

class QAction;
class QCheckBox;
class QLabel;
class QMenu;

namespace benthor::link {
class RawText;
}

namespace benthor::look {
class ColumnArea;
}

namespace benthor::platform {
class TickTimer;
}

namespace benthor::firmware {

class AdvancedCard;
class ImageCard;
class KeyRow;
class ProgressCard;
class StepsPath;

/// The firmware screen: an image goes to a device that is in its reprogramming mode, and what the device says
/// is followed to the verdict.
class ReProg_Link : public platform::Screen {
    Q_OBJECT

public:
    ReProg_Link(FirmwareNeighbours& neighbours, const link::LinkLines& lines);
    ~ReProg_Link() override;

    const ReprogState& state() const { return state_; }
    /// The image at that path, as if it had been chosen in the dialog. Nothing is sent.
    void openImage(const QString& path);
    void Timer1_tick();

protected:
    void loading() override;
    void unloading() override;
    QSize firstSize() const override { return {1120, 744}; }
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Host;
    friend class Host;

    // reprog_link_layout.cpp
    void buildMenus();
    void buildBody();
    QWidget* buildHead();
    QWidget* buildBanner();
    QWidget* buildWords();
    void connectControls();
    QMenu* menu(const char* name, const char* caption);
    QAction* entry(QMenu* menu, const char* name, const char* caption, const std::function<void()>& work);

    // reprog_link.cpp
    void sync() override;
    void syncFiles();
    void fieldEdited(const QString& field, const QString& text);
    void fileTaken(const QString& name);
    void mnuAdvanced_click();

    // reprog_link_rehearsal.cpp
    void mnuRehearse_click();
    void startRehearsal();
    void endRehearsal();

    FirmwareNeighbours& neighbours_;
    std::unique_ptr<Host> host_;
    ReprogState state_;
    QString realPort_; ///< the port to come back to behind a rehearsal

    QWidget* banner_ = nullptr;
    QLabel* bannerWords_ = nullptr;
    StepsPath* path_ = nullptr;
    ImageCard* image_ = nullptr;
    ProgressCard* progress_ = nullptr;
    AdvancedCard* advanced_ = nullptr;
    look::ColumnArea* advancedArea_ = nullptr; ///< scrolls it where the window is low
    KeyRow* keys_ = nullptr;
    link::RawText* Text4_ = nullptr;
    QLabel* length_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    QAction* mnuAdvanced_ = nullptr;
    QAction* mnuAutoRefresh_ = nullptr;
    QAction* mnuRehearse_ = nullptr;
    platform::TickTimer* Timer1_ = nullptr;
};

} // namespace benthor::firmware
