#pragma once

#include "platform/files.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace benthor::platform {

/// A message that is not sent yet.
struct MailMessage {
    QString recipient; ///< an address, or empty: the user fills it in
    QString subject;
    QString body;
    QStringList attachments; ///< paths of files
};

/// The arguments with which the desktop's mailer opens the message, ready to be sent by the user.
QStringList mailerArguments(const MailMessage& message);

/// The desktop's mailer, its path; empty where none is installed.
QString findMailer();

/// The message as a file that mailers open (RFC 5322 and MIME): the body in UTF-8, each attachment in base64
/// under its name, marked as not sent. `boundary` parts them and must not occur in them. Fails where an
/// attachment cannot be read.
FileResult messageFile(const MailMessage& message, const QDateTime& moment, const QByteArray& boundary,
                       QByteArray& file);

} // namespace benthor::platform
