#pragma once

#include "link/linkstate.h"
#include "platform/look/widgets/card.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace benthor::link {

class RawText;

/// The drawer at the foot: the fields of the command for experts, and the two raw text boxes.
class Drawer : public look::Card {
    Q_OBJECT

public:
    explicit Drawer(QWidget* parent = nullptr);

    /// `raw`: whether the raw text boxes are wanted. Without them and without expert fields it is shut.
    void sync(const LinkState& link, bool raw);
    QLineEdit* command() const { return Text3_; }
    QLineEdit* prefix() const { return Text11_; }
    QLineEdit* trailer() const { return Text10_; } ///< a line end stands in it as its sign
    QLineEdit* reply() const { return Text6_; }

signals:
    void textToSendEdited(const QString& text); ///< lines end in CR LF
    void closeWanted();

private:
    QWidget* buildFields();
    QWidget* buildTexts();

    QWidget* fields_;
    QWidget* texts_;
    QLineEdit* Text3_;
    QLineEdit* Text11_;
    QLineEdit* Text10_;
    QLineEdit* Text6_;
    QLabel* received_;
    QLabel* toSend_;
    RawText* Text4_;
    QPlainTextEdit* Text7_;
    QString shownText7_;
};

} // namespace benthor::link
