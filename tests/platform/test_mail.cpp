#include "platform/mail.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor::platform;

namespace {

const QDateTime kMoment(QDate(2017, 9, 27), QTime(1, 21, 18), Qt::UTC);

/// The parts of a message file, each its head and its decoded body.
struct Part {
    QByteArray head;
    QByteArray body;
};
QList<Part> partsOf(const QByteArray& file, const QByteArray& boundary) {
    QList<Part> parts;
    QByteArray rest = file;
    rest.replace("--" + boundary + "--\r\n", "--" + boundary + "\r\n");
    const QList<QByteArray> pieces = [&] {
        QList<QByteArray> found;
        qsizetype at = rest.indexOf("--" + boundary + "\r\n");
        while (at >= 0) {
            const qsizetype from = at + boundary.size() + 4;
            at = rest.indexOf("--" + boundary + "\r\n", from);
            if (at >= 0) {
                found += rest.mid(from, at - from);
            }
        }
        return found;
    }();
    for (const QByteArray& piece : pieces) {
        const qsizetype gap = piece.indexOf("\r\n\r\n");
        parts += Part{piece.first(gap), QByteArray::fromBase64(piece.mid(gap + 4).replace("\r\n", ""))};
    }
    return parts;
}

} // namespace

class TestMail : public QObject {
    Q_OBJECT

private slots:
    void theMailerGetsAListOfArguments() {
        QCOMPARE(mailerArguments({QStringLiteral("anna@example.org"),
                                  QStringLiteral("a subject"),
                                  QStringLiteral("two\nlines; `echo`"),
                                  {QStringLiteral("/a b.txt"), QStringLiteral("/c.jpg")}}),
                 QStringList({"--utf8", "--subject", "a subject", "--body", "two\nlines; `echo`", "--attach",
                              "/a b.txt", "--attach", "/c.jpg", "mailto:anna@example.org"}));
    }

    void withoutAnAddressTheUserFillsItIn() {
        QCOMPARE(mailerArguments({{}, QStringLiteral("s"), QStringLiteral("b"), {}}),
                 QStringList({"--utf8", "--subject", "s", "--body", "b"}));
    }

    void anAddressIsNeverAnOption() {
        QCOMPARE(mailerArguments({QStringLiteral("--attach"), {}, {}, {}}).last(), "mailto:--attach");
        QCOMPARE(mailerArguments({QStringLiteral("a@b?cc=c@d"), {}, {}, {}}).last(), "mailto:a@b%3Fcc%3Dc@d");
    }

    void theFileHoldsTextAndAttachments() {
        const QTemporaryDir folder;
        const QString one = folder.filePath(QString::fromUtf8("W\xc3\xa4ldchen 1.txt"));
        const QString two = folder.filePath(QStringLiteral("dive.jpg"));
        const QByteArray bytes = QByteArray("ver=V3.12\r\n\0\xff", 13).repeated(40);
        QVERIFY(writeFileWhole(one, bytes));
        QVERIFY(writeFileWhole(two, "picture"));
        const MailMessage message{QStringLiteral("anna@example.org"),
                                  QStringLiteral("Publish My Dive"),
                                  QString::fromUtf8("    Gr\xc3\xbc\xc3\x9f\x65\nsecond line"),
                                  {one, two}};
        QByteArray file;
        QVERIFY(messageFile(message, kMoment, "limit", file));
        const QByteArray head = file.first(file.indexOf("\r\n\r\n"));
        QVERIFY(head.contains("To: anna@example.org\r\n"));
        QVERIFY(head.contains("Subject: Publish My Dive\r\n"));
        QVERIFY(head.contains("Date: 27 Sep 2017 01:21:18 +0000\r\n"));
        QVERIFY(head.contains("MIME-Version: 1.0\r\n"));
        QVERIFY(head.contains("X-Unsent: 1\r\n"));
        QVERIFY(head.contains("Content-Type: multipart/mixed; boundary=\"limit\""));
        const QList<Part> parts = partsOf(file, "limit");
        QCOMPARE(parts.size(), 3);
        QVERIFY(parts[0].head.contains("text/plain; charset=UTF-8"));
        QCOMPARE(QString::fromUtf8(parts[0].body), message.body);
        QVERIFY(parts[1].head.contains("filename*=UTF-8''W%C3%A4ldchen%201.txt"));
        QVERIFY(parts[1].head.contains("Content-Type: text/plain"));
        QCOMPARE(parts[1].body, bytes);
        QVERIFY(parts[2].head.contains("Content-Type: image/jpeg"));
        QCOMPARE(parts[2].body, "picture");
        for (const QByteArray& line : file.split('\n')) {
            QVERIFY2(line.size() <= 79 || line.contains("boundary") || line.contains("filename"), line);
        }
    }

    void nothingGetsIntoTheHeadByALineBreak() {
        QByteArray file;
        QVERIFY(messageFile({QStringLiteral("a@b\r\nBcc: eve@example.org"),
                             QString::fromUtf8("\xc3\xa4").repeated(60),
                             QStringLiteral("x"),
                             {}},
                            kMoment, "limit", file));
        QVERIFY(!file.contains("\r\nBcc:"));
        const QByteArray subject =
            file.mid(file.indexOf("Subject: "), file.indexOf("\r\nDate") - file.indexOf("Subject: "));
        QString decoded;
        for (QRegularExpressionMatchIterator words =
                 QRegularExpression(QStringLiteral("=\\?UTF-8\\?B\\?([^?]*)\\?="))
                     .globalMatch(QString::fromLatin1(subject));
             words.hasNext();) {
            const QRegularExpressionMatch word = words.next();
            QVERIFY(word.captured(0).size() <= 75);
            decoded += QString::fromUtf8(QByteArray::fromBase64(word.captured(1).toLatin1()));
        }
        QCOMPARE(decoded, QString::fromUtf8("\xc3\xa4").repeated(60));
    }

    void anAttachmentThatCannotBeReadIsNamed() {
        QByteArray file;
        const FileResult result =
            messageFile({{}, {}, {}, {QStringLiteral("/nowhere/dive.txt")}}, kMoment, "limit", file);
        QVERIFY(!result);
        QVERIFY2(result.error.contains(QLatin1String("/nowhere/dive.txt")), qPrintable(result.error));
    }
};

QTEST_GUILESS_MAIN(TestMail)
#include "test_mail.moc"
