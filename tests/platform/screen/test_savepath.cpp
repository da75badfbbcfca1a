// The name that an export gets from what was typed and what was picked.

#include "platform/screen/savepath.h"

#include <QtTest>

using benthor::platform::withEnding;

class TestSavePath : public QObject {
    Q_OBJECT

private slots:
    void theNameGetsTheEndingThatItLacks_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("filter");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        const QString pictures = QStringLiteral("PNG (*.png)|*.png|SVG (*.svg)|*.svg");
        const QString plan = QStringLiteral("Text Files (*.mit)|*.mit|All Files (*.*)|*.*");
        QTest::newRow("none typed") << "/a/chart" << pictures << -1 << "/a/chart.png";
        QTest::newRow("first picked") << "/a/chart" << pictures << 0 << "/a/chart.png";
        QTest::newRow("other picked") << "/a/chart" << pictures << 1 << "/a/chart.svg";
        QTest::newRow("other picked, first typed") << "/a/chart.PNG" << pictures << 1 << "/a/chart.svg";
        QTest::newRow("other typed") << "/a/chart.SVG" << pictures << 0 << "/a/chart.SVG";
        QTest::newRow("other picked and typed") << "/a/chart.svg" << pictures << 1 << "/a/chart.svg";
        QTest::newRow("point in the name") << "/a/12.5 m" << pictures << -1 << "/a/12.5 m.png";
        QTest::newRow("point in the folder") << "/a.svg/chart" << pictures << -1 << "/a.svg/chart.png";
        QTest::newRow("point at the end") << "/a/chart." << pictures << -1 << "/a/chart.png";
        QTest::newRow("plan") << "/a/plan" << plan << 0 << "/a/plan.mit";
        QTest::newRow("plan as all files") << "/a/plan" << plan << 1 << "/a/plan.mit";
        QTest::newRow("plan of another ending") << "/a/plan.txt" << plan << 0 << "/a/plan.txt";
        QTest::newRow("cancelled") << "" << plan << -1 << "";
    }

    void theNameGetsTheEndingThatItLacks() {
        QFETCH(QString, typed);
        QFETCH(QString, filter);
        QFETCH(int, type);
        QFETCH(QString, name);
        QCOMPARE(withEnding(typed, filter, type), name);
    }
};

QTEST_MAIN(TestSavePath)
#include "test_savepath.moc"
