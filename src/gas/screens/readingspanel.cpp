#include "gas/screens/readingspanel.h"

#include "platform/look/look.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace benthor::gas {

namespace {

constexpr int kNone = -1;
constexpr std::array<int, 6> kMetric{0, 5, 7, 11, 13, 19};
constexpr std::array<int, 6> kImperial{1, 6, 8, 12, 14, 20};
constexpr int kColumns = 4;

/// A reading under its heading: its label, the one in the other unit, and their unit words.
struct Reading {
    const char* heading;
    int label;
    int imperial;
    const char* unit;
    const char* imperialUnit;
};
constexpr std::array<Reading, 11> kReadings{{{"Depth", 0, 1, "m", "ft"},
                                             {"Ceiling", 19, 20, "m", "ft"},
                                             {"PPO2", 3, kNone, "bar", ""},
                                             {"Setpoint", 9, kNone, "bar", ""},
                                             {"Temperature", 5, 6, "C", "F"},
                                             {"Stack T", 7, 8, "", ""},
                                             {"Main BatteryVolt", 15, kNone, "V", ""},
                                             {"Backup", 16, kNone, "V", ""},
                                             {"HP O2", 11, 12, "bar", "psi"},
                                             {"HP Dil", 13, 14, "bar", "psi"},
                                             {"Cells", 10, kNone, "", ""}}};
/// Shown small behind the last one: what has no heading of its own.
constexpr std::array<int, 4> kFurther{17, 18, 2, 4};

/// A text that is kept as it came and shown as far as its first line end: the last one of a line brings that,
/// and the beacon behind it.
class FirstLine : public QLabel {
public:
    QSize sizeHint() const override {
        const QSize size = fontMetrics().size(Qt::TextSingleLine, shown());
        return size + QSize(2, 2);
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        painter.setFont(font());
        painter.setPen(look::tokens().text);
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown());
    }

private:
    QString shown() const {
        QString line = text();
        line.replace(QLatin1Char('\r'), QLatin1Char('\n'));
        return line.section(QLatin1Char('\n'), 0, 0);
    }
};

} // namespace

ReadingsPanel::ReadingsPanel(QWidget* parent)
    : QWidget(parent) {
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceWide, look::spaceSmall);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(look::spaceSmall);
    grid->setVerticalSpacing(look::spaceTight);
    down->addLayout(grid);
    int place = 0;
    for (const Reading& reading : kReadings) {
        auto* cell = new QVBoxLayout;
        cell->setSpacing(0);
        cell->addWidget(look::makeCaption(QLatin1String(reading.heading)));
        auto* row = new QHBoxLayout;
        row->setSpacing(3);
        const auto add = [&](int label, const char* unit) {
            row->addWidget(number(label));
            QLabel* word = look::makeCaption(QLatin1String(unit));
            word->setObjectName(QStringLiteral("unit%1").arg(label));
            units_[static_cast<size_t>(label)] = word;
            row->addWidget(word, 0, Qt::AlignBottom);
        };
        add(reading.label, reading.unit);
        if (reading.imperial != kNone) {
            add(reading.imperial, reading.imperialUnit);
        }
        if (place + 1 == static_cast<int>(kReadings.size())) {
            for (const int label : kFurther) {
                row->addWidget(number(label));
            }
        }
        row->addStretch(1);
        cell->addLayout(row);
        const bool last = place + 1 == static_cast<int>(kReadings.size());
        grid->addLayout(cell, place / kColumns, place % kColumns, 1, last ? 2 : 1);
        ++place;
    }
    down->addWidget(look::makeCaption(QStringLiteral("Alarms")));
    auto* alarms = new QHBoxLayout;
    alarms->setSpacing(look::spaceSmall);
    for (int label = link::Readings::firstAlarm; label < link::Readings::labels; ++label) {
        QLabel* alarm = number(label);
        alarm->setFont(look::strong(look::caption()));
        alarm->hide();
        alarms->addWidget(alarm);
    }
    alarms->addStretch(1);
    down->addLayout(alarms);
    down->addStretch(1);
    showUnits(false);
}

QLabel* ReadingsPanel::number(int label) {
    auto* made = new FirstLine;
    made->setObjectName(QStringLiteral("Label16(%1)").arg(label));
    made->setFont(look::strong(look::numbers(16)));
    Label16_[static_cast<size_t>(label)] = made;
    return made;
}

void ReadingsPanel::take(const link::Readings& readings) {
    for (size_t label = 0; label < Label16_.size(); ++label) {
        if (readings.texts[label]) {
            Label16_[label]->setText(*readings.texts[label]);
        }
        if (readings.visible[label]) {
            Label16_[label]->setVisible(*readings.visible[label]);
        }
    }
}

void ReadingsPanel::showUnits(bool feet) {
    for (size_t i = 0; i < kMetric.size(); ++i) {
        const std::array<std::pair<int, bool>, 2> both{{{kMetric[i], !feet}, {kImperial[i], feet}}};
        for (const auto& [label, shown] : both) {
            Label16_[static_cast<size_t>(label)]->setVisible(shown);
            units_[static_cast<size_t>(label)]->setVisible(shown);
        }
    }
}

} // namespace benthor::gas
