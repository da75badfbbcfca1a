#pragma once

#include "exports/danexport.h"
#include "platform/look/widgets/card.h"
#include "profile/header.h"
#include "viewer/screens/diveact.h"
#include "viewer/screens/divepaper.h"

#include <QList>

class QBoxLayout;

namespace benthor::look {
class CommandButton;
}

namespace benthor::viewer {

class HeadBox;

/// The head of the dive screen: what the store tells of the dive, in boxes that can be edited, between the
/// way back and the ways on. What is typed there reaches the time axis and the DAN file, never the store.
class DiveHead : public look::Pane {
    Q_OBJECT

public:
    explicit DiveHead(QWidget* parent = nullptr);

    void showHeader(const profile::HeaderBoxes& header);
    /// Identifier, interval and start as they stand in their boxes.
    exports::DanHead danHead() const;
    /// Every box with its caption and its unit, as it stands.
    QList<PaperValue> values() const;
    /// The number of seconds in the box of the interval.
    double interval() const;
    /// For windows of that width, in pixels. Where a large font leaves no room beside the boxes, the buttons
    /// stand below them.
    void fit(int windowWidth);

signals:
    void acted(DiveAct act);

protected:
    bool event(QEvent* event) override;

private:
    HeadBox* addBox(const char* name, const char* caption, const char* unit = "");
    void addButtons();
    void placeButtons();

    QBoxLayout* across_;
    QBoxLayout* row_;
    QBoxLayout* buttons_;
    int windowWidth_ = 0;
    QList<HeadBox*> boxes_;
    look::CommandButton* Command4;
    HeadBox* txtdiveid;
    HeadBox* txttimedown;
    HeadBox* txtduration;
    HeadBox* txtmaxdepth;
    HeadBox* txtinterval;
    HeadBox* txtotu;
    HeadBox* txtatmos;
    HeadBox* txtdusageh;
    HeadBox* txtversion;
};

} // namespace benthor::viewer
