#pragma once

#include "gas/setupchanges.h"

#include <QWidget>

class QLabel;
class QTableWidget;

namespace benthor::gas {

/// What an update would change in the device, against what it last reported, and what nobody has read from
/// it; nothing where nothing would go out. It stands beside everything else and keeps nothing from being
/// done.
class ChangesPanel : public QWidget {
    Q_OBJECT

public:
    explicit ChangesPanel(QWidget* parent = nullptr);

    /// `device`: the setup last received, empty for none. `text`: what goes out, empty where nothing does.
    /// `warnings`: how many there are.
    void show(const QString& device, const QString& text, int warnings);
    int changes() const { return changes_; }

    /// Its line of words may break, but the window is not asked for that: a low one shows less of the list.
    bool hasHeightForWidth() const override { return false; }

protected:
    bool event(QEvent* event) override;

private:
    QString heading(bool read, bool goes) const;

    QLabel* head_;
    QTableWidget* table_;
    int changes_ = 0;
    QString shown_;
};

} // namespace benthor::gas
