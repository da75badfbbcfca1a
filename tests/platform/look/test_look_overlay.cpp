#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/overlaycard.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QtTest>

using namespace benthor::look;

namespace {

/// A screen with a button and a field, and a card with two buttons over both.
struct Stage {
    QWidget window;
    QPushButton* beneath;
    QLineEdit* field;
    OverlayCard* overlay;
    QPushButton* stop;
    QPushButton* more;

    Stage()
        : beneath(new QPushButton(QStringLiteral("Morvalien Dive Log"), &window))
        , field(new QLineEdit(&window))
        , overlay(nullptr)
        , stop(new QPushButton(QStringLiteral("stop import")))
        , more(new QPushButton(QStringLiteral("more"))) {
        auto* column = new QVBoxLayout(&window);
        column->addWidget(beneath);
        column->addWidget(field);
        overlay = new OverlayCard(&window);
        overlay->body()->addWidget(stop);
        overlay->body()->addWidget(more);
        window.resize(800, 500);
        window.show();
        window.activateWindow();
    }
};

} // namespace

class TestLookOverlay : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void itIsHiddenUntilItIsShown();
    void itCoversItsAreaAndCentresItsCard();
    void itFollowsItsAreasSize();
    void itIsNoWiderThanASmallArea();
    void clicksDoNotReachWhatIsBeneath();
    void itsOwnButtonWorks();
    void escapeDoesNotCloseIt();
    void itTakesTheFocusAndGivesItBack();
    void tabStaysInTheCard();
};

void TestLookOverlay::initTestCase() {
    apply(*qApp);
}

void TestLookOverlay::itIsHiddenUntilItIsShown() {
    const Stage stage;
    QVERIFY(!stage.overlay->isVisible());
    QVERIFY(!stage.stop->isVisible());
    stage.overlay->show();
    QVERIFY(stage.stop->isVisible());
    stage.overlay->hide();
    QVERIFY(!stage.stop->isVisible());
}

void TestLookOverlay::itCoversItsAreaAndCentresItsCard() {
    const Stage stage;
    stage.overlay->show();
    QCOMPARE(stage.overlay->geometry(), stage.window.rect());
    QTRY_COMPARE(stage.overlay->card()->width(), scaled(520));
    const QPoint off = stage.overlay->card()->geometry().center() - stage.overlay->rect().center();
    QVERIFY(std::abs(off.x()) <= 1 && std::abs(off.y()) <= 1);
}

void TestLookOverlay::itFollowsItsAreasSize() {
    Stage stage;
    stage.overlay->show();
    QTRY_COMPARE(stage.overlay->card()->width(), scaled(520));
    const QSize card = stage.overlay->card()->size();
    stage.window.resize(1200, 700);
    QTRY_COMPARE(stage.overlay->size(), QSize(1200, 700));
    QCOMPARE(stage.overlay->card()->size(), card);
    const QPoint off = stage.overlay->card()->geometry().center() - stage.overlay->rect().center();
    QVERIFY(std::abs(off.x()) <= 1 && std::abs(off.y()) <= 1);
}

void TestLookOverlay::itIsNoWiderThanASmallArea() {
    Stage stage;
    stage.overlay->show();
    stage.window.resize(400, 400);
    QTRY_COMPARE(stage.overlay->size(), QSize(400, 400));
    QVERIFY(stage.overlay->rect().contains(stage.overlay->card()->geometry()));
}

void TestLookOverlay::clicksDoNotReachWhatIsBeneath() {
    Stage stage;
    const QSignalSpy spy(stage.beneath, &QPushButton::clicked);
    const QPoint at = stage.beneath->geometry().topLeft() + QPoint(5, 5);
    QCOMPARE(stage.window.childAt(at), stage.beneath);
    stage.overlay->show();
    QWidget* hit = stage.window.childAt(at);
    QCOMPARE(hit, stage.overlay);
    QTest::mouseClick(hit, Qt::LeftButton, {}, at);
    QTest::mouseDClick(hit, Qt::LeftButton, {}, at);
    QCOMPARE(spy.count(), 0);
    stage.overlay->hide();
    QTest::mouseClick(stage.window.childAt(at), Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
}

void TestLookOverlay::itsOwnButtonWorks() {
    Stage stage;
    const QSignalSpy spy(stage.stop, &QPushButton::clicked);
    stage.overlay->show();
    QTest::mouseClick(stage.stop, Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
}

void TestLookOverlay::escapeDoesNotCloseIt() {
    Stage stage;
    stage.overlay->show();
    QTest::keyClick(stage.stop, Qt::Key_Escape);
    QTest::keyClick(stage.overlay, Qt::Key_Escape);
    QVERIFY(stage.overlay->isVisible());
    QVERIFY(stage.window.isVisible());
}

void TestLookOverlay::itTakesTheFocusAndGivesItBack() {
    Stage stage;
    stage.field->setFocus();
    QTRY_VERIFY(stage.field->hasFocus());
    stage.overlay->show();
    QTRY_VERIFY(stage.stop->hasFocus());
    stage.overlay->hide();
    QTRY_VERIFY(stage.field->hasFocus());
}

void TestLookOverlay::tabStaysInTheCard() {
    Stage stage;
    stage.overlay->show();
    QTRY_VERIFY(stage.stop->hasFocus());
    QTest::keyClick(stage.stop, Qt::Key_Tab);
    QVERIFY(stage.more->hasFocus());
    QTest::keyClick(stage.more, Qt::Key_Tab);
    QVERIFY(stage.stop->hasFocus());
    QTest::keyClick(stage.stop, Qt::Key_Backtab);
    QVERIFY(stage.more->hasFocus());
}

QTEST_MAIN(TestLookOverlay)
#include "test_look_overlay.moc"
