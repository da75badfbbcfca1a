// The check of contrast finds what it is there for.

#include "tests/fit/contrastcheck.h"

#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QtTest>

using namespace benthor::tests;

class TestContrastCheck : public QObject {
    Q_OBJECT

private slots:
    void aPaleCaptionIsTold();
    void wordsThatArePaintedByHandAreMeasured();
    void theGroundIsWhatIsPaintedBehind();
    void nothingStandsOutMoreThanBlackOrWhite();
    void whatIsCoveredOrScrolledAwayIsNotLookedAt();
    void anInkMayBeExempt();
};

namespace {

const QString kWords = QStringLiteral("Words to be read");

/// Paints words in `ink` on `ground`, half as strong where that is asked for.
class Painted final : public QWidget {
public:
    Painted(const QColor& ink, const QColor& ground, double opacity = 1)
        : ink_(ink)
        , ground_(ground)
        , opacity_(opacity) {
        resize(300, 60);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), ground_);
        painter.setOpacity(opacity_);
        painter.setPen(ink_);
        painter.drawText(rect(), Qt::AlignCenter, kWords);
    }

private:
    QColor ink_;
    QColor ground_;
    double opacity_;
};

QWidget* window(QWidget& around, QWidget* part) {
    part->setParent(&around);
    around.resize(300, 60);
    around.show();
    return &around;
}

} // namespace

void TestContrastCheck::aPaleCaptionIsTold() {
    QWidget around;
    auto* label = new QLabel(kWords);
    label->resize(300, 60);
    QPalette colours = around.palette();
    colours.setColor(QPalette::Window, Qt::white);
    colours.setColor(QPalette::WindowText, QColor(0x80, 0x80, 0x80)); // 3.95
    around.setPalette(colours);
    window(around, label);
    const QStringList faults = paleTexts(&around, 4.5);
    QCOMPARE(faults.size(), 1);
    QVERIFY2(faults.first().contains(QStringLiteral("3.95")), qPrintable(faults.first()));
    QVERIFY(faults.first().contains(kWords));
    QCOMPARE(paleTexts(&around, 3.9), QStringList());
}

void TestContrastCheck::wordsThatArePaintedByHandAreMeasured() {
    QWidget around;
    window(around, new Painted(Qt::black, Qt::white, 0.5));
    QCOMPARE(paleTexts(&around, 4.5).size(), 1);
    QWidget other;
    window(other, new Painted(Qt::black, Qt::white));
    QCOMPARE(paleTexts(&other, 7), QStringList());
}

void TestContrastCheck::theGroundIsWhatIsPaintedBehind() {
    QWidget around;
    QPalette colours = around.palette();
    colours.setColor(QPalette::Window, Qt::white);
    colours.setColor(QPalette::WindowText, Qt::black);
    around.setPalette(colours);
    window(around, new Painted(QColor(0x30, 0x30, 0x30), Qt::black));
    const QStringList faults = paleTexts(&around, 4.5);
    QCOMPARE(faults.size(), 1);
    QVERIFY2(faults.first().contains(QStringLiteral("on #000000")), qPrintable(faults.first()));
}

void TestContrastCheck::nothingStandsOutMoreThanBlackOrWhite() {
    QWidget around;
    window(around, new Painted(Qt::black, Qt::red)); // 5.25, and white only 4
    QCOMPARE(paleTexts(&around, 7), QStringList());
    QWidget other;
    window(other, new Painted(Qt::white, Qt::red));
    QCOMPARE(paleTexts(&other, 7).size(), 1);
}

void TestContrastCheck::whatIsCoveredOrScrolledAwayIsNotLookedAt() {
    QWidget around;
    window(around, new Painted(Qt::gray, Qt::white));
    QCOMPARE(paleTexts(&around, 7).size(), 1);
    auto* cover = new QWidget(&around);
    cover->setAutoFillBackground(true);
    cover->resize(around.size());
    cover->show();
    QCOMPARE(paleTexts(&around, 7), QStringList());

    QScrollArea area;
    area.resize(200, 40);
    auto* tall = new QWidget;
    tall->resize(180, 400);
    auto* pale = new Painted(Qt::gray, Qt::white);
    pale->setParent(tall);
    pale->move(0, 300);
    area.setWidget(tall);
    area.show();
    QCOMPARE(paleTexts(&area, 7), QStringList());
    area.ensureWidgetVisible(pale);
    QCOMPARE(paleTexts(&area, 7).size(), 1);
}

void TestContrastCheck::anInkMayBeExempt() {
    QWidget around;
    window(around, new Painted(QColor(0x80, 0x80, 0x80), Qt::white));
    QCOMPARE(paleTexts(&around, 4.5).size(), 1);
    QCOMPARE(paleTexts(&around, 4.5, {qRgb(0x80, 0x80, 0x80)}), QStringList());
}

QTEST_MAIN(TestContrastCheck)
#include "test_contrastcheck.moc"
