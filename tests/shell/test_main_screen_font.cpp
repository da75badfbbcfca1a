// The main screen with a large font on the smallest display that screens are laid out for.

#include "platform/look/look.h"
#include "platform/look/widgets/contentsarea.h"
#include "tests/shell/mainstage.h"

#include <QPushButton>
#include <QScrollBar>

using namespace benthor;
using namespace benthor::tests;

class TestMainScreenFont : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void theWaysToAFirstDiveNeedNoScrolling();
};

void TestMainScreenFont::initTestCase() {
    QFont desktop(QStringLiteral("DejaVu Sans"));
    desktop.setPointSizeF(14);
    QApplication::setFont(desktop);
    look::apply(*qApp);
    QVERIFY(look::fontScale() > 1.3);
}

void TestMainScreenFont::theWaysToAFirstDiveNeedNoScrolling() {
    MainStage stage;
    stage.main->showScreen();
    stage.main->resize(1024, 700);
    const auto* area = stage.main->findChild<look::ContentsArea*>();
    QVERIFY(area != nullptr);
    QVERIFY(stage.control("firstdownload")->isVisible());
    QTRY_COMPARE(area->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(area->verticalScrollBar()->maximum(), 0);
    const QRect first = stage.control("firstdownload")->geometry();
    const QRect second = stage.control("firstfilefind")->geometry();
    const QRect third = stage.control("firstmerge")->geometry();
    QVERIFY(second.left() - first.right() > look::spaceTight);
    QVERIFY(third.left() - second.right() > look::spaceTight);
    for (const char* name : {"firstdownload", "firstfilefind", "firstmerge"}) {
        QVERIFY(stage.control(name)->width() >= stage.control(name)->sizeHint().width());
    }
}

QTEST_MAIN(TestMainScreenFont)
#include "test_main_screen_font.moc"
