// Random work on the gas screen. In the tests a short walk; longer ones by
//
//     test_gaswalk --walks 200 --steps 50 --seed 1
//
// A failing walk is shrunk to the fewest steps that still fail, and printed with the seed that repeats it.

#include "platform/look/look.h"
#include "tests/gas/gaswalk.h"

#include <QApplication>
#include <QtTest>

using namespace benthor::tests;

namespace {

struct Length {
    int walks = 30;
    int steps = 30;
    quint32 seed = 1;
};

Length& length() {
    static Length one;
    return one;
}

QString report(quint32 seed, int count) {
    const QList<Step> few = shrunk(randomSteps(seed, count));
    const auto fault = walk(few);
    QString words = QStringLiteral("--walks 1 --steps %1 --seed %2: %3")
                        .arg(count)
                        .arg(seed)
                        .arg(fault ? fault->what : QStringLiteral("not repeated"));
    for (const Step& step : few) {
        words += QStringLiteral("\n    ") + wordsOf(step);
    }
    return words;
}

} // namespace

class TestGasWalk : public QObject {
    Q_OBJECT

private slots:
    void whatLeavesIsWhatTheScreenShows();
    void aChangeOfUnitThatEndedEarlyKeepsAllBack();
    void aClosingBehindAChangeOfUnitThatEndedEarlyKeepsTheDepths();
    void aFailingWalkIsShrunk();
};

void TestGasWalk::whatLeavesIsWhatTheScreenShows() {
    for (int i = 0; i < length().walks; ++i) {
        const quint32 seed = length().seed + static_cast<quint32>(i);
        if (walk(randomSteps(seed, length().steps))) {
            QFAIL(qPrintable(report(seed, length().steps)));
        }
    }
    // Both ways were gone, each more often than once in a walk or two.
    QVERIFY2(
        walkCount().left >= length().walks / 2 && walkCount().keptBack >= length().walks / 2,
        qPrintable(QStringLiteral("left %1, kept back %2").arg(walkCount().left).arg(walkCount().keptBack)));
}

/// Letters end a change of unit under heads that stay; what then stands in Max PPO2 without being taken up
/// must not let the old depths leave in the new unit.
void TestGasWalk::aChangeOfUnitThatEndedEarlyKeepsAllBack() {
    for (const char* const left : {"3", "-1", ""}) {
        for (const Deed leaving : {Deed::Update, Deed::Save}) {
            const auto fault = walk({Step{Deed::Connect, 1, 1, {}}, Step{Deed::TypeBox, 0, 0, "1.4x"},
                                     Step{Deed::Unit, 1, 0, {}}, Step{Deed::Tick, 0, 0, {}},
                                     Step{Deed::TypeBox, 0, 0, left}, Step{leaving, 1, 0, {}}});
            QVERIFY2(!fault, fault ? qPrintable(fault->what) : "");
        }
    }
}

/// Air under the head of feet was kept as 181 m, and the link would have sent it.
void TestGasWalk::aClosingBehindAChangeOfUnitThatEndedEarlyKeepsTheDepths() {
    const auto fault =
        walk({Step{Deed::Unit, 1, 0, {}}, Step{Deed::TypeBox, 0, 0, "nan"}, Step{Deed::Unit, 0, 0, {}},
              Step{Deed::Tick, 0, 0, {}}, Step{Deed::Reopen, 0, 0, {}}});
    QVERIFY2(!fault, fault ? qPrintable(fault->what) : "");
}

/// The spare button throws the text away, which the walk takes for a fault; of many steps that one is left.
void TestGasWalk::aFailingWalkIsShrunk() {
    QList<Step> steps = randomSteps(5, 12);
    steps.insert(7, Step{Deed::Spare, 0, 0, {}});
    const QList<Step> few = shrunk(steps);
    QCOMPARE(few.size(), 1);
    QVERIFY(few.first().deed == Deed::Spare);
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    benthor::look::apply(application);
    QStringList arguments = QCoreApplication::arguments();
    for (auto [name, value] :
         {std::pair{"--walks", &length().walks}, std::pair{"--steps", &length().steps}}) {
        const qsizetype at = arguments.indexOf(QLatin1String(name));
        if (at > 0 && at + 1 < arguments.size()) {
            *value = arguments.at(at + 1).toInt();
            arguments.remove(at, 2);
        }
    }
    const qsizetype at = arguments.indexOf(QStringLiteral("--seed"));
    if (at > 0 && at + 1 < arguments.size()) {
        length().seed = arguments.at(at + 1).toUInt();
        arguments.remove(at, 2);
    }
    TestGasWalk test;
    return QTest::qExec(&test, arguments);
}
#include "test_gaswalk.moc"
