#pragma once

#include <QPushButton>

namespace benthor::link {

/// A push button of a picture, a caption and a quiet line below it. Picture and quiet line are controls of
/// their own that act like the button; the picture can be hidden while the button stays.
class CommandButton : public QPushButton {
    Q_OBJECT

public:
    enum class Kind { Large, Small }; ///< 52 high with the quiet line; as other buttons, without

    CommandButton(const QString& caption, const QString& iconName, Kind kind, QWidget* parent = nullptr);

    /// Object names; an empty one leaves that control out.
    void setNames(const char* button, const char* picture, const char* label);
    void setPictureShown(bool shown);
    bool isPictureShown() const;
    void setQuietLine(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int textLeft() const;

    QString iconName_;
    Kind kind_;
    QString quietLine_;
    QAbstractButton* picture_;
    QAbstractButton* label_;
};

} // namespace benthor::link
