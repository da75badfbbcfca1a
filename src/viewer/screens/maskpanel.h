#pragma once

#include <QWidget>

namespace benthor::viewer {

/// Lies over an instrument that has had no value yet and says so; hidden once one was seen. Always as large
/// as what it covers.
class MaskPanel : public QWidget {
    Q_OBJECT

public:
    /// Covers `instrument`. `words` may be short where there is little room; below a caption they stand where
    /// the value will.
    MaskPanel(const QString& name, const QString& words, QWidget* instrument, const QString& caption = {});

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString words_;
    QString caption_;
};

} // namespace benthor::viewer
