#pragma once

#include "shell/house.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"
#include "tests/walk/devicebench.h"
#include "tests/walk/otherbooks.h"

#include <QMap>
#include <QPointer>

namespace benthor::platform {
class FlexGrid;
class Screen;
} // namespace benthor::platform

namespace benthor::tests {

/// The whole program on a folder of its own, beside a device with three dives, and the hands that work it.
/// Nothing in it goes by the clock of the machine: ticks and the device's time come from pass().
class World {
public:
    explicit World(std::uint64_t seed);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    // --- the program

    /// `restored`: a file that FIX DATABASE is told to put in the place of the store; empty for none.
    /// `meanwhile`: what becomes of the splash before its time is over.
    enum class Meanwhile { ClickedAway, Stands, AnotherWrites };
    static Meanwhile meanwhile(quint32 number) { return static_cast<Meanwhile>(number % 3); }
    void start(const QString& restored = {}, Meanwhile meanwhile = Meanwhile::ClickedAway);
    /// Leaves it by the entry Exit, and waits until all of it is gone.
    void leave();
    bool runs() const { return house_ != nullptr; }
    /// Half a second of the device's time and one tick of every timer that is on.
    void pass();
    /// The tick at which the main screen looks what other screens have made of the unit.
    void mainTick() { tick("main", {"Timer2"}); }
    /// Lets what was put off happen: queued work, screens that are to die.
    void settle();

    // --- what can be seen and reached

    /// The loaded screen of that name; null when there is none.
    static platform::Screen* screen(const char* name);
    static bool isShown(const char* name);
    /// A control of a screen that is shown; null where a user could not get at it.
    template <class T = QWidget> static T* reach(const char* screenName, const char* name) {
        QObject* found = reachable(screenName, name);
        if (found != nullptr && qobject_cast<T*>(found) == nullptr) {
            qFatal("%s of %s is another control", name, screenName); // nor is that a step
        }
        return qobject_cast<T*>(found);
    }
    /// The text of a control, shown or not.
    static QString textOf(const char* screenName, const char* name);
    static bool click(const char* screenName, const char* name);
    static bool trigger(const char* screenName, const char* entry);
    static platform::FlexGrid* list();
    /// The dives of the list, and those of its blue rows.
    static QStringList listed();
    static QStringList chosen();
    static bool clickRow(int row, Qt::KeyboardModifiers modifiers = {}, bool twice = false);

    // --- dives

    /// A dive of the walk by its key; null when it made none of that key.
    const MadeDive* made(const QString& key) const;
    const MadeDive& makeDive(MadeKind kind);
    /// One that began in the same second.
    const MadeDive& makeTwin(const MadeDive& of);
    /// Three dive files that wait before the program is started.
    void putFirstDives();
    const QStringList& deviceDives() const { return deviceDives_; }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    OtherBooks others;

private:
    void letTheSplashStand(Meanwhile meanwhile);
    void requireWhatAnotherWrote();
    static QObject* reachable(const char* screenName, const char* name);
    static void tick(const char* screenName, std::initializer_list<const char*> timers);

    simulator::Random random_;
    QMap<QString, MadeDive> made_;
    int number_ = 0;
    int starts_ = 0;
    QString writtenByAnother_; ///< into the store, while the splash was up; empty for nothing
    QStringList deviceDives_;
    std::unique_ptr<shell::House> house_;

public:
    DeviceBench bench;
};

} // namespace benthor::tests
