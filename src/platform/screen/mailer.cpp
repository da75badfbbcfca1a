#include "platform/screen/mailer.h"

#include "platform/clock.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/savepath.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QUuid>

namespace benthor::platform {

Mailer::Mailer(QWidget* window)
    : QObject(window)
    , window_(window) {}

/// A mailer that is still open is left alone.
Mailer::~Mailer() {
    if (process_ != nullptr) {
        process_->disconnect(this);
        process_->setParent(QCoreApplication::instance());
    }
}

void Mailer::send(const MailMessage& message, const QString& fileName) {
    message_ = message;
    fileName_ = fileName;
    const QString mailer = findMailer();
    if (mailer.isEmpty()) {
        offerFile();
        return;
    }
    auto* process = new QProcess(this);
    process_ = process;
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    connect(process, &QProcess::finished, this, [this, process](int code, QProcess::ExitStatus status) {
        process->deleteLater();
        if (code == 0 && status == QProcess::NormalExit) {
            emit handedOver();
        } else {
            offerFile();
        }
    });
    connect(process, &QProcess::errorOccurred, this, [this, process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            process->deleteLater();
            offerFile();
        }
    });
    process->start(mailer, mailerArguments(message));
}

void Mailer::offerFile() {
    const bool wanted =
        dialogs().confirm(window_,
                          QStringLiteral("No mail program takes the message. Save it with its "
                                         "attachments as a file that mail programs open?"),
                          message_.subject);
    const QString path =
        wanted ? askSavePath(window_, message_.subject, QDir::homePath() + QLatin1Char('/') + fileName_,
                             QStringLiteral("Mail (*.eml)|*.eml|All Files (*.*)|*.*"))
               : QString();
    if (path.isEmpty()) {
        emit cancelled();
        return;
    }
    QByteArray file;
    FileResult result = messageFile(message_, platform::now(),
                                    "benthor-" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces), file);
    if (result) {
        result = writeFileWhole(path, file);
    }
    if (result) {
        emit savedAs(path);
    } else {
        emit failed(result.error);
    }
}

} // namespace benthor::platform
