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
    /// What the button says while it cannot be worked; disables it.
    void setUnavailable(const QString& reason);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void tellTip();

    QString caption_;
    QString reason_;
    QAbstractButton* picture_;
    bool compact_ = false;
};

} // namespace benthor::logbook
