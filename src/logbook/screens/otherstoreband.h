#pragma once

#include "platform/look/widgets/status.h"

class QPushButton;

namespace benthor::logbook {

/// Says that the list stands on another store than the program's own, and leads back; or that it does not,
/// though another one was chosen. Hidden until then.
class OtherStoreBand : public look::NoticeBand {
    Q_OBJECT

public:
    explicit OtherStoreBand(QWidget* parent = nullptr);

    /// `path` of the other store; empty hides the band.
    void showStore(const QString& path);
    /// The store at `path` cannot be shown.
    void showRefused(const QString& path);

signals:
    void backWanted();

private:
    QPushButton* back_;
};

} // namespace benthor::logbook
