#pragma once

#include "link/linkstate.h"
#include "platform/look/widgets/card.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace benthor::look {
class ClickableLabel;
class StatusChip;
} // namespace benthor::look

namespace benthor::link {

class LampRow;

/// Top of the link screen, the same on both faces: which face it is and the way to the other, how the link
/// stands, the port, the way out.
class LinkHead : public look::Pane {
    Q_OBJECT

public:
    explicit LinkHead(QWidget* parent = nullptr);

    void layFace(bool dive);
    void sync(const LinkState& link);
    /// While a dive comes neither port nor face can be changed.
    void setDownloading(bool downloading);

    look::ClickableLabel* swap() const { return Label13_; }
    look::ClickableLabel* menuScreen() const { return Label11_; }
    QLineEdit* port() const { return ComNum_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* buildStatus();
    QWidget* buildPort();

    QLabel* lblheading_;
    look::ClickableLabel* Label13_;
    look::StatusChip* AFLabel3_;
    LampRow* lamps_;
    QLabel* Label8_;
    QLabel* portCaption_;
    QLineEdit* ComNum_;
    QPushButton* Command6_;
    look::ClickableLabel* Label11_;
};

/// Foot of the link screen: bytes received, the hint of the moment, the clock.
class LinkFoot : public look::Pane {
    Q_OBJECT

public:
    explicit LinkFoot(QWidget* parent = nullptr);

    void layFace(bool dive);
    void sync(const LinkState& link);

private:
    QWidget* count_;
    QLabel* lblBytes_;
    QProgressBar* ProgressBar1_;
    QLabel* infotext_;
    QLabel* txtstatus2_;
    QLabel* Label20_;
};

} // namespace benthor::link
