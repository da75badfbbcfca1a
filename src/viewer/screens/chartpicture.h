#pragma once

#include "platform/files.h"

#include <QSize>
#include <QString>
#include <array>

class QCPPainter;
class QPaintDevice;

namespace benthor::platform {
class Chart;
}

namespace benthor::viewer {

class AlarmStripView;
class GasStripView;
class LegendStrip;

/// What a picture of the chart is made of.
struct ChartPictureParts {
    QString title;
    platform::Chart& chart;
    const GasStripView& gases;
    const AlarmStripView& alarms;
    const LegendStrip& legend;
    std::array<QString, 5> times; ///< the labels below the chart
};

/// The size of a picture in pixels of the layout.
QSize chartPictureSize(const ChartPictureParts& parts);

/// Paints the picture as large as it fits into `where`, from its upper left corner on.
void paintChartPicture(QCPPainter& painter, const QRectF& where, const ChartPictureParts& parts);

/// Paints chart, strips, time labels, legend and title on a device, which is scaled to fit. False when it
/// takes no painting.
bool paintChartPicture(QPaintDevice& device, const QSizeF& size, const ChartPictureParts& parts);

/// Writes the picture into a file, whole or not at all: SVG or PDF by the ending of its name, otherwise PNG.
platform::FileResult saveChartPicture(const QString& path, const ChartPictureParts& parts);

} // namespace benthor::viewer
