#include "viewer/screens/chartpicture.h"

#include "platform/chart/chart.h"
#include "platform/look/look.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/gasstripview.h"
#include "viewer/screens/legendstrip.h"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cerrno>

namespace benthor::viewer {

namespace {

constexpr int kTitleHeight = 34;
constexpr int kGasHeight = 22;
constexpr int kTimesHeight = 20;
constexpr int kStripHeight = 30;
constexpr int kLegendGap = 8;  ///< around the lines of the legend, together
constexpr int kImageScale = 2; ///< pixels of a PNG to one of the layout

int legendHeight(const ChartPictureParts& parts) {
    return parts.legend.wholeHeight(parts.chart.plotWidth()) + kLegendGap;
}

class PicturePainter {
public:
    PicturePainter(QCPPainter& painter, const ChartPictureParts& parts)
        : painter_(painter)
        , parts_(parts)
        , size_(chartPictureSize(parts)) {}

    void paint() {
        painter_.fillRect(QRect({}, size_), parts_.chart.colours().backdrop);
        paintTitle(take(kTitleHeight));
        parts_.gases.paint(painter_, plotOf(take(kGasHeight)));
        paintChart(take(parts_.chart.height()));
        paintTimes(take(kTimesHeight));
        parts_.alarms.paint(painter_, plotOf(take(kStripHeight)));
        const QRect legend = plotOf(take(legendHeight(parts_)));
        parts_.legend.paintWhole(painter_, legend.adjusted(0, kLegendGap / 2, 0, 0),
                                 parts_.chart.colours().axisText);
    }

private:
    QRect take(int height) {
        const QRect row(0, top_, size_.width(), height);
        top_ += height;
        return row;
    }
    QRect plotOf(const QRect& row) const {
        return {parts_.chart.plotLeft(), row.top(), parts_.chart.plotWidth(), row.height()};
    }
    void paintTitle(const QRect& row) {
        painter_.setFont(look::strong(look::body()));
        painter_.setPen(parts_.chart.colours().cursor);
        painter_.drawText(plotOf(row), Qt::AlignLeft | Qt::AlignVCenter, parts_.title);
    }
    void paintChart(const QRect& row) {
        painter_.save();
        painter_.translate(row.topLeft());
        parts_.chart.toPainter(&painter_, row.width(), row.height());
        painter_.restore();
    }
    void paintTimes(const QRect& row) {
        const QRect plot = plotOf(row);
        painter_.setFont(look::numbers(11));
        painter_.setPen(parts_.chart.colours().axisText);
        for (std::size_t at = 0; at < parts_.times.size(); ++at) {
            const int centre = plot.left() + plot.width() * static_cast<int>(at) / 4;
            painter_.drawText(QRect(centre - 50, row.top(), 100, row.height()), Qt::AlignCenter,
                              parts_.times[at]);
        }
    }

    QCPPainter& painter_;
    const ChartPictureParts& parts_;
    QSize size_;
    int top_ = 0;
};

} // namespace

QSize chartPictureSize(const ChartPictureParts& parts) {
    return {parts.chart.width(), parts.chart.height() + kTitleHeight + kGasHeight + kTimesHeight +
                                     kStripHeight + legendHeight(parts)};
}

void paintChartPicture(QCPPainter& painter, const QRectF& where, const ChartPictureParts& parts) {
    const QSize own = chartPictureSize(parts);
    const double scale = std::min(where.width() / own.width(), where.height() / own.height());
    painter.save();
    painter.translate(where.topLeft());
    painter.scale(scale, scale);
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    PicturePainter(painter, parts).paint();
    painter.restore();
    // Painting elsewhere has told the chart another size.
    parts.chart.setViewport(parts.chart.rect());
    parts.chart.refresh();
}

bool paintChartPicture(QPaintDevice& device, const QSizeF& size, const ChartPictureParts& parts) {
    QCPPainter painter;
    if (!painter.begin(&device)) {
        return false;
    }
    paintChartPicture(painter, QRectF(QPointF(), size), parts);
    return painter.end();
}

namespace {

bool paintSvg(QIODevice& to, const ChartPictureParts& parts) {
    const QSize size = chartPictureSize(parts);
    QSvgGenerator svg;
    svg.setOutputDevice(&to);
    svg.setSize(size);
    svg.setViewBox(QRect({}, size));
    svg.setTitle(parts.title);
    return paintChartPicture(svg, size, parts);
}

bool paintPdf(QIODevice& to, const ChartPictureParts& parts) {
    QPdfWriter pdf(&to);
    pdf.setTitle(parts.title);
    pdf.setPageSize(QPageSize(chartPictureSize(parts), QPageSize::Point));
    pdf.setPageMargins({});
    return paintChartPicture(pdf, QSizeF(pdf.width(), pdf.height()), parts);
}

bool paintPng(QIODevice& to, const ChartPictureParts& parts) {
    QImage image(chartPictureSize(parts) * kImageScale, QImage::Format_RGB32);
    image.fill(Qt::white);
    return paintChartPicture(image, image.size(), parts) && image.save(&to, "PNG");
}

} // namespace

platform::FileResult saveChartPicture(const QString& path, const ChartPictureParts& parts) {
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    const bool painted = path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive) ? paintSvg(picture, parts)
                         : path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive)
                             ? paintPdf(picture, parts)
                             : paintPng(picture, parts);
    if (!painted) {
        return {QStringLiteral("The chart cannot be painted."), EIO};
    }
    return platform::writeFileWhole(path, picture.data());
}

} // namespace benthor::viewer
