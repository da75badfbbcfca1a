// Redraws a chart with all its series beside a bare reference of the same work: one pass of a painter that
// draws, for each series and pixel column, a line from the least to the largest value, with the same pens and
// fills. What a chart on the screen paints while its view moves stands beside a frame of 16 ms.

#include "platform/chart/chart.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <random>

namespace {

using namespace benthor::platform;

constexpr int rows = 24997;
constexpr QSize chartSize(1920, 1080);
constexpr double frame = 0.016; // seconds

ChartMatrix allSeries() {
    ChartMatrix matrix(rows);
    std::mt19937 random(7);
    std::normal_distribution<double> noise(0, 1);
    for (int row = 1; row <= rows; ++row) {
        const double part = static_cast<double>(row) / rows;
        const double depth = 60 * std::min({1.0, part * 12, (1 - part) * 1.6}) + 0.1 * noise(random);
        const double ceiling = 3 * std::floor(std::max(0.0, depth / 2 - 10) / 3);
        for (int series = 1; series < ChartMatrix::columns; ++series) {
            if (series == 1)
                matrix.set(row, series, -std::max(depth, 0.0));
            else if (series == 4)
                matrix.set(row, series, -ceiling);
            else
                matrix.set(row, series,
                           1 + 0.05 * series + 0.2 * std::sin(part * series) + 0.02 * noise(random));
        }
    }
    return matrix;
}

void bareSeries(QPainter& painter, const ChartMatrix& matrix, const SeriesStyle& style,
                const ChartScale& scale, const QRect& plot, int series) {
    const std::span<const double> values = matrix.series(series);
    std::vector<QLineF> lines;
    std::vector<QRectF> fills;
    for (int column = 0; column < plot.width(); ++column) {
        const auto first = std::max<size_t>(1, static_cast<size_t>(column) * rows / plot.width());
        const auto end =
            std::min<size_t>(rows + 1, static_cast<size_t>(column + 1) * rows / plot.width() + 1);
        double low = values[first];
        double high = low;
        for (size_t row = first; row < end; ++row) {
            low = std::min(low, values[row]);
            high = std::max(high, values[row]);
        }
        const double x = plot.left() + column;
        const double top = plot.bottom() - scale.share(high) * plot.height();
        const double bottom = plot.bottom() - scale.share(low) * plot.height();
        lines.emplace_back(x, top, x, bottom);
        if (style.fillTo == SeriesFill::ToBottom)
            fills.emplace_back(x, top, 1, plot.bottom() - top);
        else if (style.fillTo == SeriesFill::ToTop)
            fills.emplace_back(x, plot.top(), 1, bottom - plot.top());
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(style.fill);
    painter.drawRects(fills.data(), static_cast<int>(fills.size()));
    painter.setPen(seriesPen(style));
    painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void reference(benchmark::State& state) {
    Chart chart;
    chart.resize(chartSize);
    chart.setData(allSeries());
    QPixmap picture(chartSize);
    for (auto step : state) {
        picture.fill(chart.colours().backdrop);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing, state.range(0) != 0);
        for (int series = 1; series < ChartMatrix::columns; ++series) {
            const SeriesStyle& style = chart.seriesStyle(series);
            const ChartScale& scale = style.axis == ChartAxis::Left ? chart.leftScale() : chart.rightScale();
            bareSeries(painter, chart.matrix(), style, scale, chart.plotArea(), series);
        }
    }
}

/// The series drawn anew into the chart's buffers, and these onto a picture, as a paint event does.
void redraw(benchmark::State& state) {
    Chart chart;
    chart.resize(chartSize);
    chart.setData(allSeries());
    QPixmap picture(chartSize);
    for (auto step : state) {
        chart.refresh();
        chart.render(&picture);
    }
}

/// Data given and drawn: what a click on a series box costs.
void dataAndRedraw(benchmark::State& state) {
    Chart chart;
    chart.resize(chartSize);
    const ChartMatrix matrix = allSeries();
    QPixmap picture(chartSize);
    for (auto step : state) {
        chart.setData(matrix);
        chart.render(&picture);
    }
}

/// A chart on the screen, seen at rest.
struct Shown {
    Shown() {
        chart.resize(chartSize);
        chart.setData(allSeries());
        chart.show();
        QCoreApplication::processEvents();
        chart.repaint();
    }
    Chart chart;
};

void report(benchmark::State& state) {
    state.counters["frame_share"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * frame,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// `samples`: those in the view, which moves by a part of it.
void movingView(benchmark::State& state) {
    Shown shown;
    const auto span = static_cast<double>(state.range(0));
    double first = 0;
    for (auto step : state) {
        first = first > 0 ? 0 : std::min(span / 100, rows - span);
        shown.chart.setView(RowRange{first, first + span});
        shown.chart.repaint();
    }
    report(state);
}

void movingSize(benchmark::State& state) {
    Shown shown;
    bool smaller = true;
    for (auto step : state) {
        shown.chart.resize(std::exchange(smaller, !smaller) ? chartSize - QSize(8, 8) : chartSize);
        QCoreApplication::processEvents();
    }
    report(state);
}

/// As the picture that follows the last movement.
void resting(benchmark::State& state) {
    Shown shown;
    for (auto step : state) {
        shown.chart.setColours(shown.chart.colours());
        shown.chart.repaint();
    }
    report(state);
}

void moveCursor(benchmark::State& state) {
    Shown shown;
    int row = 1;
    for (auto step : state) {
        shown.chart.setCurrentRow(row = (row + 7919) % rows + 1);
        QCoreApplication::processEvents();
    }
    report(state);
}

BENCHMARK(reference)
    ->Name("reference")
    ->ArgName("antialiased")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(redraw)->Unit(benchmark::kMillisecond);
BENCHMARK(dataAndRedraw)->Unit(benchmark::kMillisecond);
BENCHMARK(resting)->Unit(benchmark::kMillisecond);
BENCHMARK(movingView)
    ->ArgName("samples")
    ->Arg(24500)
    ->Arg(5000)
    ->Arg(1700)
    ->Arg(800)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(movingSize)->Unit(benchmark::kMillisecond);
BENCHMARK(moveCursor)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
