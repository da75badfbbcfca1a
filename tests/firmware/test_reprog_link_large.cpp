// The firmware screen with a large font on a small display: it scrolls down, and nothing else.

#include "platform/look/widgets/columnarea.h"
#include "platform/look/widgets/status.h"
#include "tests/firmware/reprogstage.h"
#include "tests/support/largefont.h"

#include <QAction>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using namespace benthor;
using namespace benthor::firmware;
using namespace benthor::tests;

namespace {

void settle() {
    for (int i = 0; i < 10; ++i) {
        QCoreApplication::processEvents();
    }
}

struct Stage : ReprogStage {
    Stage()
        : ReprogStage(QByteArray(7041, 'x')) {
        screen->activateWindow();
        settle();
    }
    void resize(const QSize& size) {
        for (int step = 0; step < 2; ++step) {
            screen->resize(size);
            settle();
        }
    }
    QScrollArea* area() const { return static_cast<QScrollArea*>(screen->centralWidget()); }
};

} // namespace

class TestReprogLinkLarge : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { useLargeFont(); }

    void theLampsAreAllAsHighAsTheLongestWordsNeed_data() { sizes(); }
    void theLampsAreAllAsHighAsTheLongestWordsNeed() {
        QFETCH(QSize, size);
        Stage stage;
        stage.resize(size);
        const int before = stage.control("Label4(0)")->height();
        stage.hear({});
        stage.hear("Status check complete, press R, Enter to begin or Q to quit....... type rb\r\nshell:" +
                   QByteArray(23, '.') + "BEEF\r\n");
        settle();
        auto* longest = stage.control<look::StatusChip>("Label4(4)");
        QCOMPARE(longest->text(), QStringLiteral("KD Not same Check sum as chosen file"));
        QCOMPARE_GE(longest->height(), longest->heightForWidth(longest->width()));
        QCOMPARE_GE(longest->height(), before);
        for (int lamp = 0; lamp < 4; ++lamp) {
            const auto* one = stage.control(qPrintable(QStringLiteral("Label4(%1)").arg(lamp)));
            QCOMPARE(one->height(), longest->height());
            QCOMPARE(one->y(), longest->y());
        }
    }

    void nothingScrollsSidewaysNorWithinTheWindowThatScrolls_data() { sizes(); }
    void nothingScrollsSidewaysNorWithinTheWindowThatScrolls() {
        QFETCH(QSize, size);
        Stage stage;
        stage.control<QAction>("mnuAdvanced")->trigger();
        stage.resize(size);
        QCOMPARE(stage.screen->size(), size);
        QCOMPARE(stage.area()->horizontalScrollBar()->maximum(), 0);
        QCOMPARE_GT(stage.area()->verticalScrollBar()->maximum(), 0);
        const auto* keyboard = stage.screen->findChild<look::ColumnArea*>();
        QVERIFY(keyboard->isVisible());
        QCOMPARE(keyboard->verticalScrollBar()->maximum(), 0);
    }

    void itOpensAtItsHeadThoughTheKeyboardIsAtItsFoot() {
        Stage stage;
        stage.resize({1024, 700});
        QVERIFY(stage.control("SendCh(3)")->hasFocus());
        QCOMPARE(stage.area()->verticalScrollBar()->value(), 0);
    }

    void theGreatActsStandBelowTheKeysOnlyWhereTheyHaveNoRoomBeside() {
        Stage stage;
        const auto below = [&stage] {
            const auto top = [&stage](const char* name) {
                return stage.control(name)->mapTo(stage.screen.get(), QPoint()).y();
            };
            return top("Command2") >= top("SendCh(3)") + stage.control("SendCh(3)")->height();
        };
        stage.resize({1024, 700});
        QVERIFY(below());
        stage.resize({1920, 1080});
        QVERIFY(!below());
        stage.resize({1024, 700});
        QVERIFY(below());
    }

private:
    static void sizes() {
        QTest::addColumn<QSize>("size");
        QTest::newRow("small display") << QSize(1024, 700);
        QTest::newRow("first size") << QSize(1120, 744);
    }
};

QTEST_MAIN(TestReprogLinkLarge)
#include "test_reprog_link_large.moc"
