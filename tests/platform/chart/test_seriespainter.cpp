// What a series looks like where rows share pixels, beside the plain polyline and polygon of every row.

#include "platform/chart/seriespainter.h"

#include <QPicture>
#include <QtTest>

using namespace benthor::platform;

namespace {

constexpr QSize size(640, 300);
const QRectF area(20, 10, 600, 280);
const ChartScale scale{0, 10, 1, {}};

std::vector<double> values(int rows, const std::function<double(double part)>& at) {
    std::vector<double> column(static_cast<size_t>(rows) + 1, ChartMatrix::empty);
    for (int row = 1; row <= rows; ++row)
        column[static_cast<size_t>(row)] = at(static_cast<double>(row) / rows);
    return column;
}

/// A dive's shape with unrest from row to row.
double uneasy(double part) {
    return 5 + 3 * std::sin(12 * part) + 0.8 * std::sin(4000 * part);
}

double smooth(double part) {
    return 5 + 3 * std::sin(12 * part);
}

double steps(double part) {
    return 2 + std::floor(part * 9) * 0.7;
}

SeriesStyle styleOf(double width, const QList<qreal>& dashes, bool step, SeriesFill fillTo) {
    SeriesStyle style;
    style.colour = QColor(0x1B, 0x49, 0x65);
    style.width = width;
    style.dashes = dashes;
    style.step = step;
    style.fillTo = fillTo;
    style.fill = QColor(0xDF, 0xE8, 0xEE);
    return style;
}

QImage blank(double ratio = 1) {
    QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    return image;
}

/// The place x is the middle of pixel column x, as the chart paints with antialiasing.
void draw(QPainter& painter, const std::vector<double>& column, const SeriesStyle& style) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0.5, 0.5);
    SeriesPainter series(area, static_cast<int>(column.size()) - 1);
    series.drawFill(painter, column, scale, style);
    series.drawLine(painter, column, scale, style);
}

QImage drawn(const std::vector<double>& column, const SeriesStyle& style, double ratio = 1) {
    QImage image = blank(ratio);
    QPainter painter(&image);
    draw(painter, column, style);
    return image;
}

/// Every row a point, nothing joined.
QImage plain(const std::vector<double>& column, const SeriesStyle& style, double ratio = 1) {
    QImage image = blank(ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0.5, 0.5);
    const int rows = static_cast<int>(column.size()) - 1;
    const SeriesPainter places(area, rows);
    QPolygonF line;
    for (int row = 1; row <= rows; ++row) {
        const double y = places.yOf(column[static_cast<size_t>(row)], scale);
        line.append(QPointF(places.xOf(row), y));
        if (style.step)
            line.append(QPointF(places.xOf(row + 1), y));
    }
    if (style.fillTo != SeriesFill::None) {
        const double edge = style.fillTo == SeriesFill::ToBottom ? area.bottom() + 1 : area.top();
        QPolygonF shape = line;
        shape.append(QPointF(line.last().x(), edge));
        shape.append(QPointF(line.first().x(), edge));
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.fill);
        painter.drawPolygon(shape);
    }
    painter.setPen(seriesPen(style));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(line);
    return image;
}

int darkness(const QImage& image, int x, int y) {
    return image.valid(x, y) ? 255 - qGray(image.pixel(x, y)) : 0;
}

/// How much ink, within the plot and without its outermost columns, one picture has where the other has none
/// within a pixel of the layout: lines that stand elsewhere.
int misplaced(const QImage& one, const QImage& other) {
    const double ratio = one.devicePixelRatio();
    const int reach = qRound(ratio);
    const auto isNear = [&](int x, int y) {
        for (int down = -reach; down <= reach; ++down) {
            for (int across = -reach; across <= reach; ++across) {
                if (darkness(other, x + across, y + down) >= 60)
                    return true;
            }
        }
        return false;
    };
    int count = 0;
    for (int y = 2; y < one.height() - 2; ++y) {
        for (int x = qRound((area.left() + 4) * ratio); x < (area.right() - 4) * ratio; ++x)
            count += darkness(one, x, y) >= 120 && !isNear(x, y) ? 1 : 0;
    }
    return count;
}

double ink(const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            sum += darkness(image, x, y);
    }
    return sum;
}

} // namespace

class TestSeriesPainter : public QObject {
    Q_OBJECT

private slots:
    void piecesLeaveNoSeam_data() {
        QTest::addColumn<double>("ratio");
        QTest::addColumn<bool>("step");
        QTest::newRow("solid") << 1.0 << false;
        QTest::newRow("solid, density 2") << 2.0 << false;
        QTest::newRow("solid, density 1.5") << 1.5 << false;
        QTest::newRow("steps") << 1.0 << true;
        QTest::newRow("steps, density 2") << 2.0 << true;
    }

    /// A recorded picture has the shapes in one piece; drawn in pieces they look the same.
    void piecesLeaveNoSeam() {
        QFETCH(double, ratio);
        QFETCH(bool, step);
        const auto column = values(6000, step ? steps : uneasy);
        const SeriesStyle style = styleOf(2, {}, step, SeriesFill::ToBottom);
        QPicture whole;
        QPainter recorder(&whole);
        draw(recorder, column, style);
        recorder.end();
        QImage expected = blank(ratio);
        QPainter painter(&expected);
        whole.play(&painter);
        painter.end();
        const QImage pieces = drawn(column, style, ratio);
        QVERIFY(ink(expected) > ink(blank(ratio)));
        int worst = 0;
        for (int y = 0; y < pieces.height(); ++y) {
            for (int x = 0; x < pieces.width(); ++x)
                worst = std::max(worst, std::abs(darkness(pieces, x, y) - darkness(expected, x, y)));
        }
        QVERIFY2(worst <= 3, qPrintable(QString::number(worst)));
    }

    void joinedColumnsLookAsEveryRowDrawn_data() {
        QTest::addColumn<double>("rowsAPixel");
        QTest::addColumn<double>("width");
        QTest::addColumn<bool>("step");
        QTest::addColumn<int>("fill");
        QTest::addColumn<double>("ratio");
        for (const double rows : {1.0, 1.5, 2.0, 2.5, 3.0}) {
            for (const double ratio : {1.0, 2.0}) {
                const auto row = [&](const char* what, double width, bool step, SeriesFill fill) {
                    QTest::addRow("%s, %g rows a pixel, density %g", what, rows, ratio)
                        << rows << width << step << static_cast<int>(fill) << ratio;
                };
                row("line", 1.5, false, SeriesFill::None);
                row("depth", 2, false, SeriesFill::ToBottom);
                row("ceiling", 1.5, true, SeriesFill::ToTop);
            }
        }
    }

    void joinedColumnsLookAsEveryRowDrawn() {
        QFETCH(double, rowsAPixel);
        QFETCH(double, width);
        QFETCH(bool, step);
        QFETCH(int, fill);
        QFETCH(double, ratio);
        const int rows = qRound(area.width() * rowsAPixel);
        for (const auto& shape : {smooth, steps}) {
            const auto column = values(rows, shape);
            const SeriesStyle style = styleOf(width, {}, step, static_cast<SeriesFill>(fill));
            const QImage joined = drawn(column, style, ratio);
            const QImage every = plain(column, style, ratio);
            QCOMPARE(misplaced(joined, every), 0);
            QCOMPARE(misplaced(every, joined), 0);
            // The columns beside a steep stretch take it up as well: a line is half as thick again there.
            const double share = ink(joined) / ink(every);
            QVERIFY2(share > 0.95 && share < 1.5, qPrintable(QString::number(share)));
        }
    }

    void aLevelLineIsAsThickAsEveryRowDrawn_data() { unrestIsCoveredAsEveryRowDrawn_data(); }

    void aLevelLineIsAsThickAsEveryRowDrawn() {
        QFETCH(double, rowsAPixel);
        const auto level = [](double) { return 5.0; };
        const auto column = values(qRound(area.width() * rowsAPixel), level);
        for (const double width : {1.5, 2.0, 3.0}) { // a line of one pixel is no stroke to the raster engine
            const SeriesStyle style = styleOf(width, {}, false, SeriesFill::None);
            const double share = ink(drawn(column, style)) / ink(plain(column, style));
            QVERIFY2(share > 0.98 && share < 1.02, qPrintable(QString::number(share)));
        }
    }

    void unrestIsCoveredAsEveryRowDrawn_data() {
        QTest::addColumn<double>("rowsAPixel");
        for (const double rows : {1.0, 2.0, 3.0})
            QTest::addRow("%g", rows) << rows;
    }

    void unrestIsCoveredAsEveryRowDrawn() {
        QFETCH(double, rowsAPixel);
        const auto column = values(qRound(area.width() * rowsAPixel), uneasy);
        const SeriesStyle style = styleOf(1.5, {}, false, SeriesFill::None);
        const QImage joined = drawn(column, style);
        const QImage every = plain(column, style);
        QCOMPARE(misplaced(every, joined), 0); // no row is lost
        QCOMPARE(misplaced(joined, every), 0); // and nothing is where no row leads
    }

    void dashesKeepTheirShare_data() { unrestIsCoveredAsEveryRowDrawn_data(); }

    void dashesKeepTheirShare() {
        QFETCH(double, rowsAPixel);
        const auto column = values(qRound(area.width() * rowsAPixel), [](double) { return 5.0; });
        const SeriesStyle style = styleOf(2, {6, 4}, false, SeriesFill::None);
        const QImage joined = drawn(column, style);
        const QImage every = plain(column, style);
        const double share = ink(joined) / ink(every);
        QVERIFY2(share > 0.95 && share < 1.05, qPrintable(QString::number(share)));
        const QImage solid = plain(column, styleOf(2, {}, false, SeriesFill::None));
        QVERIFY(ink(joined) < 0.7 * ink(solid));
    }
};

QTEST_MAIN(TestSeriesPainter)
#include "test_seriespainter.moc"
