#pragma once

#include "firmware/guidance.h"
#include "platform/look/widgets/card.h"

#include <array>

namespace benthor::look {
class ToldButton;
}

namespace benthor::firmware {

/// The keys of the device, Erase apart, and the two great acts at the right, below them where the row is too
/// narrow. The one that comes next carries the accent.
class KeyRow : public look::Pane {
    Q_OBJECT

public:
    explicit KeyRow(QWidget* parent = nullptr);

    void sync(const ReprogState& state, NextKey next);
    QWidget* refresh() const;

signals:
    void keyClicked(size_t key);
    void sendClicked();

private:
    QWidget* buildKeys();
    QWidget* buildActs();
    look::ToldButton* key(size_t index, const char* caption, const char* icon, const char* toolTip);

    std::array<look::ToldButton*, kKeys> SendCh_{};
    look::ToldButton* Command2_;
};

} // namespace benthor::firmware
