// Random walks over the joined program against a plain model of it.
//   test_walk                         the short walks of the test suite
//   test_walk --long FIRST COUNT STEPS   many, from that seed on; one that fails is told in its shortest form

#include "platform/look/look.h"
#include "tests/store/jet/jetfolder.h"
#include "tests/walk/walk.h"

#include <QApplication>
#include <QHashSeed>
#include <QtTest>

using namespace benthor;
using namespace benthor::tests;

namespace {

constexpr int kShortWalks = 24;
constexpr int kShortSteps = 100;

/// What a walk came to, in words; empty when all of it held. One that fails is told in its shortest form.
QString failureOf(std::uint64_t seed, int steps, QMap<QString, int>& met) {
    const Walk whole = walkOf(seed, steps);
    const WalkEnd end = walk(seed, whole);
    for (auto what = end.met.begin(); what != end.met.end(); ++what) {
        met[what.key()] += *what;
    }
    if (end.fault.isEmpty()) {
        return {};
    }
    const Walk shortest = shrunk(seed, whole);
    return QStringLiteral("walk %1 %2 fails: %3\nafter\n%4")
        .arg(seed)
        .arg(steps)
        .arg(walk(seed, shortest).fault, told(shortest));
}

QString told(const QMap<QString, int>& met) {
    QStringList lines;
    for (auto what = met.begin(); what != met.end(); ++what) {
        lines += QStringLiteral("%1 %2").arg(*what).arg(what.key());
    }
    return lines.join(QLatin1String(", "));
}

} // namespace

class TestWalk : public QObject {
    Q_OBJECT

private slots:
    void storeFoldersAndScreensFollowThePlainModel();
    void olderStoresAreAmongTheSteps();
    void theSameSeedWalksTheSameWay();

private:
    QMap<QString, int> met_; ///< of all short walks together
};

void TestWalk::storeFoldersAndScreensFollowThePlainModel() {
    QMap<QString, int>& met = met_;
    for (int seed = 1; seed <= kShortWalks; ++seed) {
        const QString failure = failureOf(static_cast<std::uint64_t>(seed), kShortSteps, met);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }
    // A walk that gets nowhere proves nothing.
    for (const char* what : {"imported",
                             "downloaded",
                             "deleted",
                             "number used again",
                             "details stored",
                             "dive opened",
                             "gases saved",
                             "another store shown",
                             "set aside",
                             "setup sent",
                             "taken back",
                             "dives went out",
                             "details with the list",
                             "dives brought",
                             "details of another logbook",
                             "dives without their files",
                             "the same merge again",
                             "logbooks compared anew",
                             "another logbook gone",
                             "no merge beside an import",
                             "merge taken back",
                             "merge done again",
                             "another store in the place"}) {
        QVERIFY2(met.value(QLatin1String(what)) > 0, qPrintable(QLatin1String(what) + u'\n' + told(met)));
    }
}

void TestWalk::olderStoresAreAmongTheSteps() {
    REQUIRE_JET_FILES(); // without them the walks leave out each step that would take one
    for (const char* what : {"a Jet file merged", "a Jet file shown"}) {
        QVERIFY2(met_.value(QLatin1String(what)) > 0, qPrintable(QLatin1String(what) + u'\n' + told(met_)));
    }
}

void TestWalk::theSameSeedWalksTheSameWay() {
    QCOMPARE(told(walkOf(7, 50)), told(walkOf(7, 50)));
    QVERIFY(told(walkOf(7, 50)) != told(walkOf(8, 50)));
    QMap<QString, int> once;
    QMap<QString, int> again;
    QCOMPARE(failureOf(7, 50, once), failureOf(7, 50, again));
    QCOMPARE(told(once), told(again));
}

namespace {

int walkMany(std::uint64_t first, int count, int steps) {
    int failures = 0;
    QMap<QString, int> met;
    if (!OtherBooks::hasJetFiles()) {
        qInfo("The Jet files are not there: every step with an older store is left out.");
    }
    for (int i = 0; i < count; ++i) {
        const QString failure = failureOf(first + static_cast<std::uint64_t>(i), steps, met);
        if (!failure.isEmpty()) {
            ++failures;
            qInfo().noquote() << failure;
        }
        if ((i + 1) % 10 == 0 || i + 1 == count) {
            qInfo("%d of %d walks, %d failed", i + 1, count, failures);
        }
    }
    qInfo().noquote() << told(met);
    return failures == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    QHashSeed::setDeterministicGlobalSeed();
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    const OurReader reader;
    const QStringList arguments = application.arguments();
    if (arguments.size() == 5 && arguments[1] == QLatin1String("--long")) {
        return walkMany(arguments[2].toULongLong(), arguments[3].toInt(), arguments[4].toInt());
    }
    TestWalk test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_walk.moc"
