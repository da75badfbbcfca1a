#pragma once

#include <QPushButton>

namespace benthor::look {

/// A push button of a picture, a caption and a quiet line below it. Picture and quiet line are controls of
/// their own that act like the button; the picture can be hidden while the button stays.
class CommandButton : public QPushButton {
    Q_OBJECT

public:
    /// Large: 52 high with the quiet line. Small: as other buttons, without. Icon: the picture alone, with
    /// the caption as its tool tip.
    enum class Kind { Large, Small, Icon };

    CommandButton(const QString& caption, const QString& iconName, Kind kind, QWidget* parent = nullptr);

    /// Object names; an empty one leaves that control out.
    void setNames(const char* button, const char* picture, const char* label);
    /// Between Small and Icon, for narrow windows.
    void setKind(Kind kind);
    Kind kind() const { return kind_; }
    /// The width that the button needs as one of that kind.
    int widthAs(Kind kind) const;
    void setPictureShown(bool shown);
    bool isPictureShown() const;
    void setQuietLine(const QString& text);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int textLeft(Kind kind) const;

    QString iconName_;
    Kind kind_;
    QString quietLine_;
    QAbstractButton* picture_;
    QAbstractButton* label_;
};

} // namespace benthor::look
