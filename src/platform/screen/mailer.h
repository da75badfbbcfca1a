#pragma once

#include "platform/mail.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class QProcess;

namespace benthor::platform {

/// Hands a message to the desktop's mailer, where the user sends it. Where there is no mailer, or it cannot
/// take the message, the user is offered a file that holds it with its attachments.
class Mailer : public QObject {
    Q_OBJECT

public:
    /// `window`: where questions are asked.
    explicit Mailer(QWidget* window);
    ~Mailer() override;

    /// `fileName`: suggested for the file of the message.
    void send(const MailMessage& message, const QString& fileName);

signals:
    void handedOver();                 ///< the mailer has taken the message
    void savedAs(const QString& path); ///< the message stands in a file
    void failed(const QString& reason);
    void cancelled();

private:
    void offerFile();

    QWidget* window_;
    MailMessage message_;
    QString fileName_;
    QPointer<QProcess> process_;
};

} // namespace benthor::platform
