#include "tests/walk/world.h"

#include "platform/grid/flexgrid.h"
#include "platform/screen/screen.h"
#include "platform/screen/toldqcolor.h"
#include "store/access.h"
#include "store/jet/jetconvert.h"

#include <QAction>
#include <QApplication>
#include <QtTest>

namespace benthor::tests {

namespace {

constexpr int kDeviceDives = 3;
constexpr int kBeat = 500;            // milliseconds
constexpr int kSplashPatience = 1000; // less than the splash has by itself

void sayThatTheGuideIsRead(const TestFolder& folder) {
    platform::Database store;
    store.open(folder.path(QStringLiteral("rb.mdb")));
    store.execute("UPDATE serialno SET getstarted = 'Close'");
}

} // namespace

World::World(std::uint64_t seed)
    : random_(seed, 1)
    , bench(simulator::Kd()) {
    std::vector<QByteArray> dives;
    for (int i = 0; i < kDeviceDives; ++i) {
        const MadeDive& dive = makeDive(MadeKind::Good);
        dives.push_back(dive.text);
        deviceDives_ += dive.key();
    }
    bench.device() = simulator::Kd(std::move(dives));
    QDir::setCurrent(folder.root());
    sayThatTheGuideIsRead(folder);
    folder.put(QStringLiteral("gdata.mit"), simulator::newSetup() + "\r\n"); // as an installation has one
}

World::~World() {
    house_.reset();
    QDir::setCurrent(QDir::tempPath());
}

/// Until the main screen is made and, where it can be, the store is packed beside itself.
void World::letTheSplashStand(Meanwhile meanwhile) {
    const bool isOlder = store::isjetfile(folder.path(QStringLiteral("rb.mdb")));
    const auto isReady = [&] {
        const QWidgetList all = QApplication::topLevelWidgets();
        return (isOlder || folder.has("backup-new.mdb")) &&
               std::any_of(all.begin(), all.end(),
                           [](const QWidget* one) { return one->objectName() == QLatin1String("main"); });
    };
    static_cast<void>(QTest::qWaitFor(isReady, kSplashPatience));
    if (meanwhile == Meanwhile::AnotherWrites && !isOlder) {
        writtenByAnother_ = QStringLiteral("start%1").arg(++starts_);
        platform::Database store;
        store.open(folder.path(QStringLiteral("rb.mdb")));
        store.execute(platform::sqlWith("INSERT INTO pfindex (itemname) VALUES ('", writtenByAnother_, "')"));
    }
}

void World::requireWhatAnotherWrote() {
    if (!writtenByAnother_.isEmpty() && !store::checkpfexist(writtenByAnother_)) {
        qFatal("what another program stored while the splash was up is lost: %s",
               qPrintable(writtenByAnother_));
    }
}

void World::start(const QString& restored, Meanwhile meanwhile) {
    process() = Process();
    house_ = std::make_unique<shell::House>(bench.lines());
    house_->start();
    writtenByAnother_.clear();
    if (meanwhile != Meanwhile::ClickedAway) {
        letTheSplashStand(meanwhile);
    }
    if (!restored.isEmpty()) {
        dialogs.answer(true);
        dialogs.answerFile(restored);
        click("frmSplash", "Command1");
        writtenByAnother_.clear(); // into the store that was replaced
    }
    tick("frmSplash", {"Timer1"});
    settle();
    requireWhatAnotherWrote();
}

void World::leave() {
    trigger("main", "mnuExit");
    settle();
    house_.reset();
    settle();
}

void World::settle() {
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void World::tick(const char* screenName, std::initializer_list<const char*> timers) {
    for (const char* name : timers) {
        platform::Screen* found = screen(screenName);
        auto* timer =
            found == nullptr ? nullptr : found->findChild<platform::TickTimer*>(QLatin1String(name));
        if (timer != nullptr && timer->isEnabled()) {
            timer->expire();
        }
    }
}

void World::pass() {
    bench.pass(kBeat);
    tick("PC_Link_1", {"Timer1", "Timer2", "Timer3", "Timer5", "Timer6", "Timer7", "Timer8"});
    tick("GasBlend", {"Timer5"});
    tick("main", {"Timer1", "Timer2", "Timer4"});
    tick("rbmain", {"Timer3"});
    tick("rbinterface", {"Timer3"});
}

platform::Screen* World::screen(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* found = qobject_cast<platform::Screen*>(window);
        if (found != nullptr && found->objectName() == QLatin1String(name) && found->isLoaded()) {
            return found;
        }
    }
    return nullptr;
}

bool World::isShown(const char* name) {
    return screen(name) != nullptr && screen(name)->isVisible();
}

QObject* World::reachable(const char* screenName, const char* name) {
    if (!isShown(screenName)) {
        return nullptr;
    }
    QObject* found = screen(screenName)->findChild<QObject*>(QLatin1String(name));
    if (found == nullptr) {
        qFatal("%s has no control %s", screenName, name); // a step that could never do anything
    }
    if (auto* widget = qobject_cast<QWidget*>(found)) {
        return widget->isVisible() && widget->isEnabled() ? widget : nullptr;
    }
    if (auto* entry = qobject_cast<QAction*>(found)) {
        return entry->isEnabled() && entry->isVisible() && screen(screenName)->isEnabled() ? entry : nullptr;
    }
    return found;
}

QString World::textOf(const char* screenName, const char* name) {
    const QObject* found = screen(screenName) == nullptr
                               ? nullptr
                               : screen(screenName)->findChild<QObject*>(QLatin1String(name));
    return found == nullptr ? QString() : found->property("text").toString();
}

bool World::click(const char* screenName, const char* name) {
    auto* widget = reach<QWidget>(screenName, name);
    if (widget != nullptr) {
        QTest::mouseClick(widget, Qt::LeftButton);
    }
    return widget != nullptr;
}

bool World::trigger(const char* screenName, const char* entry) {
    auto* action = reach<QAction>(screenName, entry);
    if (action != nullptr) {
        action->trigger();
    }
    return action != nullptr;
}

platform::FlexGrid* World::list() {
    return reach<platform::FlexGrid>("rbmain", "MSFlexGrid1");
}

QStringList World::listed() {
    QStringList dives;
    const platform::FlexGrid* grid = list();
    for (int row = 1; grid != nullptr && row < grid->rows(); ++row) {
        dives += grid->text(row, 0);
    }
    return dives;
}

QStringList World::chosen() {
    QStringList dives;
    const platform::FlexGrid* grid = list();
    for (int row = 1; grid != nullptr && row < grid->rows(); ++row) {
        if (grid->backColour(row, 0) == platform::toQColor(platform::kToldBlue)) {
            dives += grid->text(row, 0);
        }
    }
    return dives;
}

bool World::clickRow(int row, Qt::KeyboardModifiers modifiers, bool twice) {
    platform::FlexGrid* grid = list();
    if (grid == nullptr || row < 1 || row >= grid->rows()) {
        return false;
    }
    grid->showRow(row);
    const QPoint at(grid->columnViewportPosition(0) + 8, grid->rowViewportPosition(row - 1) + 10);
    if (twice) {
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, modifiers, at);
    } else {
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, modifiers, at);
    }
    return true;
}

const MadeDive* World::made(const QString& key) const {
    const auto found = made_.constFind(key);
    return found == made_.constEnd() ? nullptr : &*found;
}

const MadeDive& World::makeDive(MadeKind kind) {
    const MadeDive dive = tests::makeDive(random_, ++number_, kind);
    return *made_.insert(dive.key(), dive);
}

const MadeDive& World::makeTwin(const MadeDive& of) {
    const MadeDive dive = tests::makeTwin(random_, ++number_, of);
    return *made_.insert(dive.key(), dive);
}

void World::putFirstDives() {
    for (const char* name : {"first.txt", "second.txt", "third.txt"}) {
        folder.put(QStringLiteral("new/") + QLatin1String(name), makeDive(MadeKind::Good).text);
    }
}

} // namespace benthor::tests
