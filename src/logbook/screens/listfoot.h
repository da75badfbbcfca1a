#pragma once

#include <QWidget>

namespace benthor::look {
class ClickableLabel;
class WholeLabel;
} // namespace benthor::look

namespace benthor::logbook {

/// The line below the table: at its left what the list has to say, whole; at its right the way to save the
/// list, as a picture and as words.
class ListFoot : public QWidget {
    Q_OBJECT

public:
    explicit ListFoot(QWidget* parent = nullptr);

    look::WholeLabel* quietLine() const { return quietLine_; }
    look::ClickableLabel* sheetPicture() const { return sheetPicture_; }
    look::ClickableLabel* sheetLabel() const { return sheetLabel_; }

signals:
    void sheetWanted();

private:
    look::WholeLabel* quietLine_;
    look::ClickableLabel* sheetPicture_;
    look::ClickableLabel* sheetLabel_;
};

} // namespace benthor::logbook
