#pragma once

#include "platform/chart/chartmatrix.h"
#include "platform/chart/chartscale.h"
#include "platform/chart/chartstyle.h"

#include <QTimer>
#include <qcustomplot.h>

namespace benthor::platform {

class CursorLayer;

/// A chart of up to 40 series over row numbers. The plot area runs from 5.7 % to 94.6 % of the widget's width
/// at every size; what stands above or below it takes its edges from plotLeft() and plotWidth().
///
/// The x axis runs from row 0 at the left edge to the last row n at the right edge, so row r stands at
/// plotLeft + plotWidth * r / n. In twips, as the mouse signals give it, that is 645 + 10065 * r / n, and the
/// whole part of (X - 645) / 10065 * n names the row at or left of the place X: a press on a drawn row is
/// that row or its neighbour.
///
/// Any change shows with the next paint; refresh() draws at once. While the view moves (another view, another
/// size, beginMove()) a chart on the screen is drawn plainly, and in full once nothing has moved for
/// restInterval. What is painted elsewhere (a grab, a print, a picture) is always the full one.
class Chart : public QCustomPlot {
    Q_OBJECT

public:
    static constexpr double plotLeftTwips = 645;
    static constexpr double plotWidthTwips = 10065;

    /// Milliseconds from the last movement to the full picture.
    static constexpr int restInterval = 50;

    explicit Chart(QWidget* parent = nullptr);
    ~Chart() override;

    /// Column k becomes series k. The cursor stays at its row.
    void setData(ChartMatrix matrix);
    const ChartMatrix& matrix() const { return matrix_; }
    /// The rows that fill the plot area; nothing: all of them. The scales stay those of all rows.
    void setView(std::optional<RowRange> view);
    RowRange view() const;

    /// Series 1 to 40; other numbers are ignored.
    void setSeriesStyle(int series, const SeriesStyle& style);
    const SeriesStyle& seriesStyle(int series) const;
    void setMarker(int series, const SeriesMarker& marker);
    const SeriesMarker& marker(int series) const;

    void setColours(const ChartColours& colours);
    const ChartColours& colours() const { return colours_; }
    /// The ground of the whole chart.
    void setBackdrop(const QColor& colour);
    /// The font of the axes; the title uses it in bold.
    void setAxisFont(const QFont& font);
    QFont axisFont() const { return axisFont_; }

    void setTitle(const QString& title);
    QString title() const { return title_; }
    /// Written at the right axis above its last label, and at the left one above its first from the top, as
    /// at the inner one.
    void setUnits(const QString& right, const QString& left, const QString& inner = {});
    QString innerUnit() const { return innerUnit_; }
    QString rightUnit() const { return rightUnit_; }
    QString leftUnit() const { return leftUnit_; }
    /// Dotted lines from top to bottom at these rows.
    void setRowLines(QList<int> rows);
    const QList<int>& rowLines() const { return rowLines_; }

    /// The row of the cursor; 0 shows none, and so does a row behind the last one unless setEdgeCursor() was
    /// told. Only the cursor is painted anew.
    void setCurrentRow(int row);
    int row() const { return row_; }
    /// Whether a row behind the last one stands at the right edge, without a ring. Not from the start.
    void setEdgeCursor(bool atEdge) { edgeCursor_ = atEdge; }
    bool hasEdgeCursor() const { return edgeCursor_; }
    /// Where the cursor stands, in pixels of the widget.
    double cursorX() const;

    /// The plot area in pixels of the widget.
    int plotLeft() const;
    int plotWidth() const;
    QRect plotArea() const;
    double xOfRow(double row) const;
    double yOfValue(double value, ChartAxis axis) const;
    /// Twips of a place in the widget: across by the plot area (645 at its left, 10710 at its right edge,
    /// going on beyond both), down by 15 to a pixel.
    double xTwips(double x) const;
    static double yTwips(double y) { return y * 15; }
    /// The place in the widget of an X in twips.
    double xOfTwips(double twips) const;

    const ChartScale& leftScale() const { return left_; }
    const ChartScale& rightScale() const { return right_; }
    const ChartScale& innerScale() const { return inner_; }
    const ChartScale& scaleOf(ChartAxis axis) const;
    /// What is written at that axis in the size that is drawn.
    AxisNotes notesOf(ChartAxis axis) const;

    void refresh();

    /// The next picture is one of a movement: the data that were given belong to a page that was turned to.
    /// Not while the chart has not yet been seen at rest.
    void beginMove();
    bool isMoving() const { return restTimer_.isActive(); }
    /// What is being drawn is a plain picture. The layers ask.
    bool isDrawnPlain() const { return drawsPlain_; }
    /// What is being drawn is a picture for elsewhere, the cursor in it. The layers ask.
    bool isDrawnWhole() const { return drawsWhole_; }

signals:
    /// The left button, anywhere on the chart.
    void pressed(double xTwips, double yTwips);
    void released(double xTwips, double yTwips);
    /// The mouse moved, with or without a button.
    void hovered(double xTwips, double yTwips);
    /// The mouse has left the chart.
    void hoverEnded();
    /// The wheel turned at a place: above 1 is nearer, below 1 further away.
    void wheelTurned(double xTwips, double factor);
    /// The middle button, or the left one with Shift, was dragged to the right by so many pixels.
    void dragged(double pixels);
    /// The left button was clicked twice. A press and a release came before.
    void doubleClicked();

protected:
    void draw(QCPPainter* painter) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    void setUpAxes();
    void updateScales();
    void updateColours();
    void updateTicks();
    void fitTicks();
    void changed();
    void redrawIfStale();
    void rest();
    bool isPaintedOnScreen() const;
    QRect cursorRect() const;
    ChartAxis axisOf(int series) const { return styles_[static_cast<size_t>(series)].axis; }

    ChartMatrix matrix_;
    std::optional<RowRange> view_;
    std::optional<double> dragX_; ///< where the drag of the view has come to
    std::array<SeriesStyle, ChartMatrix::columns> styles_;
    std::array<SeriesMarker, ChartMatrix::columns> markers_;
    ChartColours colours_;
    ChartScale left_;
    ChartScale right_;
    ChartScale inner_;
    QFont axisFont_;
    QString title_;
    QString rightUnit_;
    QString leftUnit_;
    QString innerUnit_;
    QList<int> rowLines_;
    int row_ = 0;
    QSize tickedSize_; ///< the size that the labels of the axes were chosen for
    bool edgeCursor_ = false;
    bool stale_ = true;
    CursorLayer* cursor_ = nullptr; ///< of the plot's layers
    QTimer restTimer_;              ///< runs while the view moves
    bool wasAtRest_ = false;        ///< a full picture has been seen
    bool drawsPlain_ = false;
    bool drawsWhole_ = false;
};

} // namespace benthor::platform
