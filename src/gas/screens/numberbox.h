#pragma once

#include <QLineEdit>

namespace benthor::gas {

/// A box for a number. One that must not go out as it stands is edged red and bears a sign; why stands in its
/// tool tip, below its own.
class NumberBox : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(QString wrong READ wrong)

public:
    explicit NumberBox(const QString& tip = {}, QWidget* parent = nullptr);

    /// Empty: nothing is wrong.
    void setWrong(const QString& why);
    QString wrong() const { return why_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString tip_;
    QString why_;
};

} // namespace benthor::gas
