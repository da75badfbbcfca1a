#pragma once

#include "link/linkstate.h"
#include "platform/look/widgets/card.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace benthor::look {
class ClickableLabel;
class NumberLabel;
} // namespace benthor::look

namespace benthor::link {

/// The chosen command: its value, its file, the reply, Send.
class CommandCard : public look::Card {
    Q_OBJECT

public:
    explicit CommandCard(QWidget* parent = nullptr);

    void sync(const Console& console);
    QLineEdit* valueToSend() const { return valueToSend_; }
    QLineEdit* data() const { return Text9_; }
    QLineEdit* index() const { return Text12_; }
    QPushButton* send() const { return Command2_; }
    QPushButton* sendFile() const { return Command5_; }
    QPushButton* convertLogo() const { return Command8_; }
    QPushButton* open() const { return open_; }

private:
    QWidget* buildTitle();
    QWidget* buildValues();
    QWidget* buildSend();
    QWidget* buildFile();
    void syncTitle(const Console& console);
    void showInterval(const QString& text);
    void syncValues(const Console& console);
    void syncFile(const Console& console);

    look::ClickableLabel* icon_;
    QLabel* title_;
    QLabel* hint_;
    QWidget* interval_;
    QLineEdit* valueToSend_;          ///< `Text16(0)`
    look::NumberLabel* intervalRead_; ///< `Text16(1)`
    QLabel* Label3_;
    QLineEdit* Text9_;
    QLabel* AFLabel1_;
    QLineEdit* Text12_;
    QLabel* AFLabel4_;
    QLineEdit* TextResponse_;
    QLabel* Label6_;
    QLabel* Label7_;
    QWidget* Shape1_;
    QHBoxLayout* fields_ = nullptr; ///< what the command takes, and the room behind it
    QLabel* goes_;                  ///< what Send sends now
    QPushButton* Command2_;
    QLabel* fileCaption_;
    QLineEdit* Text5_;
    QPushButton* Command8_; ///< Convert Logo
    QPushButton* open_;
    QPushButton* Command5_;
};

} // namespace benthor::link
