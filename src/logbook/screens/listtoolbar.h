#pragma once

#include "platform/look/widgets/card.h"

class QLabel;

namespace benthor::look {
class ClickableLabel;
class SegmentedChoice;
} // namespace benthor::look

namespace benthor::logbook {

class PictureButton;

/// The dive list's tool bar. Where it has not the room for all captions, some actions keep only their icons.
class ListToolBar : public look::Pane {
    Q_OBJECT

public:
    explicit ListToolBar(QWidget* parent = nullptr);

    PictureButton* open() const { return open_; }
    PictureButton* publish() const { return publish_; }
    PictureButton* spreadsheet() const { return spreadsheet_; }
    PictureButton* close() const { return close_; }
    PictureButton* remove() const { return remove_; }
    look::ClickableLabel* toLink() const { return toLink_; }
    look::ClickableLabel* toMain() const { return toMain_; }
    /// Its choices bear the sort numbers.
    look::SegmentedChoice* sort() const { return sort_; }

    QSize minimumSizeHint() const override { return smallest_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange();
    void measure();
    void setCompactness(int level);
    void fit();

    PictureButton* open_;
    PictureButton* publish_;
    PictureButton* spreadsheet_;
    PictureButton* close_;
    PictureButton* remove_;
    look::ClickableLabel* toLink_;
    look::ClickableLabel* toMain_;
    look::SegmentedChoice* sort_;
    QLabel* sortCaption_;
    int level_ = -1;
    QSize smallest_;
};

} // namespace benthor::logbook
