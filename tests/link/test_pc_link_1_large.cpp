// The link screen with a large font on small displays.

#include "platform/look/widgets/columnarea.h"
#include "tests/link/linkstage.h"
#include "tests/support/largefont.h"

#include <QLabel>
#include <QScrollBar>

using namespace benthor;
using benthor::tests::LinkStage;

class TestPcLink1Large : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { benthor::tests::useLargeFont(); }

    void itScrollsDownAtTheMostAndNoColumnWithin_data();
    void itScrollsDownAtTheMostAndNoColumnWithin();
};

void TestPcLink1Large::itScrollsDownAtTheMostAndNoColumnWithin_data() {
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QSize>("size");
    const QSize first(1180, 760);
    QTest::newRow("download") << "Dive" << QStringList() << first;
    QTest::newRow("download, small display") << "Dive" << QStringList() << QSize(1024, 700);
    QTest::newRow("name") << "Command" << QStringList{"mnuPersSend"} << first;
    QTest::newRow("alarms, expert") << "Command" << QStringList{"mnuHud", "mnuAdvancedOption", "mnuIntget"}
                                    << first;
}

void TestPcLink1Large::itScrollsDownAtTheMostAndNoColumnWithin() {
    QFETCH(QString, mode);
    QFETCH(QStringList, entries);
    QFETCH(QSize, size);
    LinkStage stage(mode);
    stage.screen->showScreen();
    stage.connectDevice();
    for (const QString& entry : std::as_const(entries)) {
        stage.control<QAction>(qPrintable(entry))->trigger();
    }
    for (int step = 0; step < 10; ++step) {
        stage.screen->resize(size);
        QCoreApplication::processEvents();
    }
    const auto* area = static_cast<const QScrollArea*>(stage.screen->centralWidget());
    QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
    if (area->verticalScrollBar()->maximum() > 0) {
        for (const auto* column : stage.screen->findChildren<look::ColumnArea*>()) {
            QVERIFY(!column->isVisible() || column->verticalScrollBar()->maximum() == 0);
        }
    }
    QVERIFY(mode == QLatin1String("Dive") || entries.size() < 3 || area->verticalScrollBar()->maximum() > 0);
    // The hint grows with its words.
    const auto* hint = stage.control<QLabel>("infotext");
    QVERIFY(!hint->text().isEmpty());
    QCOMPARE_GE(hint->height(), hint->heightForWidth(hint->width()));
    // Free text has the room up to the button.
    if (entries.contains(QStringLiteral("mnuPersSend"))) {
        const auto* data = stage.control("Text9");
        const auto* send = stage.control("Command2");
        const int end = data->mapTo(stage.screen, QPoint(data->width(), 0)).x();
        QCOMPARE(send->mapTo(stage.screen, QPoint()).x() - end, look::spaceWide);
    }
}

QTEST_MAIN(TestPcLink1Large)
#include "test_pc_link_1_large.moc"
