// The checks of the faces find what they are there for.

#include "tests/fit/fitcheck.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QtTest>

using namespace benthor::tests;

class TestFitCheck : public QObject {
    Q_OBJECT

private slots:
    void aCaptionThatIsTooWideIsCut();
    void aWrappedTextThatIsTooHighIsCut();
    void anEmptyLastLineIsNotCut();
    void aButtonAndAListAreCut();
    void whatIsHiddenIsNoFault();
    void aControlOutsideIsTold();
    void whatCanBeScrolledToIsNotOutside();
    void anOverlapIsTold();
    void whatSharesACellIsMeant();
};

namespace {

/// A window of that size with one control in the place.
template <class Control> struct Room {
    Room(QWidget* made, const QRect& place) {
        control = static_cast<Control*>(made);
        window.resize(200, 100);
        control->setObjectName(QStringLiteral("control"));
        control->setParent(&window);
        control->setGeometry(place);
        window.show();
    }
    QWidget window;
    Control* control = nullptr;
};

const QString kWords = QStringLiteral("words that take some room");

} // namespace

void TestFitCheck::aCaptionThatIsTooWideIsCut() {
    Room<QLabel> room(new QLabel(kWords), {0, 0, 40, 30});
    QCOMPARE(cutTexts(&room.window).size(), 1);
    QVERIFY(cutTexts(&room.window).first().contains(kWords));
    room.control->resize(room.control->sizeHint());
    QCOMPARE(cutTexts(&room.window), QStringList());
}

void TestFitCheck::aWrappedTextThatIsTooHighIsCut() {
    auto* label = new QLabel(kWords);
    label->setWordWrap(true);
    Room<QLabel> room(label, {0, 0, 60, 15});
    QCOMPARE(cutTexts(&room.window).size(), 1);
    label->resize(60, label->heightForWidth(60));
    QCOMPARE(cutTexts(&room.window), QStringList());
}

void TestFitCheck::anEmptyLastLineIsNotCut() {
    auto* label = new QLabel(QStringLiteral("one\ntwo\n"));
    Room<QLabel> room(label, {0, 0, 60, 2 * label->fontMetrics().lineSpacing()});
    QCOMPARE(cutTexts(&room.window), QStringList());
    label->setText(QStringLiteral("one\ntwo\nthree"));
    QCOMPARE(cutTexts(&room.window).size(), 1);
}

void TestFitCheck::aButtonAndAListAreCut() {
    Room<QPushButton> button(new QPushButton(kWords), {0, 0, 40, 30});
    QCOMPARE(cutTexts(&button.window).size(), 1);
    auto* list = new QComboBox;
    list->addItem(kWords);
    Room<QComboBox> box(list, {0, 0, 60, 30});
    QCOMPARE(cutTexts(&box.window).size(), 1);
    list->resize(list->sizeHint());
    QCOMPARE(cutTexts(&box.window), QStringList());
}

void TestFitCheck::whatIsHiddenIsNoFault() {
    Room<QLabel> room(new QLabel(kWords), {190, 0, 40, 30});
    room.control->hide();
    QCOMPARE(cutTexts(&room.window) + controlsOutside(&room.window), QStringList());
}

void TestFitCheck::aControlOutsideIsTold() {
    Room<QPushButton> room(new QPushButton, {190, 0, 40, 30});
    QCOMPARE(controlsOutside(&room.window).size(), 1);
    room.control->move(150, 0);
    QCOMPARE(controlsOutside(&room.window), QStringList());
}

void TestFitCheck::whatCanBeScrolledToIsNotOutside() {
    auto* contents = new QWidget;
    contents->resize(500, 500);
    auto* button = new QPushButton(contents);
    button->setGeometry(450, 450, 40, 30);
    auto* area = new QScrollArea;
    area->setWidget(contents);
    Room<QScrollArea> room(area, {0, 0, 200, 100});
    QCOMPARE(controlsOutside(&room.window), QStringList());
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QCOMPARE(controlsOutside(&room.window).size(), 1);
}

void TestFitCheck::anOverlapIsTold() {
    QWidget window;
    auto* column = new QVBoxLayout(&window);
    auto* one = new QPushButton;
    auto* other = new QPushButton;
    column->addWidget(one);
    column->addWidget(other);
    window.resize(200, 200);
    window.show();
    QCOMPARE(overlaps(&window), QStringList());
    other->move(one->pos() + QPoint(0, 5));
    QCOMPARE(overlaps(&window).size(), 1);
}

void TestFitCheck::whatSharesACellIsMeant() {
    QWidget window;
    auto* grid = new QGridLayout(&window);
    grid->addWidget(new QPushButton, 0, 0);
    grid->addWidget(new QCheckBox(kWords), 0, 0);
    window.resize(300, 100);
    window.show();
    QCOMPARE(overlaps(&window), QStringList());
}

QTEST_MAIN(TestFitCheck)
#include "test_fitcheck.moc"
