// A view that moves is drawn plainly on the screen, and in full once it rests and wherever else it is
// painted.

#include "platform/chart/chart.h"

#include <QBackingStore>
#include <QtTest>

using namespace benthor::platform;

namespace {

constexpr QSize chartSize(800, 400);
constexpr int rows = 6000;

ChartMatrix dive() {
    ChartMatrix matrix(rows);
    for (int row = 1; row <= rows; ++row) {
        matrix.set(row, 1, -30 + 20 * std::cos(6.0 * row / rows) - row % 7);
        matrix.set(row, 4, row > rows / 2 ? -3 * (1 + row / 1000) : 0);
        matrix.set(row, 3, 1 + 0.3 * std::sin(0.01 * row));
        matrix.set(row, 15, row % 2000 < 1000 ? 0.7 : 1.3);
    }
    return matrix;
}

/// A chart with the dive and a cursor, in a window of its own.
struct Shown {
    Shown() {
        window.resize(chartSize);
        chart = new Chart(&window);
        chart->resize(chartSize);
        SeriesStyle step = chart->seriesStyle(15);
        step.step = true;
        step.dashes = {5, 3};
        step.width = 3;
        chart->setSeriesStyle(15, step);
        chart->setData(dive());
        chart->setCurrentRow(2500);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("no window");
        chart->repaint();
        chart->installEventFilter(&paints);
    }
    /// What stands on the screen.
    QImage screen() {
        const auto* image = dynamic_cast<QImage*>(window.backingStore()->paintDevice());
        return image->copy(QRect(QPoint(), chart->size() * chart->devicePixelRatioF()));
    }
    /// The moved view as it is painted before anything else happens: no timer runs meanwhile.
    QImage moved(RowRange view) {
        chart->setView(view);
        chart->repaint();
        return screen();
    }
    bool rests() {
        return QTest::qWaitFor([this] { return !chart->isMoving(); }) &&
               QTest::qWaitFor([this] { return screen() == still(); });
    }
    /// The same state of a chart that has never moved.
    QImage still() const {
        Chart other;
        other.resize(chart->size());
        other.setSeriesStyle(15, chart->seriesStyle(15));
        other.setData(chart->matrix());
        other.setView(chart->view());
        other.setCurrentRow(chart->row());
        return other.grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    class Paints : public QObject {
    public:
        QList<QRegion> regions;

    protected:
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Paint)
                regions += static_cast<QPaintEvent*>(event)->region();
            return false;
        }
    };

    QWidget window;
    Chart* chart;
    Paints paints;
};

QImage asScreen(const QPixmap& picture) {
    return picture.toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

class TestChartMotion : public QObject {
    Q_OBJECT

private slots:
    void aRestingChartShowsTheFullPicture() {
        Shown shown;
        QVERIFY(!shown.chart->isMoving());
        QCOMPARE(shown.screen(), shown.still());
    }

    void aMovedViewIsPlainAndThenFull() {
        Shown shown;
        const QImage plain = shown.moved({500, 4500});
        QVERIFY(shown.chart->isMoving());
        QVERIFY(plain != shown.still());
        QVERIFY(shown.rests());
    }

    void theLastOfManyMovementsIsSeenInFull() {
        Shown shown;
        for (int step = 0; step < 20; ++step) {
            shown.moved({100.0 + step, 3100.0 + step});
            QVERIFY(shown.chart->isMoving());
        }
        QVERIFY(shown.rests());
        QCOMPARE(shown.chart->view(), (RowRange{119, 3119}));
    }

    void anotherSizeIsAMovement() {
        Shown shown;
        shown.chart->resize(700, 350);
        QVERIFY(shown.chart->isMoving());
        shown.chart->repaint();
        QVERIFY(shown.screen() != shown.still());
        QVERIFY(shown.rests());
        QCOMPARE(shown.chart->axisRect()->rect(), shown.chart->plotArea());
    }

    void aPageThatIsTurnedToIsAMovement() {
        Shown shown;
        shown.chart->beginMove();
        shown.chart->setData(dive());
        shown.chart->repaint();
        QVERIFY(shown.screen() != shown.still());
        QVERIFY(shown.rests());
    }

    void whatOnlyChangesIsNoMovement() {
        Shown shown;
        shown.chart->setData(dive());
        shown.chart->setCurrentRow(40);
        shown.chart->setBackdrop(QColor(240, 240, 240));
        shown.chart->setUnits("m", "bar");
        shown.chart->setView(std::nullopt); // as it was
        QVERIFY(!shown.chart->isMoving());
    }

    void aChartThatWasNotSeenIsDrawnInFull() {
        Chart chart;
        chart.resize(chartSize);
        chart.setData(dive());
        chart.setView(RowRange{10, 3000});
        QVERIFY(!chart.isMoving());
        QWidget hidden;
        Chart inHidden(&hidden);
        inHidden.resize(300, 200);
        inHidden.setView(RowRange{0, 1});
        QVERIFY(!inHidden.isMoving());
    }

    void whatIsPaintedElsewhereIsTheFullPicture() {
        Shown shown;
        shown.moved({500, 4500});
        QCOMPARE(asScreen(shown.chart->grab()), shown.still());
        QVERIFY(!shown.chart->isMoving());
        shown.moved({600, 4600});
        QCOMPARE(asScreen(shown.window.grab()), shown.still()); // with what is around it
        shown.moved({700, 4700});
        const double ratio = shown.chart->devicePixelRatioF();
        QImage rendered(chartSize * ratio, QImage::Format_RGB32);
        rendered.setDevicePixelRatio(ratio);
        QPainter painter(&rendered);
        shown.chart->render(&painter); // as a print does
        painter.end();
        QCOMPARE(rendered, shown.still());
        QVERIFY(shown.rests());
    }

    void aPictureOfAnotherSizeLeavesTheMovement() {
        Shown shown;
        const QImage still = shown.chart->toPixmap(1000, 600).toImage();
        shown.chart->setView(RowRange{500, 4500});
        shown.moved({0, rows});
        QCOMPARE(shown.chart->toPixmap(1000, 600).toImage(), still);
        QVERIFY(shown.chart->isMoving());
        shown.chart->refresh();
        QVERIFY(shown.rests());
    }

    void aHiddenChartComesBackInFull() {
        Shown shown;
        shown.moved({500, 4500});
        shown.chart->hide();
        QVERIFY(QTest::qWaitFor([&] { return !shown.chart->isMoving(); }));
        shown.chart->show();
        QVERIFY(shown.rests());
    }

    void aChartMayGoWhileItMoves() {
        auto shown = std::make_unique<Shown>();
        shown->moved({500, 4500});
        QVERIFY(shown->chart->isMoving());
        shown.reset();
        QTest::qWait(2 * Chart::restInterval); // nothing is left to tick
    }

    void aPlainLineLiesOnTheFullOne() {
        Shown shown;
        const QImage plain = shown.moved({0, 5999});
        const QImage full = shown.still();
        const QRgb pen = shown.chart->seriesStyle(3).colour.rgb();
        const QRect inner = shown.chart->plotArea().adjusted(3, 3, -3, -3);
        const double ratio = shown.chart->devicePixelRatioF();
        const QRect plot(inner.topLeft() * ratio, inner.size() * ratio);
        int drawn = 0;
        for (int x = plot.left(); x < plot.right(); ++x) {
            for (int y = plot.top(); y < plot.bottom(); ++y) {
                if (plain.pixel(x, y) != pen)
                    continue;
                ++drawn;
                const QColor under = full.pixelColor(x, y);
                QVERIFY2(under != shown.chart->colours().backdrop,
                         qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
            }
        }
        QVERIFY2(drawn >= plot.width() - 5 * ratio, qPrintable(QString::number(drawn)));
    }

    void aChangeIsPaintedOnce() {
        Shown shown;
        QCoreApplication::processEvents();
        shown.paints.regions.clear();
        shown.chart->setData(dive());
        for (int round = 0; round < 5; ++round)
            QCoreApplication::processEvents();
        QCOMPARE(shown.paints.regions.size(), 1);
    }

    void theCursorIsPaintedAloneAndAsInAPicture() {
        Shown shown;
        QCoreApplication::processEvents();
        shown.paints.regions.clear();
        shown.chart->setCurrentRow(4000);
        QCoreApplication::processEvents();
        QVERIFY(!shown.paints.regions.isEmpty());
        for (const QRegion& region : shown.paints.regions) {
            for (const QRect& part : region)
                QVERIFY(part.width() <= 20);
        }
        QCOMPARE(shown.screen(), shown.still());
    }

    void aScreenOfAnotherDensityIsDrawnAnew() {
        Shown shown;
        shown.chart->setBufferDevicePixelRatio(3);
        shown.chart->repaint();
        QCOMPARE(shown.chart->bufferDevicePixelRatio(), shown.chart->devicePixelRatioF());
        QCOMPARE(shown.screen(), shown.still());
        shown.chart->setCurrentRow(100);
        shown.chart->repaint();
        QCOMPARE(shown.screen(), shown.still()); // no trace of the cursor before
    }
};

QTEST_MAIN(TestChartMotion)
#include "test_chartmotion.moc"
