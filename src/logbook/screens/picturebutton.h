#pragma once

#include <QPushButton>

namespace benthor::logbook {

/// A push button whose icon is a control of its own that acts like the button. In narrow windows the button
/// keeps only its icon, and its caption becomes the tool tip.
class PictureButton : public QPushButton {
    Q_OBJECT

public:
    PictureButton(const QString& caption, const char* iconName, const QString& pictureName,
                  QWidget* parent = nullptr);

    void setCompact(bool compact);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QString caption_;
    QAbstractButton* picture_;
    bool compact_ = false;
};

} // namespace benthor::logbook
