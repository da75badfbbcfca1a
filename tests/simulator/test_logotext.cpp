#include "tests/simulator/logobitmap.h"

#include <QtTest>

using namespace benthor::simulator;
using namespace benthor::tests;

namespace {

/// What the device gets of the text: all behind the last two blanks in a row.
QByteArray body(const QByteArray& text) {
    return text.sliced(text.lastIndexOf("  ") + 2);
}

} // namespace

class TestLogoText : public QObject {
    Q_OBJECT

private slots:
    void aBitmapIsReadInEitherPaletteAndRowOrder_data() {
        QTest::addColumn<Palette>("palette");
        QTest::addColumn<RowOrder>("order");
        QTest::newRow("black first, bottom up") << Palette::BlackFirst << RowOrder::BottomUp;
        QTest::newRow("white first, bottom up") << Palette::WhiteFirst << RowOrder::BottomUp;
        QTest::newRow("black first, top down") << Palette::BlackFirst << RowOrder::TopDown;
        QTest::newRow("white first, top down") << Palette::WhiteFirst << RowOrder::TopDown;
    }

    void aBitmapIsReadInEitherPaletteAndRowOrder() {
        QFETCH(Palette, palette);
        QFETCH(RowOrder, order);
        QString error;
        const QByteArray file = bitmap(crookedLogo(), palette, order);
        QCOMPARE(file.size(), 1086);
        const std::optional<Logo> logo = readBitmap(file, error);
        QVERIFY2(logo, qPrintable(error));
        QVERIFY(*logo == crookedLogo());
        QCOMPARE(error, "");
    }

    void aSinglePixelIsWhereItWasDrawn() {
        QByteArray file = bitmap(Logo());
        file[62 + 16 * 63] = static_cast<char>(0x7F); // the first byte of the topmost row: its leftmost pixel
        QString error;
        const std::optional<Logo> logo = readBitmap(file, error);
        QVERIFY(logo);
        QVERIFY(logo->isDark(0, 0));
        QVERIFY(!logo->isDark(1, 0));
        QVERIFY(!logo->isDark(0, 1));
    }

    void whatIsNoSuchBitmapIsRefusedWithTheReason_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("word");
        const auto with = [](qsizetype at, auto number) {
            QByteArray file = bitmap(crookedLogo());
            qToLittleEndian(number, file.data() + at);
            return file;
        };
        QTest::newRow("empty") << QByteArray() << "no bitmap";
        QTest::newRow("1086 bytes of text") << QByteArray(1086, 'x') << "no bitmap";
        QTest::newRow("its first bytes alone") << QByteArray("BM") << "no bitmap";
        QTest::newRow("a column less") << with(18, qint32(101)) << "101 by 64";
        QTest::newRow("a row more") << with(22, qint32(65)) << "102 by 65";
        QTest::newRow("no height") << with(22, qint32(0)) << "102 by 0";
        QTest::newRow("the lowest height") << with(22, std::numeric_limits<qint32>::min()) << "102 by";
        QTest::newRow("four bits") << with(28, qint16(4)) << "monochrome";
        QTest::newRow("packed") << with(30, qint32(1)) << "monochrome";
        QTest::newRow("a longer head") << with(10, qint32(70)) << "62 bytes";
        QTest::newRow("cut") << bitmap(crookedLogo()).chopped(1) << "not whole";
    }

    void whatIsNoSuchBitmapIsRefusedWithTheReason() {
        QFETCH(QByteArray, file);
        QFETCH(QString, word);
        QString error;
        QVERIFY(!readBitmap(file, error));
        QVERIFY2(error.contains(word), qPrintable(error));
    }

    void theTextFitsTheUpload() {
        const QByteArray text = logoText(crookedLogo());
        QVERIFY(text.size() < 20000);
        QCOMPARE(text.count("  "), 1);
        QVERIFY(text.indexOf("  ") > 0);
        for (const char byte : text) {
            QVERIFY((byte >= ' ' && byte <= '~') || byte == '\r' || byte == '\n');
        }
    }

    void theTextSaysWhoseFormItIs() { QVERIFY(logoText(Logo()).contains("simulated device")); }

    void theTextHoldsTheSamePicture() {
        const std::optional<Logo> logo = readLogo(body(logoText(crookedLogo())));
        QVERIFY(logo);
        QVERIFY(*logo == crookedLogo());
    }

    void theLeftmostPixelIsTheHighestBit() {
        Logo logo;
        logo.rows[0].set(0);
        logo.rows[1].set(Logo::width - 1);
        const QList<QByteArray> lines = body(logoText(logo)).trimmed().split('\n');
        QCOMPARE(lines.size(), 64);
        QCOMPARE(lines[0].trimmed(), "8" + QByteArray(25, '0'));
        QCOMPARE(lines[1].trimmed(), QByteArray(25, '0') + "4");
    }

    void lineEndsAndCaseDoNotMatter() {
        const QByteArray text = body(logoText(crookedLogo()));
        for (const QByteArray& form :
             {QByteArray(text).replace("\r\n", "\n"), text.toLower(), text.trimmed(), "\n\n" + text + "\n"}) {
            const std::optional<Logo> logo = readLogo(form);
            QVERIFY(logo);
            QVERIFY(*logo == crookedLogo());
        }
    }

    void aPictureThatIsNotWholeIsNone_data() {
        QTest::addColumn<QByteArray>("text");
        const QByteArray line = QByteArray(26, '0') + "\r\n";
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("words") << QByteArray("a logo");
        QTest::newRow("63 lines") << line.repeated(63);
        QTest::newRow("65 lines") << line.repeated(65);
        QTest::newRow("a digit less") << line.repeated(63) + QByteArray(25, '0');
        QTest::newRow("a digit more") << line.repeated(63) + QByteArray(27, '0');
        QTest::newRow("no digit") << line.repeated(63) + QByteArray(25, '0') + "G";
        QTest::newRow("pixels beyond the edge") << line.repeated(63) + QByteArray(25, '0') + "1";
        QTest::newRow("a whole file with its head") << logoText(Logo());
    }

    void aPictureThatIsNotWholeIsNone() {
        QFETCH(QByteArray, text);
        QVERIFY(!readLogo(text));
    }

    void aTerminalShowsTwoRowsInALine() {
        Logo logo;
        logo.rows[0].set(0);
        logo.rows[1].set(1);
        logo.rows[0].set(2);
        logo.rows[1].set(2);
        const QStringList lines = QString::fromUtf8(logoPicture(logo)).split(u'\n');
        QCOMPARE(lines.size(), 33); // 32, and nothing behind the last line end
        QCOMPARE(lines[0].size(), 102);
        QVERIFY(lines[0].startsWith(QStringLiteral(u"\u2580\u2584\u2588 ")));
        QCOMPARE(lines[31], QString(102, u' '));
    }

    void thePortableBitmapHasEachPixel() {
        const QByteArray pbm = logoPbm(crookedLogo());
        QVERIFY(pbm.startsWith("P1\n102 64\n"));
        const QByteArray pixels = pbm.sliced(10).replace("\n", "");
        QCOMPARE(pixels.size(), 102 * 64);
        for (int i = 0; i < pixels.size(); ++i) {
            QCOMPARE(pixels[i], crookedLogo().isDark(i % 102, i / 102) ? '1' : '0');
        }
        for (const QByteArray& line : pbm.split('\n')) {
            QVERIFY(line.size() <= 70);
        }
    }

    void theTextStandsBesideItsBitmap() {
        QCOMPARE(logoTextPath(QStringLiteral("logo.bmp")), QStringLiteral("loga.bmt"));
        QCOMPARE(logoTextPath(QStringLiteral("sharka.bmp")), QStringLiteral("sharka.bmt"));
        QCOMPARE(logoTextPath(QStringLiteral("x.bmp")), QStringLiteral("a.bmt"));
        QCOMPARE(logoTextPath(QStringLiteral("/a folder/logo.bmp")), QStringLiteral("/a folder/loga.bmt"));
        QVERIFY(!logoTextPath(QStringLiteral("logo")));
        QVERIFY(!logoTextPath(QStringLiteral("/long folder/logo")));
        QVERIFY(!logoTextPath(QStringLiteral("loga.bmt")));
    }
};

QTEST_APPLESS_MAIN(TestLogoText)
#include "test_logotext.moc"
