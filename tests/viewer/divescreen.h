#pragma once

#include "platform/programfolder.h"
#include "platform/screen/screenslot.h"
#include "session/process.h"
#include "tests/profile/vectors.h"
#include "tests/support/programfixture.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testsettings.h"
#include "viewer/screens/rbinterface.h"

namespace benthor::viewer {

/// A program folder of its own with a fresh store and one dive screen over it. The screen is unloaded at the
/// end.
class DiveScreen {
public:
    DiveScreen();
    ~DiveScreen();
    DiveScreen(const DiveScreen&) = delete;
    DiveScreen& operator=(const DiveScreen&) = delete;

    /// Stores the rows of a vector's dive and its text in dbtxt, and makes it the dive in hand.
    void put(const profile::DiveVector& vector);
    /// The same for a text of the test's own: dive D0000001 of the system KD3, ten seconds between samples,
    /// gases Air and NX32.
    void put(const QByteArray& text);
    /// Sets one field of the dive's row in main; no value is Null.
    void setField(const char* field, const platform::Value& value);
    void execute(const char* sql) { process().database.execute(sql); }
    QString displayWord();

    QString divePath() const { return program_.folder.path(u"dbtxt", u"dive.txt"); }

    rbinterface& load() { return slot_.get(); }
    /// Loads and shows it, 1366 by 768.
    rbinterface& show();
    bool isLoaded() const { return slot_.isLoaded(); }
    void unload() { slot_.unload(); }

    tests::ScriptedDialogs boxes;

private:
    void putRow(const char* table, const QList<std::pair<QString, platform::Value>>& fields);

    tests::TestSettings settings_;
    tests::ProgramFixture program_;
    platform::ProgramFolder before_;
    platform::ScreenSlot<rbinterface> slot_;
};

/// A sample line with the fixed fields and more behind them.
QByteArray sampleLine(int depthcount, const QByteArray& more = {});

/// A dive text of `samples` records, depth counts 10, 20, 30, ... The gas is 0 in the first half, then 1.
QByteArray steadyDive(int samples);

template <class T> T& control(rbinterface& screen, const char* name) {
    T* found = screen.findChild<T*>(QLatin1String(name));
    if (found == nullptr) {
        qFatal("rbinterface has no %s", name);
    }
    return *found;
}

QString textOf(rbinterface& screen, const char* name);

} // namespace benthor::viewer
