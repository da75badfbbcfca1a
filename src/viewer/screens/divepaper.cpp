#include "viewer/screens/divepaper.h"

#include "platform/chart/chart.h"
#include "platform/look/look.h"
#include "profile/gridcells.h"
#include "viewer/samplepages.h"

#include <QPrinter>

#include <array>

namespace benthor::viewer {

namespace {

constexpr double kDotsPerUnit = 96; ///< units of the layout in an inch
constexpr int kTitleHeight = 28;
constexpr int kCaptionHeight = 15;
constexpr int kValueHeight = 20;
constexpr int kHeadGap = 12;
constexpr int kLinePadding = 3;
constexpr int kColumnPadding = 5; // left and right of a text

/// Pixels of the printer for one of the layout, and its page in those of the layout.
struct Paper {
    explicit Paper(const QPrinter& printer)
        : scale(printer.logicalDpiX() / kDotsPerUnit)
        , size(printer.pageRect(QPrinter::DevicePixel).size() / scale) {}
    double scale;
    QSizeF size;
};

/// Returns the height that the head has taken.
double paintHead(QPainter& painter, double width, const QString& title, const QList<PaperValue>& head) {
    painter.setPen(Qt::black);
    painter.setFont(look::heading());
    painter.drawText(QRectF(0, 0, width, kTitleHeight), Qt::AlignLeft | Qt::AlignVCenter, title);
    double left = 0;
    double top = kTitleHeight;
    for (const PaperValue& one : head) {
        const double needed = std::max(QFontMetrics(look::caption()).horizontalAdvance(one.caption),
                                       QFontMetrics(look::strong(look::body())).horizontalAdvance(one.value));
        if (left > 0 && left + needed > width) {
            left = 0;
            top += kCaptionHeight + kValueHeight;
        }
        painter.setFont(look::caption());
        painter.drawText(QPointF(left, top + kCaptionHeight - kLinePadding), one.caption);
        painter.setFont(look::strong(look::body()));
        painter.drawText(QPointF(left, top + kCaptionHeight + kValueHeight - 2 * kLinePadding), one.value);
        left += needed + look::spaceRoom;
    }
    return top + kCaptionHeight + kValueHeight + kHeadGap;
}

/// Paints pages of samples.
class SamplePainter {
public:
    SamplePainter(QPainter& painter, const PaperSamples& samples, QSizeF paper)
        : painter_(painter)
        , samples_(samples)
        , paper_(paper)
        , font_(look::numbers(11)) {
        const QFontMetrics metrics(font_);
        rowHeight_ = metrics.height() + kLinePadding;
        const std::vector<int> columns = printedColumns(samples.profile, samples.lastsample);
        for (const int column : columns) {
            widths_[static_cast<size_t>(column)] = widthOf(column, metrics);
        }
        pages_ = samplePages(
            columns, [this](int column) { return widths_[static_cast<size_t>(column)]; }, rowHeight_, paper,
            samples.lastsample);
    }

    const SamplePages& pages() const { return pages_; }

    /// Page from 0.
    void paint(int page) {
        const auto sheets = static_cast<int>(pages_.sheets.size());
        const std::vector<int>& sheet = pages_.sheets[static_cast<size_t>(page % sheets)];
        const int first = page / sheets * pages_.rowsOfPage + 1;
        const int last = std::min(first + pages_.rowsOfPage - 1, samples_.lastsample);
        painter_.setFont(look::strong(font_));
        paintRow(sheet, 0, 0);
        painter_.setFont(font_);
        for (int row = first; row <= last; ++row) {
            paintRow(sheet, row, (row - first + 1) * rowHeight_);
        }
        painter_.drawText(
            QRectF(0, paper_.height() - rowHeight_, paper_.width(), rowHeight_),
            Qt::AlignRight | Qt::AlignVCenter,
            QStringLiteral("%1   %2 / %3")
                .arg(samples_.title, QString::number(page + 1), QString::number(pages_.pages())));
    }

private:
    QString text(int row, int column) const {
        return row == 0
                   ? profile::gridHeading(column)
                   : profile::cellText(samples_.profile, samples_.gasname, samples_.interval, row, column);
    }
    /// Of the longest text; all figures are equally wide.
    double widthOf(int column, const QFontMetrics& metrics) const {
        QString longest;
        for (int row = 1; row <= samples_.lastsample; ++row) {
            const QString one = text(row, column);
            longest = one.size() > longest.size() ? one : longest;
        }
        const int heading = QFontMetrics(look::strong(font_)).horizontalAdvance(profile::gridHeading(column));
        return std::max(heading, metrics.horizontalAdvance(longest)) + 2 * kColumnPadding;
    }
    void paintRow(const std::vector<int>& sheet, int row, double top) {
        double left = 0;
        for (const int column : sheet) {
            const QRectF cell(left, top, widths_[static_cast<size_t>(column)], rowHeight_);
            painter_.setPen(QColor(Qt::lightGray));
            painter_.drawLine(cell.bottomLeft(), cell.bottomRight());
            painter_.setPen(Qt::black);
            painter_.drawText(cell.adjusted(kColumnPadding, 0, -kColumnPadding, 0),
                              Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text(row, column));
            left += cell.width();
        }
    }

    QPainter& painter_;
    const PaperSamples& samples_;
    QSizeF paper_;
    QFont font_;
    int rowHeight_ = 1;
    std::array<double, profile::kSampleColumns> widths_{};
    SamplePages pages_;
};

} // namespace

bool printDive(QPrinter& printer, const QString& title, const QList<PaperValue>& head,
               const ChartPictureParts& parts) {
    QCPPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const Paper paper(printer);
    painter.scale(paper.scale, paper.scale);
    const double top = paintHead(painter, paper.size.width(), title, head);
    paintChartPicture(painter, QRectF(0, top, paper.size.width(), paper.size.height() - top), parts);
    return painter.end();
}

bool printSamples(QPrinter& printer, const PaperSamples& samples,
                  const std::function<bool(int done, int pages)>& goOn) {
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    const Paper paper(printer);
    painter.scale(paper.scale, paper.scale);
    SamplePainter sheets(painter, samples, paper.size);
    const int pages = sheets.pages().pages();
    for (int page = 0; page < pages; ++page) {
        if (!goOn(page, pages)) {
            painter.end();
            printer.abort();
            return false;
        }
        if (page > 0) {
            printer.newPage();
        }
        sheets.paint(page);
    }
    return painter.end();
}

} // namespace benthor::viewer
