#include "platform/grid/flexgrid.h"

#include <QRandomGenerator>
#include <QtTest>

using benthor::platform::FlexGrid;
using benthor::platform::TextWidths;

class TestTextWidths : public QObject {
    Q_OBJECT

private slots:
    /// More texts than are kept, each asked for twice.
    void widthsAreTheFontsOwn() {
        QRandomGenerator random(11);
        for (const double points : {8.0, 13.5}) {
            QFont font;
            font.setPointSizeF(points);
            const QFontMetrics metrics(font);
            for (int i = 0; i < 6000; ++i) {
                QString text = QString::number(random.generate());
                if (i % 100 == 0) {
                    text = QString(random.bounded(400), QChar(u'A' + i % 26));
                }
                const TextWidths widths(font);
                QCOMPARE(widths.of(text), metrics.horizontalAdvance(text));
                QCOMPARE(TextWidths(font).of(text), widths.of(text));
            }
        }
    }

    void fontsAreKeptApart() {
        QFont plain;
        QFont bold = plain;
        bold.setWeight(QFont::Bold);
        QFont spaced = plain;
        spaced.setLetterSpacing(QFont::AbsoluteSpacing, 5);
        const QString text = QStringLiteral("Blue Hole");
        for (const QFont& font : {plain, bold, spaced, plain}) {
            QCOMPARE(TextWidths(font).of(text), QFontMetrics(font).horizontalAdvance(text));
        }
        QVERIFY(TextWidths(spaced).of(text) > TextWidths(plain).of(text) + 20);
    }

    /// More fonts than are kept: whoever holds one goes on with it.
    void aFontOutlivesItsPlace() {
        const QString text = QStringLiteral("2008-07-15");
        const TextWidths first{QFont()};
        const int width = first.of(text);
        for (int points = 6; points < 40; ++points) {
            QFont font;
            font.setPointSize(points);
            QCOMPARE(TextWidths(font).of(text), QFontMetrics(font).horizontalAdvance(text));
        }
        QCOMPARE(first.of(text), width);
    }

    void aGridMeasuresAnewInAnotherFont() {
        FlexGrid grid;
        grid.setRows(2);
        grid.setCols(1);
        grid.setText(1, 0, QStringLiteral("a text that needs its room"));
        grid.setColumnWidthTwips(0, 300);
        grid.resize(800, 200);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        const auto needed = [&grid] {
            return QFontMetrics(grid.cellFont(0)).horizontalAdvance(grid.text(1, 0));
        };
        const int before = needed();
        QVERIFY(grid.columnWidth(0) >= before);
        QVERIFY(grid.columnWidth(0) < before + 60);
        grid.setFontSize(grid.font().pointSizeF() * 2);
        QVERIFY(needed() > before + 60);
        QVERIFY(grid.columnWidth(0) >= needed());
        grid.setFontSize(grid.font().pointSizeF() / 2);
        QCOMPARE(needed(), before);
        QVERIFY(grid.columnWidth(0) < before + 60);
    }
};

QTEST_MAIN(TestTextWidths)
#include "test_textwidths.moc"
