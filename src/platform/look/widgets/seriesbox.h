#pragma once

#include "platform/look/series.h"

#include <QCheckBox>

namespace benthor::look {

/// A check box for a chart's curve, with a swatch at its right end that is drawn as the curve is: same
/// colour, same dash.
class SeriesBox : public QCheckBox {
    Q_OBJECT

public:
    enum class Swatch {
        None,
        Line,    ///< one line for each series, one below the other
        Step,    ///< a line with a step
        Ramp,    ///< a row of fields, one for each series
        Diamond, ///< a mark
    };

    explicit SeriesBox(const QString& text, QWidget* parent = nullptr);

    void setSwatch(Swatch swatch, const QList<Series>& series = {});

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Swatch swatch_ = Swatch::None;
    QList<Series> series_;
};

} // namespace benthor::look
