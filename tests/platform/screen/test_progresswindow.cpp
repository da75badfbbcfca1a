#include "platform/screen/progresswindow.h"
#include "platform/screen/ticktimer.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

using namespace benthor;
using platform::ProgressWindow;

namespace {

ProgressWindow made() {
    return {QStringLiteral("A long piece of work"), QStringLiteral("What is done."), QStringLiteral("rows"),
            QStringLiteral("All is read.")};
}

template <class T> T* part(const ProgressWindow& progress, const char* name) {
    T* found = progress.window().findChild<T*>(QLatin1String(name));
    if (found == nullptr) {
        qFatal("no %s", name);
    }
    return found;
}

/// Goes on with the same count until the window has taken it.
bool goOnUntilShown(ProgressWindow& progress, std::uint64_t done, std::uint64_t of) {
    const QString before = part<QLabel>(progress, "progresscount")->text();
    bool goesOn = true;
    while (goesOn && part<QLabel>(progress, "progresscount")->text() == before) {
        goesOn = progress.goOn(done, of);
    }
    return goesOn;
}

} // namespace

class TestProgressWindow : public QObject {
    Q_OBJECT

private slots:
    void workThatIsSoonOverShowsNoWindow();
    void theWindowMovesWithTheWork();
    void stopEndsTheWork();
    void onlyThisWindowTakesInput();
};

void TestProgressWindow::workThatIsSoonOverShowsNoWindow() {
    ProgressWindow progress = made();
    QVERIFY(progress.goOn(1, 10));
    QVERIFY(!progress.window().isVisible());
}

void TestProgressWindow::theWindowMovesWithTheWork() {
    ProgressWindow progress = made();
    QVERIFY(goOnUntilShown(progress, 270, 2700));
    QVERIFY(progress.window().isVisible());
    QCOMPARE(part<QLabel>(progress, "progresswords")->text(), "What is done.");
    QCOMPARE(part<QLabel>(progress, "progresscount")->text(), "270 of 2700 rows");
    QCOMPARE(part<QProgressBar>(progress, "progressbar")->value(), 100);
    QVERIFY(goOnUntilShown(progress, 1350, 2700));
    QCOMPARE(part<QProgressBar>(progress, "progressbar")->value(), 500);
    QVERIFY(progress.goOn(0, 0)); // nothing new is known
    QCOMPARE(part<QLabel>(progress, "progresscount")->text(), "1350 of 2700 rows");
    QVERIFY(goOnUntilShown(progress, 2700, 2700));
    QCOMPARE(part<QProgressBar>(progress, "progressbar")->value(), 1000);
    QCOMPARE(part<QLabel>(progress, "progresscount")->text(), "All is read.");
}

void TestProgressWindow::stopEndsTheWork() {
    ProgressWindow progress = made();
    QVERIFY(goOnUntilShown(progress, 1, 10));
    QTest::mouseClick(part<QPushButton>(progress, "progressstop"), Qt::LeftButton);
    QVERIFY(!progress.goOn(2, 10));
    QVERIFY(!progress.goOn(3, 10));
    // A desktop may close what it shows: that is the same.
    ProgressWindow closed = made();
    QVERIFY(goOnUntilShown(closed, 1, 10));
    QTimer::singleShot(0, &closed.window(), [&closed] { closed.window().hide(); });
    while (closed.goOn(1, 10)) {
    }
    QVERIFY(!closed.goOn(1, 10));
}

void TestProgressWindow::onlyThisWindowTakesInput() {
    QPushButton other(QStringLiteral("other"));
    int clicks = 0;
    connect(&other, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    other.show();
    ProgressWindow progress = made();
    bool held = false;
    QTimer::singleShot(320, this, [&] { // while the window is up
        held = platform::TickHold::active();
        QTest::mouseClick(&other, Qt::LeftButton);
        QTest::mouseClick(part<QPushButton>(progress, "progressstop"), Qt::LeftButton);
    });
    while (progress.goOn(1, 10)) {
    }
    QVERIFY(held);
    QCOMPARE(clicks, 0);
    QTest::mouseClick(&other, Qt::LeftButton);
    QCOMPARE(clicks, 1);
}

QTEST_MAIN(TestProgressWindow)
#include "test_progresswindow.moc"
