#include "firmware/checkvalues.h"
#include "tests/link/vectors.h"

#include <QBuffer>
#include <QJsonArray>
#include <QTemporaryDir>

using namespace benthor;
using firmware::CheckValues;
using firmware::checkvalues;
using firmware::readchecksums;

namespace {

const QByteArray kList = "a.sog  chksum= 0001\r\nb.sog  chksum= 00B2\r\na.sog  chksum= 0A03\r\n";

/// An image of that length whose last two bytes are 12 and AB.
QByteArray image(int length) {
    QByteArray bytes(length, '\x55');
    if (length >= 2) {
        bytes[length - 2] = '\x12';
        bytes[length - 1] = '\xAB';
    }
    return bytes;
}

CheckValues valuesOf(const QString& path, const QByteArray& list, QByteArray bytes) {
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    return checkvalues(path, list, &device);
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

} // namespace

class TestCheckValues : public QObject {
    Q_OBJECT

private slots:
    void theValuesAgreeWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("vector");
        for (const QJsonValue& one : tests::vectors("firmware.json")["check_values"].toArray()) {
            QTest::newRow(qPrintable(one["about"].toString())) << one.toObject();
        }
    }
    void theValuesAgreeWithTheVectors() {
        QFETCH(QJsonObject, vector);
        QByteArray bytes = QByteArray::fromBase64(vector["image"].toString().toLatin1());
        QBuffer device(&bytes);
        device.open(QIODevice::ReadOnly);
        const CheckValues values =
            checkvalues(vector["path"].toString(), vector["list"].toString().toLatin1(),
                        vector["image"].isNull() ? nullptr : &device);
        QCOMPARE(values.Text13, vector["Text13"].toString());
        QCOMPARE(values.Text15, vector["Text15"].toString());
        QCOMPARE(values.listed, vector["button"].toString() == QLatin1String("green"));
    }

    void ofTwoLinesForANameTheSecondWins() {
        QCOMPARE(checkvalues("/x/a.sog", kList, nullptr).Text13, "0A03");
        QVERIFY(checkvalues("/x/a.sog", kList, nullptr).listed);
    }

    void anotherLengthKeepsTheValueOfTheList() {
        for (const int length : {139, 141, 277, 279, 7039, 7041}) {
            const CheckValues values = valuesOf("/x/a.sog", kList, image(length));
            QCOMPARE(values.Text13, "0A03");
            QCOMPARE(values.stored4, "");
            QCOMPARE(values.length, length);
        }
    }

    void theStoredValueGoesBeforeTheList() {
        for (const int length : {2, 140, 278, 7040}) {
            const CheckValues values = valuesOf("/x/a.sog", kList, image(length));
            QCOMPARE(values.Text13, "12AB");
            QCOMPARE(values.listed4, "0A03");
            QCOMPARE(values.stored4, "12AB");
            QCOMPARE(values.Text15, QString::number(0x12AB + 6331, 16).toUpper());
        }
    }

    void aValueOfThreeDigitsHasALeadingZero() {
        QByteArray bytes = image(140);
        bytes[138] = '\x0B';
        bytes[139] = '\x7C';
        QCOMPARE(valuesOf("/x/c.sog", kList, bytes).Text13, "0B7C");
    }

    void neitherCaseNorExtensionOfTheNameMatter() {
        for (const char* const path :
             {"/x/B.SOG", "/x/b.bin", "/x/B.Bin", "C:\\y\\b.sog", "/x\\b.sog", "\\x/b.sog"}) {
            const CheckValues values = checkvalues(QLatin1String(path), kList, nullptr);
            QVERIFY2(values.listed, path);
            QCOMPARE(values.Text13, "00B2");
        }
    }

    void aPathWithoutASeparatorFindsNothing() {
        QVERIFY(!checkvalues("b.sog", kList, nullptr).listed);
        QVERIFY(!checkvalues("", kList, nullptr).listed);
    }

    void aNameWithoutRoomForItsExtensionFindsNothing() {
        QVERIFY(!checkvalues("/x/b", "b.sog  chksum= 0001\r\n", nullptr).listed);
        QVERIFY(!checkvalues("/x/", "b.sog  chksum= 0001\r\n", nullptr).listed);
    }

    void theBlanksOfALineMustBeExact() {
        for (const char* const line : {"b.sog chksum= 1111", "b.sog  chksum=1111", "b.sog   chksum= 1111",
                                       "b.sog  chksum = 1111", "b.bin  chksum= 1111"}) {
            QVERIFY2(!checkvalues("/x/b.sog", line, nullptr).listed, line);
        }
    }

    void aLineThatEndsInItsKeyIsFoundWithoutAValue() {
        const CheckValues values = checkvalues("/x/b.sog", "b.sog  chksum= ", nullptr);
        QVERIFY(values.listed);
        QCOMPARE(values.Text13, "");
        QCOMPARE(values.Text15, "18BB"); // 6331 alone
    }

    void decimalDigitsAreTakenAsADecimalNumber() {
        QCOMPARE(checkvalues("/x/b.sog", "b.sog  chksum= 1234", nullptr).Text15,
                 QString::number(1234 + 6331, 16).toUpper());
        // An exponent is no digit: the value of the file counts, here none.
        QCOMPARE(checkvalues("/x/b.sog", "b.sog  chksum= 12E4", nullptr).Text15, "18BB");
    }

    void whatLiesAheadOfThe30000LastCharactersIsNotSeen() {
        const QByteArray line = "b.sog  chksum= 0001\r\n";
        QVERIFY(checkvalues("/x/b.sog", line + QByteArray(29999 - line.size(), ' '), nullptr).listed);
        QVERIFY(!checkvalues("/x/b.sog", line + QByteArray(30000 - line.size(), ' '), nullptr).listed);
    }

    void anImageBeyond500000BytesHoldsNoValue() {
        // Units of 138 bytes and two more: the longest within, and the shortest beyond.
        QCOMPARE(valuesOf("/x/a.sog", {}, image(138 * 3623 + 2)).Text13, "12AB");
        QCOMPARE(valuesOf("/x/a.sog", {}, image(138 * 3624 + 2)).Text13, "");
    }

    void filesAreReadFromTheFolder() {
        const QTemporaryDir folder;
        write(folder.filePath("chklst.txt"), kList);
        write(folder.filePath("a.sog"), image(140));
        write(folder.filePath("b.sog"), image(141));
        QCOMPARE(readchecksums(folder.filePath("a.sog"), folder.path()).Text13, "12AB");
        QCOMPARE(readchecksums(folder.filePath("b.sog"), folder.path()).Text13, "00B2");
    }

    void theListIsFoundInAnyCase() {
        const QTemporaryDir folder;
        write(folder.filePath("CHKLST.TXT"), kList);
        write(folder.filePath("b.sog"), image(141));
        QCOMPARE(readchecksums(folder.filePath("b.sog"), folder.path()).Text13, "00B2");
        write(folder.filePath("chklst.txt"), "b.sog  chksum= 0001\r\n"); // its own spelling goes first
        QCOMPARE(readchecksums(folder.filePath("b.sog"), folder.path()).Text13, "0001");
    }

    void ofTheListAtMost32000BytesAreRead() {
        const QTemporaryDir folder;
        const QByteArray line = "b.sog  chksum= 0001\r\n";
        write(folder.filePath("chklst.txt"), QByteArray(32000 - line.size(), ' ') + line);
        QVERIFY(readchecksums(folder.filePath("b.sog"), folder.path()).listed);
        write(folder.filePath("chklst.txt"), QByteArray(32000, ' ') + line);
        QVERIFY(!readchecksums(folder.filePath("b.sog"), folder.path()).listed);
    }

    void missingFilesHoldNothing() {
        const QTemporaryDir folder;
        const CheckValues values = readchecksums(folder.filePath("a.sog"), folder.path());
        QVERIFY(!values.listed);
        QCOMPARE(values.Text13, "");
        QCOMPARE(values.Text15, "18BB");
        QCOMPARE(values.length, -1);
        QCOMPARE(readchecksums(folder.path(), folder.path()).length, -1); // a folder is no image
    }

    void aPathOfUnderFourCharactersIsNotOpened() {
        const QTemporaryDir folder;
        const QString before = QDir::currentPath();
        QDir::setCurrent(folder.path());
        write("abc", image(140));
        write("abcd", image(140));
        QCOMPARE(readchecksums("abc", folder.path()).length, -1);
        QCOMPARE(readchecksums("abcd", folder.path()).length, 140);
        QDir::setCurrent(before);
    }
};

QTEST_APPLESS_MAIN(TestCheckValues)
#include "test_checkvalues.moc"
