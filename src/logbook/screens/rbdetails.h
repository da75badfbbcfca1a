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

/// One dive: what the device said of it, and what the diver adds. It is that of `currentdiveid` when the
/// screen loads, and stays it whatever is in hand afterwards: nothing is stored into another dive's row.
/// Whichever way the screen is left, what stands on it is stored.
class rbdetails : public platform::Screen {
    Q_OBJECT

public:
    rbdetails();

    /// The dive that the screen was loaded with; empty when there was none.
    const store::DiveIdentity& dive() const { return dive_; }

    /// Its dive is about to be deleted: stores what was typed, without a box. Returns why that failed; empty
    /// when it did not.
    QString saveQuietly();
    /// What the last quiet save told beside "Saved": "; with its single quote not kept ...".
    const QString& besides() const { return besides_; }
    /// Whether something was typed that is not stored.
    bool hasTyped() const;
    /// Shows what the store has of its dive by now, in the place of what stood there.
    void takeStored();
    /// Its dive is deleted: closes, with nothing to store and no picture to take.
    void closeForDeletion();

signals:
    void saved(const platform::StoreSpan& span); ///< the store has what stands here
    void diveViewWanted();                       ///< the screen is to be unloaded and the dive screen shown
    void captureWanted();                        ///< on the way out, before the dive is stored

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void loading() override;
    void unloading() override;
    void keeping() override;
    QSize firstSize() const override { return {1180, 760}; }

private:
    // layout
    void buildMenus();
    QWidget* buildBar();
    QWidget* buildDevice();
    QWidget* buildDiver();
    QWidget* buildBuddies();
    QWidget* buildPictures();
    QPlainTextEdit* notes(const char* name, QPlainTextEdit* box = nullptr);

    // events, named for their controls
    void cmdSave_click();
    void FormPrint();
    void Cmdcancel_click();
    void cmdadd_click();
    void cmdremove_click();
    void cbobuddy_return();
    void takeTypedBuddy();
    void typed();
    void connectTyping();
    void givePictureUp(int index);
    void Image1_click(int index);

    void show(const DiveDetails& details);
    void showPickLists();
    DiverAdds edited() const;
    void saveOrAsk();
    void noteSaved(const platform::StoreSpan& span);
    void rescue(const QString& reason);
    void takeInHand() const;
    void tell(const QString& quietLine);

    QString besides_;
    store::DiveIdentity dive_;
    DiverAdds stored_;        ///< what the store has of it, as it stands on the screen
    QString rescued_;         ///< name of the text that holds what could not be stored; empty: there is none
    bool buddyTyped_ = false; ///< a name was typed by hand and not added yet
    bool deleted_ = false;    ///< the dive is gone from the store
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
