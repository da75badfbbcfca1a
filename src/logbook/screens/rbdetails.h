#pragma once

#include "logbook/details.h"
#include "platform/screen/screen.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;

namespace benthor::look {
class NumberLabel;
}

namespace benthor::logbook {

class PictureTile;

/// One dive: what the device said of it, and what the diver adds. Whichever way the screen is left, what
/// stands on it is stored.
class rbdetails : public platform::Screen {
    Q_OBJECT

public:
    rbdetails();

    /// The dive that the screen was loaded with; empty when there was none.
    QString diveid() const { return diveid_; }

signals:
    void diveViewWanted(); ///< the screen is to be unloaded and the dive screen shown
    void captureWanted();  ///< on the way out, before the dive is stored

protected:
    void loading() override;
    void unloading() override;
    QSize firstSize() const override { return {1180, 760}; }

private:
    // layout
    void buildMenus();
    QWidget* buildBar();
    QWidget* buildDevice();
    QWidget* buildDiver();
    QWidget* buildBuddies();
    QWidget* buildPictures();
    QPlainTextEdit* notes(const char* name);

    // events, named for their controls
    void cmdSave_click();
    void FormPrint();
    void Cmdcancel_click();
    void cmdadd_click();
    void cmdremove_click();
    void Image1_click(int index);

    void show(const DiveDetails& details);
    void showPickLists();
    DiverAdds edited() const;
    void saveOrAsk();
    void tell(const QString& quietLine);

    QString diveid_;
    std::array<look::NumberLabel*, 10> device_{};
    QLabel* depthcaption_ = nullptr;
    QLabel* quietLine_ = nullptr;
    QLineEdit* Txtdiver_ = nullptr;
    QLineEdit* txtlocation_ = nullptr;
    QLineEdit* txtsuit_ = nullptr;
    QComboBox* Cbodepartment_ = nullptr;
    QComboBox* Cbosite_ = nullptr;
    QComboBox* cbowhether_ = nullptr;
    QComboBox* cbobuddy_ = nullptr;
    QListWidget* List1_ = nullptr;
    QPlainTextEdit* txtdivenote_ = nullptr;
    QPlainTextEdit* txtsitenote_ = nullptr;
    QPlainTextEdit* txtcomments_ = nullptr;
    std::array<PictureTile*, kPictures> tiles_{};
};

} // namespace benthor::logbook
