#pragma once

#include "firmware/reprogstate.h"
#include "platform/look/widgets/card.h"

#include <array>

class QGridLayout;
class QLabel;

namespace benthor::look {
class StatusChip;
}

namespace benthor::firmware {

/// The way of a session in five steps, from left to right. Each step is a lamp with a quiet line that says
/// why it shows what it shows.
class StepsPath : public look::Pane {
    Q_OBJECT

public:
    explicit StepsPath(QWidget* parent = nullptr);

    void sync(const std::array<Lamp, 5>& lamps, const std::array<QString, 5>& reasons);

private:
    void buildStep(size_t index, int column, const char* title, const char* icon);

    QGridLayout* grid_;
    std::array<look::StatusChip*, 5> chips_{};
    std::array<QLabel*, 5> reasons_{};
    std::array<QWidget*, 5> covers_{};
};

} // namespace benthor::firmware
