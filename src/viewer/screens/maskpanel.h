#pragma once

#include <QWidget>

namespace benthor::viewer {

/// Lies over an instrument that has had no value yet and says so; hidden once one was seen. Always as large
/// as what it covers.
class MaskPanel : public QWidget {
    Q_OBJECT

public:
    /// Covers `instrument`. `words` may be short where there is little room.
    MaskPanel(const QString& name, const QString& words, QWidget* instrument);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString words_;
};

} // namespace benthor::viewer
