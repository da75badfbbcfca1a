#include "tests/walk/walk.h"

#include "platform/clock.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

#include <numeric>

namespace benthor::tests {

namespace {

/// The clock of the machine ticks for nobody: only the steps do.
class NoClock : public QObject {
public:
    NoClock() { QCoreApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        return event->type() == QEvent::Timer && qobject_cast<QTimer*>(watched) != nullptr;
    }
};

int weights() {
    return std::accumulate(actions().begin(), actions().end(), 0,
                           [](int sum, const Action& action) { return sum + action.weight; });
}

int chosen(int weight) {
    int action = 0;
    while (weight >= actions()[static_cast<std::size_t>(action)].weight) {
        weight -= actions()[static_cast<std::size_t>(action)].weight;
        ++action;
    }
    return action;
}

QDateTime momentOf(int step) {
    // Two steps fall into one second: what is named after the clock must not rest on its moving.
    return QDateTime(QDate(2026, 3, 1), QTime(9, 0), Qt::UTC).addSecs(step / 2);
}

} // namespace

Walk walkOf(std::uint64_t seed, int steps) {
    simulator::Random random(seed);
    Walk walk;
    for (int i = 0; i < steps; ++i) {
        const int action = chosen(random.whole(0, weights() - 1));
        walk.push_back(
            {action, static_cast<quint32>(random.bits() >> 40), static_cast<quint32>(random.bits() >> 40)});
    }
    return walk;
}

WalkEnd walk(std::uint64_t seed, const Walk& steps) {
    const NoClock noClock;
    World world(seed);
    world.putFirstDives();
    world.start();
    world.pass();
    Model model(world);
    WalkEnd end;
    for (const Step& step : steps) {
        const platform::FixedClock clock(momentOf(end.steps));
        model.begin();
        actions()[static_cast<std::size_t>(step.action)].act(world, model, step);
        world.settle();
        ++end.steps;
        end.fault = model.check();
        if (!end.fault.isEmpty()) {
            break;
        }
        world.dialogs.forgetAnswers();
    }
    end.met = model.met();
    return end;
}

Walk shrunk(std::uint64_t seed, Walk steps) {
    steps.resize(static_cast<std::size_t>(walk(seed, steps).steps));
    for (std::size_t part = steps.size() / 2; part >= 1; part /= 2) {
        for (std::size_t from = 0; from + part <= steps.size();) {
            Walk without = steps;
            const auto first = without.begin() + static_cast<std::ptrdiff_t>(from);
            without.erase(first, first + static_cast<std::ptrdiff_t>(part));
            const WalkEnd end = walk(seed, without);
            if (end.fault.isEmpty()) {
                from += part;
            } else {
                without.resize(static_cast<std::size_t>(end.steps));
                steps = std::move(without);
            }
        }
    }
    return steps;
}

QString told(const Walk& steps) {
    QString text;
    for (const Step& step : steps) {
        text += QStringLiteral("  %1 (%2, %3)\n")
                    .arg(QLatin1String(actions()[static_cast<std::size_t>(step.action)].name))
                    .arg(step.a)
                    .arg(step.b);
    }
    return text;
}

} // namespace benthor::tests
