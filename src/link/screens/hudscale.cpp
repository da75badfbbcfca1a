#include "link/screens/hudscale.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QPainter>

namespace benthor::link {

namespace {

constexpr int kBarHeight = 22;
constexpr int kStripe = 6;
constexpr double kUsualEnd = 2.0;

struct Zone {
    const char* words;
    bool red;
    bool flashes;
};
constexpr std::array<Zone, 4> kZones{{{"RED LED fixed on", true, false},
                                      {"GREEN LED fixed on", false, false},
                                      {"GREEN LED flashes", false, true},
                                      {"RED LED flashes", true, true}}};
constexpr std::array<const char*, 4> kNames{"LOW", "PreLow", "PreHigh", "HIGH"};

double endOf(const std::optional<HudScale::Values>& values) {
    return values && values->back() >= kUsualEnd - 0.2 ? 3.0 : kUsualEnd;
}

} // namespace

HudScale::HudScale(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(words());
    look::setReaderRole(this, QAccessible::Graphic);
}

void HudScale::setValues(const std::optional<Values>& values) {
    const bool rise = values && values->front() >= 0 && std::is_sorted(values->begin(), values->end()) &&
                      values->back() <= 3.0;
    const std::optional<Values> shown = rise ? values : std::nullopt;
    if (shown != values_) {
        values_ = shown;
        setAccessibleName(words());
        setToolTip(words());
        update();
    }
}

QString HudScale::words() const {
    if (!values_) {
        return QStringLiteral("The alarm values come with Get Record Interval secs");
    }
    const auto bar = [this](size_t i) { return QString::number(values_->at(i), 'f', 2); };
    return QStringLiteral("Below %1 bar the red LED is fixed on, from there to %2 bar the green LED; from %3 "
                          "bar the green LED flashes, from %4 bar the red LED")
        .arg(bar(0), bar(1), bar(2), bar(3));
}

QSize HudScale::sizeHint() const {
    const int line = QFontMetrics(look::caption()).height();
    return {look::scaled(560), look::scaled(kBarHeight) + 2 * line + 2 * look::spaceTight + look::spaceSmall};
}

QSize HudScale::minimumSizeHint() const {
    return {look::scaled(380), sizeHint().height()};
}

QRect HudScale::bar() const {
    const int line = QFontMetrics(look::caption()).height();
    return {look::spaceBase, line + look::spaceTight, width() - 2 * look::spaceBase,
            look::scaled(kBarHeight)};
}

int HudScale::at(double value) const {
    const QRect room = bar();
    return room.left() + qRound(room.width() * value / endOf(values_));
}

void HudScale::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const look::Tokens& token = look::tokens();
    painter.setFont(look::caption());
    painter.fillRect(bar(), token.sunken);
    if (values_) {
        paintZones(painter);
    } else {
        painter.setPen(token.textquiet);
        painter.drawText(bar(), Qt::AlignCenter, words());
    }
    painter.setPen(token.edge);
    painter.drawRect(bar().adjusted(0, 0, -1, -1));
    paintMarks(painter);
}

void HudScale::paintZones(QPainter& painter) const {
    const Values& v = *values_;
    const std::array<double, 4> from{0, v[0], v[2], v[3]};
    const std::array<double, 4> to{v[0], v[1], v[3], endOf(values_)};
    const QRect room = bar();
    const QFontMetrics metrics = painter.fontMetrics();
    int free = 0; // where the words of the zone before end
    for (size_t i = 0; i < kZones.size(); ++i) {
        const QColor colour = kZones.at(i).red ? QColor(0xC9, 0x2A, 0x2A) : QColor(0x2B, 0x8A, 0x3E);
        const QRect zone(at(from.at(i)), room.top(), at(to.at(i)) - at(from.at(i)), room.height());
        if (!kZones.at(i).flashes) {
            painter.fillRect(zone, colour);
        } else {
            painter.fillRect(zone, QColor(Qt::white));
            for (int x = zone.left(); x <= zone.right(); x += 2 * kStripe) {
                painter.fillRect(QRect(x, zone.top(), kStripe, zone.height()) & zone, colour);
            }
        }
        const QString words = QLatin1String(kZones.at(i).words);
        const int wide = metrics.horizontalAdvance(words);
        const int left = std::max(free, std::min(zone.center().x() - wide / 2, width() - wide));
        if (zone.width() > 0 && left + wide <= width()) {
            painter.setPen(look::tokens().textquiet);
            painter.drawText(left, metrics.ascent(), words);
            free = left + wide + look::spaceBase;
        }
    }
}

void HudScale::paintMarks(QPainter& painter) const {
    const QRect room = bar();
    const int base = room.bottom() + look::spaceSmall;
    int free = 0;
    const auto write = [&](int x, const QString& text) {
        const QFontMetrics metrics = painter.fontMetrics();
        const int wide = metrics.horizontalAdvance(text);
        const int left = std::max(free, std::clamp(x - wide / 2, 0, width() - wide));
        if (left > x + wide || left + wide > width()) {
            return; // no room left beside the word before
        }
        painter.drawText(left, base + metrics.ascent(), text);
        free = left + wide + look::spaceTight;
    };
    const look::Tokens& token = look::tokens();
    painter.setPen(token.textquiet);
    write(room.left(), QStringLiteral("0.0"));
    if (values_) {
        painter.setFont(look::strong(look::caption()));
        for (size_t i = 0; i < kNames.size(); ++i) {
            const int x = at(values_->at(i));
            painter.fillRect(QRect(x - 1, room.top() - 4, 2, room.height() + 8), token.text);
            painter.setPen(token.text);
            write(x, QLatin1String(kNames.at(i)));
        }
        painter.setFont(look::caption());
        painter.setPen(token.textquiet);
    }
    write(room.right(), QString::number(endOf(values_), 'f', 1));
}

} // namespace benthor::link
