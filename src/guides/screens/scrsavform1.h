#pragma once

#include "platform/screen/emptyscreen.h"

#include <QPointer>

class QLabel;

namespace benthor::guides {

/// The helper that saves a picture of the dive screen beside the dive. It stays out of the picture.
class ScrSavForm1 : public platform::EmptyScreen {
    Q_OBJECT

public:
    ScrSavForm1();

    /// The window to be captured and the name of its dive's text file; told before cmdCapture_click().
    void setDiveScreen(platform::Screen* screen, const QString& divefilename);
    /// Saves the picture in the folder jpg under the dive's name.
    void cmdCapture_click();

    /// Path of the picture that was saved; empty where none was.
    QString savedAs() const { return savedAs_; }

    /// A choice that is kept and that the capture does not read.
    QString size() const { return size_; }

private:
    void setSize(const QString& size);

    QPointer<platform::Screen> diveScreen_;
    QString divefilename_;
    QString savedAs_;
    QString size_;
    QLabel* sizeLabel_ = nullptr;
};

} // namespace benthor::guides
