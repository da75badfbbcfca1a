#pragma once

#include "gas/setuptext.h"

#include <QWidget>

class QLabel;
class QTableWidget;

namespace benthor::gas {

/// What an update would change in the device, against what it last reported, and what nobody has read from
/// it. It stands beside everything else and keeps nothing from being done.
class ChangesPanel : public QWidget {
    Q_OBJECT

public:
    explicit ChangesPanel(QWidget* parent = nullptr);

    /// `device`: the setup last received, empty for none. `source`: where the texts came from, in words.
    void show(const QString& device, const QString& text, const QStringList& warnings, const QString& source);
    int changes() const { return changes_; }

private:
    QLabel* head_;
    QTableWidget* table_;
    QLabel* source_;
    int changes_ = 0;
    QString shown_;
};

} // namespace benthor::gas
