#include "platform/mail.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

namespace benthor::platform {

namespace {

constexpr qsizetype kBase64Line = 76;
constexpr qsizetype kEncodedWordBytes = 45; // 60 characters of base64: with its frame below 75

QByteArray base64Lines(const QByteArray& bytes) {
    const QByteArray encoded = bytes.toBase64();
    QByteArray lines;
    for (qsizetype at = 0; at < encoded.size(); at += kBase64Line) {
        lines += encoded.mid(at, kBase64Line) + "\r\n";
    }
    return lines;
}

bool isPlain(const QString& text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar letter) { return letter.unicode() >= 0x20 && letter.unicode() < 0x7f; });
}

/// A header's text: as it is where it is plain, else in encoded words that no line break can get into.
QByteArray headerText(const QString& text) {
    if (isPlain(text)) {
        return text.toLatin1();
    }
    QByteArray words;
    QByteArray word;
    const auto closeWord = [&] {
        words += (words.isEmpty() ? "" : "\r\n ") + ("=?UTF-8?B?" + word.toBase64() + "?=");
        word.clear();
    };
    for (const char32_t letter : text.toUcs4()) {
        const QByteArray bytes = QString::fromUcs4(&letter, 1).toUtf8();
        if (word.size() + bytes.size() > kEncodedWordBytes) {
            closeWord();
        }
        word += bytes;
    }
    closeWord();
    return words;
}

/// RFC 2231: a file name of any letters.
QByteArray nameParameter(const QString& name) {
    return "filename*=UTF-8''" + QUrl::toPercentEncoding(name);
}

QByteArray mimeType(const QString& name) {
    const QString suffix = QFileInfo(name).suffix().toLower();
    if (suffix == QLatin1String("txt")) {
        return "text/plain";
    }
    return suffix == QLatin1String("jpg") ? "image/jpeg" : "application/octet-stream";
}

} // namespace

QStringList mailerArguments(const MailMessage& message) {
    QStringList arguments{QStringLiteral("--utf8"), QStringLiteral("--subject"), message.subject,
                          QStringLiteral("--body"), message.body};
    for (const QString& path : message.attachments) {
        arguments << QStringLiteral("--attach") << path;
    }
    if (!message.recipient.isEmpty()) {
        // As an address of the web nothing in it can be taken for an option or for more than an address.
        arguments << QStringLiteral("mailto:") +
                         QString::fromLatin1(QUrl::toPercentEncoding(message.recipient, "@,"));
    }
    return arguments;
}

QString findMailer() {
    return QStandardPaths::findExecutable(QStringLiteral("xdg-email"));
}

FileResult messageFile(const MailMessage& message, const QDateTime& moment, const QByteArray& boundary,
                       QByteArray& file) {
    file.clear();
    if (!message.recipient.isEmpty()) {
        file += "To: " + headerText(message.recipient) + "\r\n";
    }
    file += "Subject: " + headerText(message.subject) + "\r\n";
    file += "Date: " + moment.toString(Qt::RFC2822Date).toLatin1() + "\r\n";
    file += "X-Unsent: 1\r\n";
    file += "MIME-Version: 1.0\r\n";
    file += "Content-Type: multipart/mixed; boundary=\"" + boundary + "\"\r\n\r\n";
    file += "--" + boundary + "\r\n";
    file += "Content-Type: text/plain; charset=UTF-8\r\nContent-Transfer-Encoding: base64\r\n\r\n";
    file += base64Lines(message.body.toUtf8());
    for (const QString& path : message.attachments) {
        const std::optional<QByteArray> bytes = readFile(path);
        if (!bytes) {
            return {QStringLiteral("Cannot read %1").arg(path), EIO};
        }
        const QString name = QFileInfo(path).fileName();
        file += "--" + boundary + "\r\nContent-Type: " + mimeType(name) + "\r\n";
        file += "Content-Transfer-Encoding: base64\r\nContent-Disposition: attachment; " +
                nameParameter(name) + "\r\n\r\n";
        file += base64Lines(*bytes);
    }
    file += "--" + boundary + "--\r\n";
    return {};
}

} // namespace benthor::platform
