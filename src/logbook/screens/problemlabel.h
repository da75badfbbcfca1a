#pragma once

#include <QLabel>

namespace benthor::logbook {

/// Shows the messages of the validators, each behind a CR, one below the other: the first few, then how many
/// more there are. The tip holds them all.
class ProblemLabel : public QLabel {
    Q_OBJECT

public:
    explicit ProblemLabel(QWidget* parent = nullptr);

    static constexpr int mostLines = 4;

    /// The lines as they are painted.
    QStringList lines() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList messages() const;
};

} // namespace benthor::logbook
