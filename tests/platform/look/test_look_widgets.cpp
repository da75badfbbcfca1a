#include "platform/look/look.h"
#include "platform/look/widgets/activitysweep.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/faultframe.h"
#include "platform/look/widgets/fold.h"
#include "platform/look/widgets/gauge.h"
#include "platform/look/widgets/segmentedchoice.h"
#include "platform/look/widgets/status.h"
#include "platform/look/widgets/stretchedcolumn.h"
#include "platform/look/widgets/toldbutton.h"
#include "platform/look/widgets/wholelabel.h"

#include <QAbstractButton>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QtTest>

using namespace benthor::look;

namespace {

QColor pixelOf(QWidget& widget, const QPoint& at) {
    return widget.grab().toImage().pixelColor(at);
}

} // namespace

class TestLookWidgets : public QObject {
    Q_OBJECT

private slots:
    void aLongLabelWrapsToTheWidthItGets();
    void initTestCase();
    void aStretchedColumnTakesWhatIsLeftAndKeepsItsLeastWidth();
    void aLabelIsClickedByAReleaseInside();
    void aLabelIsNotClickedByAReleaseOutside();
    void aLabelIsNotClickedByAnotherButton();
    void aLabelIsClickedByItsKeys_data();
    void aLabelIsClickedByItsKeys();
    void aDisabledLabelIsNotClicked();
    void aLabelShowsAPointingHandAndTakesTheFocus();
    void aRowIsClickedOnceWhereverItIsHit();
    void aRowIsOneStopOfTheTabKey();
    void aRowNamesItsTwoControls();
    void aChosenRowIsMarkedByGroundAndEdge();
    void aRowsSignIsHiddenUntilItIsShown();
    void aRowsToldColourStaysAsToldInBothThemes();
    void aToldButtonKeepsItsColourAndShowsABlock();
    void aToldButtonShowsItsBlockWhileDisabled();
    void aChipsWordsReadOnItsColour();
    void aChipThatWrapsIsAsHighAsItsWords();
    void aLampKeepsItsColourAndWords();
    void theSweepsWindowMovesByOneAndWraps();
    void aGaugeLightsWhatTheMaskNames();
    void aGaugeIsRedAboveItsLimit();
    void aFaultFrameNamesItsControls();
    void aFaultFrameScrollsManyWordsAndGreysWhatIsStale();
    void aWholeLabelShowsEveryLetter();
    void ofSegmentsOneHolds();
    void segmentsFollowTheArrowKeys();
    void choosingByProgramIsSilent();
    void aFoldOpensByMouseAndKeys();
    void aNoticeFollowsTheTheme();
    void theCornersOfACardStayRoundBesideWhatFillsIt();
};

void TestLookWidgets::aLongLabelWrapsToTheWidthItGets() {
    ClickableLabel label(
        QStringLiteral("a tip of many words that does not fit on a single line of its panel"));
    const int oneLine = label.sizeHint().height();
    QVERIFY(label.minimumSizeHint().width() > 200);
    label.setWordWrap(true);
    QVERIFY(label.minimumSizeHint().width() < 150);
    QVERIFY(label.hasHeightForWidth());
    QVERIFY(label.heightForWidth(150) > 2 * oneLine);
    QCOMPARE(label.heightForWidth(5000), oneLine);
    // What is painted reaches below the first line.
    label.resize(150, label.heightForWidth(150));
    const QImage picture = label.grab().toImage();
    const auto inked = [&picture](int from, int to) {
        for (int y = from; y < to; ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (qGray(picture.pixel(x, y)) < 120) {
                    return true;
                }
            }
        }
        return false;
    };
    QVERIFY(inked(picture.height() - oneLine, picture.height()));
}

void TestLookWidgets::initTestCase() {
    apply(*qApp);
    setTheme(Theme::Light);
}

void TestLookWidgets::aLabelIsClickedByAReleaseInside() {
    ClickableLabel label(QStringLiteral("Connection tips    >>>"));
    const QSignalSpy spy(&label, &ClickableLabel::clicked);
    QTest::mousePress(&label, Qt::LeftButton);
    QCOMPARE(spy.count(), 0);
    QTest::mouseRelease(&label, Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
}

void TestLookWidgets::aLabelIsNotClickedByAReleaseOutside() {
    ClickableLabel label(QStringLiteral("<<<"));
    const QSignalSpy spy(&label, &ClickableLabel::clicked);
    QTest::mousePress(&label, Qt::LeftButton);
    QTest::mouseRelease(&label, Qt::LeftButton, {}, QPoint(-5, -5));
    QCOMPARE(spy.count(), 0);
    QTest::mouseRelease(&label, Qt::LeftButton); // a release with no press of its own
    QCOMPARE(spy.count(), 0);
}

void TestLookWidgets::aLabelIsNotClickedByAnotherButton() {
    ClickableLabel label(QStringLiteral("<<<"));
    const QSignalSpy spy(&label, &ClickableLabel::clicked);
    QTest::mouseClick(&label, Qt::RightButton);
    QCOMPARE(spy.count(), 0);
}

void TestLookWidgets::aLabelIsClickedByItsKeys_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("clicks");
    QTest::newRow("Return") << static_cast<int>(Qt::Key_Return) << 1;
    QTest::newRow("Enter") << static_cast<int>(Qt::Key_Enter) << 1;
    QTest::newRow("Space") << static_cast<int>(Qt::Key_Space) << 1;
    QTest::newRow("A") << static_cast<int>(Qt::Key_A) << 0;
    QTest::newRow("Escape") << static_cast<int>(Qt::Key_Escape) << 0;
}

void TestLookWidgets::aLabelIsClickedByItsKeys() {
    QFETCH(int, key);
    ClickableLabel label(QStringLiteral("My Dives"));
    const QSignalSpy spy(&label, &ClickableLabel::clicked);
    QTest::keyClick(&label, static_cast<Qt::Key>(key));
    QTEST(static_cast<int>(spy.count()), "clicks");
}

void TestLookWidgets::aDisabledLabelIsNotClicked() {
    ClickableLabel label(QStringLiteral("My Dives"));
    label.setEnabled(false);
    const QSignalSpy spy(&label, &ClickableLabel::clicked);
    QTest::mouseClick(&label, Qt::LeftButton);
    QTest::keyClick(&label, Qt::Key_Return);
    QCOMPARE(spy.count(), 0);
}

void TestLookWidgets::aLabelShowsAPointingHandAndTakesTheFocus() {
    const ClickableLabel label(QStringLiteral("My Dives"));
    QCOMPARE(label.cursor().shape(), Qt::PointingHandCursor);
    QVERIFY(label.focusPolicy() & Qt::TabFocus);
}

void TestLookWidgets::aRowIsClickedOnceWhereverItIsHit() {
    EntryRow row(QStringLiteral("dives"), QStringLiteral("My Dives"));
    row.resize(220, row.sizeHint().height());
    row.show();
    const QSignalSpy spy(&row, &EntryRow::clicked);
    QTest::mouseClick(row.picture(), Qt::LeftButton);
    QCOMPARE(spy.count(), 1);
    QTest::mouseClick(row.caption(), Qt::LeftButton);
    QCOMPARE(spy.count(), 2);
    QTest::mouseClick(&row, Qt::LeftButton, {}, QPoint(2, 2));
    QCOMPARE(spy.count(), 3);
    QTest::keyClick(row.caption(), Qt::Key_Return);
    QCOMPARE(spy.count(), 4);
    QTest::keyClick(row.caption(), Qt::Key_Space);
    QCOMPARE(spy.count(), 5);
    ClickableLabel* sign = row.addSign(QStringLiteral("Picture9"), QStringLiteral("importfile"));
    sign->show();
    QTest::mouseClick(sign, Qt::LeftButton);
    QCOMPARE(spy.count(), 6);
}

void TestLookWidgets::aRowIsOneStopOfTheTabKey() {
    EntryRow row(QStringLiteral("dives"), QStringLiteral("My Dives"));
    QCOMPARE(row.picture()->focusPolicy(), Qt::NoFocus);
    QVERIFY(row.caption()->focusPolicy() & Qt::TabFocus);
    row.show();
    row.activateWindow();
    row.setFocus();
    QTRY_VERIFY(row.caption()->hasFocus());
}

void TestLookWidgets::aRowNamesItsTwoControls() {
    EntryRow row(QStringLiteral("dives"), QStringLiteral("My Dives"));
    row.setNames(QStringLiteral("Picture6"), QStringLiteral("lblodl(0)"));
    QCOMPARE(row.findChild<ClickableLabel*>(QStringLiteral("Picture6")), row.picture());
    QCOMPARE(row.findChild<ClickableLabel*>(QStringLiteral("lblodl(0)")), row.caption());
    QCOMPARE(row.caption()->text(), QStringLiteral("My Dives"));
    QCOMPARE(row.picture()->accessibleName(), QStringLiteral("My Dives"));
}

void TestLookWidgets::aChosenRowIsMarkedByGroundAndEdge() {
    EntryRow row(QStringLiteral("dives"), QStringLiteral("My Dives"));
    row.resize(220, 48);
    QVERIFY(!row.isChosen());
    row.setChosen(true);
    QVERIFY(row.isChosen());
    QCOMPARE(pixelOf(row, {1, 24}), tokens().accent);
    QCOMPARE(pixelOf(row, {200, 24}), tokens().accentsoft);
    row.setChosen(false);
    QVERIFY(pixelOf(row, {1, 24}) != tokens().accent);
}

void TestLookWidgets::aRowsSignIsHiddenUntilItIsShown() {
    EntryRow row(QStringLiteral("database"), QStringLiteral("Database Update"));
    const ClickableLabel* sign = row.addSign(QStringLiteral("Picture9"), QStringLiteral("importfile"));
    QCOMPARE(sign->objectName(), QStringLiteral("Picture9"));
    row.show();
    QVERIFY(!sign->isVisible());
}

void TestLookWidgets::aRowsToldColourStaysAsToldInBothThemes() {
    EntryRow row(QStringLiteral("database"), QStringLiteral("Database Update"));
    QVERIFY(!row.toldCaptionColour().isValid());
    row.setToldCaptionColour(QColor(0, 0, 255));
    for (const Theme one : {Theme::Dark, Theme::Light}) {
        setTheme(one);
        row.grab();
        QCOMPARE(row.toldCaptionColour(), QColor(0, 0, 255));
    }
    row.setToldCaptionColour(QColor());
    QVERIFY(!row.toldCaptionColour().isValid());
}

void TestLookWidgets::aToldButtonKeepsItsColourAndShowsABlock() {
    ToldButton button(QStringLiteral("import dives"));
    const int plain = button.sizeHint().width();
    button.setToldBackground(QColor(0, 255, 0));
    QCOMPARE(button.toldBackground(), QColor(0, 255, 0));
    QCOMPARE(button.property("toldBackground").value<QColor>(), QColor(0, 255, 0));
    QCOMPARE(button.sizeHint().width(), plain + toldBlockWidth);
    button.resize(button.sizeHint());
    QCOMPARE(pixelOf(button, {5, button.height() / 2}), QColor(0, 255, 0));
    QCOMPARE(pixelOf(button, {toldBlockWidth + 4, button.height() / 2}), tokens().surface);
    setTheme(Theme::Dark);
    QCOMPARE(button.toldBackground(), QColor(0, 255, 0));
    setTheme(Theme::Light);
    QVERIFY(button.setProperty("toldBackground", QColor(255, 0, 0)));
    QCOMPARE(button.toldBackground(), QColor(255, 0, 0));
}

void TestLookWidgets::aToldButtonShowsItsBlockWhileDisabled() {
    ToldButton button(QStringLiteral("import dives"));
    button.setToldBackground(QColor(255, 0, 0));
    button.setEnabled(false);
    button.resize(button.sizeHint());
    QCOMPARE(pixelOf(button, {5, button.height() / 2}), QColor(255, 0, 0));
}

void TestLookWidgets::aChipsWordsReadOnItsColour() {
    StatusChip chip;
    chip.setText(QStringLiteral("Connected"));
    chip.setToldBackground(QColor(0, 255, 0));
    chip.resize(chip.sizeHint());
    QCOMPARE(chip.text(), QStringLiteral("Connected"));
    QCOMPARE(chip.height(), 40);
    QCOMPARE(pixelOf(chip, {6, 20}), QColor(0, 255, 0));
    QCOMPARE(chip.property("toldBackground").value<QColor>(), QColor(0, 255, 0));
}

void TestLookWidgets::aChipThatWrapsIsAsHighAsItsWords() {
    StatusChip chip;
    chip.setWrapping();
    chip.setText(QStringLiteral("OK"));
    QCOMPARE(chip.heightForWidth(200), 40);
    const int line = chip.fontMetrics().lineSpacing();
    chip.setText(QStringLiteral("one\ntwo\nthree\nfour"));
    QCOMPARE_GE(chip.heightForWidth(200), 4 * line);
    const int wide = chip.fontMetrics().horizontalAdvance(QStringLiteral("words words"));
    chip.setText(QStringLiteral("words words words words words words"));
    QCOMPARE_GE(chip.heightForWidth(wide), 5 * line); // the words' room is less than the chip
    chip.setIconName(QStringLiteral("check"));
    QCOMPARE_GE(chip.heightForWidth(wide), 6 * line);
}

void TestLookWidgets::aLampKeepsItsColourAndWords() {
    LampDot lamp;
    lamp.setText(QStringLiteral("Searching"));
    lamp.setToldColour(QColor(255, 255, 0));
    lamp.resize(lamp.sizeHint());
    QCOMPARE(lamp.toldColour(), QColor(255, 255, 0));
    QCOMPARE(pixelOf(lamp, {6, lamp.height() / 2}), QColor(255, 255, 0));
}

void TestLookWidgets::theSweepsWindowMovesByOneAndWraps() {
    ActivitySweep sweep;
    for (int step = 0; step < 2 * ActivitySweep::segments; ++step) {
        int lit = 0;
        for (int k = 0; k < ActivitySweep::segments; ++k) {
            lit += sweep.isLit(k) ? 1 : 0;
        }
        QCOMPARE(lit, ActivitySweep::window);
        QCOMPARE(sweep.position(), step % ActivitySweep::segments);
        QVERIFY(sweep.isLit(sweep.position()));
        sweep.advance();
    }
    sweep.restart();
    QCOMPARE(sweep.position(), 0);
    QVERIFY(sweep.findChildren<QTimer*>().isEmpty());
}

void TestLookWidgets::aGaugeLightsWhatTheMaskNames() {
    Gauge gauge;
    gauge.setColour(QColor(0, 128, 0));
    gauge.resize(300, 12);
    QVERIFY(!gauge.isLit(0));
    gauge.setLit(0b1011);
    QVERIFY(gauge.isLit(0) && gauge.isLit(1) && !gauge.isLit(2) && gauge.isLit(3) && !gauge.isLit(4));
    QCOMPARE(gauge.property("lit").toUInt(), 0b1011U);
    QCOMPARE(pixelOf(gauge, {1, 6}), QColor(0, 128, 0));
    QCOMPARE(pixelOf(gauge, {12, 6}), QColor(0, 128, 0));
    QCOMPARE(pixelOf(gauge, {38, 6}), tokens().sunken);
}

void TestLookWidgets::aGaugeIsRedAboveItsLimit() {
    Gauge gauge;
    gauge.setColour(QColor(0, 128, 0));
    gauge.resize(300, 12);
    gauge.setLit(0x3FFF);
    QCOMPARE(pixelOf(gauge, {290, 6}), tokens().bad);
    gauge.setLimit(0);
    QCOMPARE(pixelOf(gauge, {290, 6}), QColor(0, 128, 0));
}

void TestLookWidgets::aFaultFrameNamesItsControls() {
    auto* text = new QLabel;
    text->setObjectName(QStringLiteral("lblproblem"));
    FaultFrame frame(text, QStringLiteral("cmdcloseproblem"));
    frame.text()->setText(QStringLiteral("Gas Profile - Error in Gas Type2 format !"));
    QCOMPARE(frame.findChild<QLabel*>(QStringLiteral("lblproblem")), frame.text());
    QCOMPARE(frame.findChild<QAbstractButton*>(QStringLiteral("cmdcloseproblem")), frame.closeButton());
    frame.resize(600, 60);
    QCOMPARE(pixelOf(frame, {300, 0}), tokens().bad);
}

void TestLookWidgets::aFaultFrameScrollsManyWordsAndGreysWhatIsStale() {
    auto* text = new WholeLabel;
    FaultFrame frame(text, QStringLiteral("cmdcloseproblem"));
    frame.title()->setText(QStringLiteral("D0000012 cannot be read whole"));
    QStringList messages;
    for (int i = 0; i < 30; ++i) {
        messages += QStringLiteral("Gas Profile - Error in Gas Type%1 format !").arg(i);
    }
    text->setText(u'\r' + messages.join(u'\r'));
    frame.resize(400, frame.heightForWidth(400));
    frame.show();
    QVERIFY(frame.height() < 10 * frame.fontMetrics().lineSpacing());
    QCOMPARE(text->linesAt(10000), messages);
    auto* area = frame.findChild<QScrollArea*>();
    QTRY_VERIFY(area->verticalScrollBar()->maximum() > 0);
    QVERIFY(text->height() >= text->heightForWidth(text->width()));
    frame.setStale(true);
    QVERIFY(!text->isEnabled() && !frame.title()->isEnabled());
    QVERIFY(pixelOf(frame, {200, 0}) != tokens().bad);
    QVERIFY(frame.closeButton()->isEnabled());
    frame.setStale(false);
    QVERIFY(text->isEnabled());
}

void TestLookWidgets::aWholeLabelShowsEveryLetter() {
    WholeLabel label;
    const QString name = QStringLiteral("System processing : ") + QString(200, u'x') + QStringLiteral(".txt");
    label.setText(name);
    const QStringList lines = label.linesAt(150);
    QVERIFY(lines.size() > 3);
    QCOMPARE(lines.join(QString()).remove(u' '), QString(name).remove(u' '));
    for (const QString& line : lines) {
        QVERIFY(label.fontMetrics().horizontalAdvance(line) <= 150);
    }
    QCOMPARE(label.heightForWidth(150), static_cast<int>(lines.size()) * label.fontMetrics().lineSpacing());
    label.setText(QStringLiteral("\rone\rtwo\r\nthree\n"));
    QCOMPARE(label.linesAt(500), QStringList({"one", "two", "three"}));
}

void TestLookWidgets::ofSegmentsOneHolds() {
    SegmentedChoice choice;
    choice.addChoice(QStringLiteral("Date"), 0);
    choice.addChoice(QStringLiteral("MaxDepth"), 7);
    QCOMPARE(choice.current(), -1);
    const QSignalSpy spy(&choice, &SegmentedChoice::chosen);
    QTest::mouseClick(choice.button(7), Qt::LeftButton);
    QCOMPARE(choice.current(), 7);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().toInt(), 7);
    QTest::mouseClick(choice.button(7), Qt::LeftButton);
    QCOMPARE(spy.count(), 2);
    QTest::mouseClick(choice.button(0), Qt::LeftButton);
    QCOMPARE(choice.current(), 0);
    QVERIFY(!choice.button(7)->isChecked());
}

void TestLookWidgets::segmentsFollowTheArrowKeys() {
    SegmentedChoice choice;
    choice.addChoice(QStringLiteral("Date"), 0);
    choice.addChoice(QStringLiteral("MaxDepth"), 1);
    choice.setCurrent(0);
    choice.show();
    choice.activateWindow();
    choice.button(0)->setFocus();
    QTRY_VERIFY(choice.button(0)->hasFocus());
    QTest::keyClick(choice.button(0), Qt::Key_Right);
    QVERIFY(choice.button(1)->hasFocus());
    QCOMPARE(choice.current(), 1);
}

void TestLookWidgets::choosingByProgramIsSilent() {
    SegmentedChoice choice;
    choice.addChoice(QStringLiteral("Date"), 0);
    choice.addChoice(QStringLiteral("Site"), 1);
    const QSignalSpy spy(&choice, &SegmentedChoice::chosen);
    choice.setCurrent(1);
    QCOMPARE(choice.current(), 1);
    choice.setCurrent(99);
    QCOMPARE(choice.current(), -1);
    QCOMPARE(spy.count(), 0);
}

void TestLookWidgets::aFoldOpensByMouseAndKeys() {
    Fold fold(QStringLiteral("Single dive"));
    auto* inside = new QLabel(QStringLiteral("inside"));
    fold.body()->addWidget(inside);
    fold.show();
    const QSignalSpy spy(&fold, &Fold::toggled);
    QVERIFY(!fold.isOpen() && !inside->isVisible());
    QTest::mouseClick(fold.header(), Qt::LeftButton);
    QVERIFY(fold.isOpen() && inside->isVisible());
    QTest::keyClick(fold.header(), Qt::Key_Return);
    QVERIFY(!fold.isOpen() && !inside->isVisible());
    QTest::keyClick(fold.header(), Qt::Key_Space);
    QVERIFY(fold.isOpen());
    fold.setOpen(true);
    QCOMPARE(spy.count(), 3);
}

void TestLookWidgets::aNoticeFollowsTheTheme() {
    NoticeBand band(QStringLiteral("DO NOT HIT OTHER KEYS OR TERMINATE PROGRAM"));
    setTheme(Theme::Light);
    QCOMPARE(band.label()->palette().color(QPalette::WindowText), tokens(Theme::Light).notice);
    setTheme(Theme::Dark);
    QCOMPARE(band.label()->palette().color(QPalette::WindowText), tokens(Theme::Dark).notice);
    setTheme(Theme::Light);
}

void TestLookWidgets::aStretchedColumnTakesWhatIsLeftAndKeepsItsLeastWidth() {
    QTreeWidget tree;
    tree.setColumnCount(3);
    new StretchedColumn(&tree, 1, 150);
    tree.resize(600, 200);
    tree.show();
    QVERIFY(QTest::qWaitForWindowExposed(&tree));
    tree.header()->resizeSection(0, 100);
    tree.header()->resizeSection(2, 120);
    QCOMPARE(tree.header()->sectionSize(1), tree.viewport()->width() - 220);
    QCOMPARE(tree.horizontalScrollBar()->maximum(), 0);
    tree.resize(300, 200);
    QTRY_COMPARE(tree.header()->sectionSize(1), scaled(150));
    QVERIFY(tree.horizontalScrollBar()->maximum() > 0);
    tree.resize(500, 200);
    QTRY_COMPARE(tree.header()->sectionSize(1), tree.viewport()->width() - 220);
}

void TestLookWidgets::theCornersOfACardStayRoundBesideWhatFillsIt() {
    Card bare;
    Card full;
    full.body()->setContentsMargins(1, 1, 1, 1);
    full.body()->setSpacing(0);
    auto* head = new QLabel(QStringLiteral("Dives of the device"));
    auto* table = new QTableWidget;
    table->setFrameShape(QFrame::NoFrame);
    full.body()->addWidget(head);
    full.body()->addWidget(table, 1);
    full.roundOff(table);
    for (const QSize size : {QSize(200, 150), QSize(300, 180)}) {
        QImage pictures[2];
        int at = 0;
        for (Card* card : {&bare, &full}) {
            card->resize(size);
            card->show();
            pictures[at++] = card->grab().toImage();
        }
        for (int x = 0; x < radius; ++x) {
            for (int y = size.height() - radius; y < size.height(); ++y) {
                QCOMPARE(pictures[1].pixelColor(x, y), pictures[0].pixelColor(x, y));
                const int right = size.width() - 1 - x;
                QCOMPARE(pictures[1].pixelColor(right, y), pictures[0].pixelColor(right, y));
            }
        }
    }
}

QTEST_MAIN(TestLookWidgets)
#include "test_look_widgets.moc"
