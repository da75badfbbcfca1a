// Ends only processes that it has started itself.

#include "platform/processes.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace benthor::platform;

namespace {

std::optional<RunningProcess> find(int id) {
    for (const RunningProcess& process : runningProcesses()) {
        if (process.id == id) {
            return process;
        }
    }
    return std::nullopt;
}

/// A program that does nothing for as long as it is let, under a name of the test's choice.
class Idler {
public:
    explicit Idler(const QString& name = QStringLiteral("idler")) {
        path_ = folder_.filePath(name);
        if (!QFile::copy(QStandardPaths::findExecutable(QStringLiteral("sleep")), path_)) {
            qFatal("no copy of sleep");
        }
        process_.start(path_, {QStringLiteral("1000")});
        if (!process_.waitForStarted()) {
            qFatal("the copy of sleep does not start");
        }
    }
    ~Idler() {
        process_.kill();
        process_.waitForFinished();
    }
    Idler(const Idler&) = delete;
    Idler& operator=(const Idler&) = delete;

    int id() const { return static_cast<int>(process_.processId()); }
    QString path() const { return path_; }
    RunningProcess listed() const { return find(id()).value(); }
    bool running() { return !process_.waitForFinished(0) && process_.state() == QProcess::Running; }
    /// The signal that ended it, 0 for none.
    int endedBy() {
        process_.waitForFinished();
        return process_.exitStatus() == QProcess::CrashExit ? process_.exitCode() : 0;
    }

private:
    QTemporaryDir folder_;
    QString path_;
    QProcess process_;
};

/// A child that has ended and that nobody has asked after.
class Zombie {
public:
    Zombie()
        : id_(::fork()) {
        if (id_ == 0) {
            ::_exit(0);
        }
        siginfo_t ended{};
        if (id_ < 0 || ::waitid(P_PID, static_cast<id_t>(id_), &ended, WEXITED | WNOWAIT) != 0) {
            qFatal("no child");
        }
    }
    ~Zombie() { ::waitpid(id_, nullptr, 0); }
    Zombie(const Zombie&) = delete;
    Zombie& operator=(const Zombie&) = delete;

    int id() const { return id_; }
    /// As the system tells it: the 20th word behind the name in brackets.
    quint64 began() const {
        QFile file(QStringLiteral("/proc/%1/stat").arg(id_));
        if (!file.open(QIODevice::ReadOnly)) {
            qFatal("no word of the child");
        }
        const QByteArray text = file.readAll();
        return text.sliced(text.lastIndexOf(')') + 2).split(' ').at(19).toULongLong();
    }

private:
    pid_t id_;
};

} // namespace

class TestProcesses : public QObject {
    Q_OBJECT

private slots:
    void aProcessIsListedByItsNameAndId() {
        const Idler idler(QStringLiteral("a program, its name longer than fifteen bytes"));
        const std::optional<RunningProcess> found = find(idler.id());
        QVERIFY(found);
        QCOMPARE(found->name, "a program, its name longer than fifteen bytes");
        QVERIFY(found->began > 0);
    }

    void thisProgramAndTheFirstProcessAreListed() {
        const std::optional<RunningProcess> own = find(static_cast<int>(::getpid()));
        QVERIFY(own);
        QCOMPARE(own->name, "test_processes");
        QVERIFY(find(1));
        QVERIFY(!find(1)->name.isEmpty());
    }

    void oneThatBeganLaterHasALaterTime() {
        const Idler idler;
        QVERIFY(idler.listed().began > find(1)->began);
        QVERIFY(idler.listed().began >= find(static_cast<int>(::getpid()))->began);
    }

    void aProgramWhoseFileWasRemovedKeepsItsName() {
        const Idler idler;
        QVERIFY(QFile::remove(idler.path()));
        QCOMPARE(idler.listed().name, "idler");
    }

    void theNameComesFromWhatIsKnown_data() {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("firstWord");
        QTest::addColumn<QByteArray>("shortName");
        QTest::addColumn<QString>("name");
        QTest::newRow("path") << QByteArray("/usr/bin/python3.11") << QByteArray("./tool")
                              << QByteArray("tool") << "python3.11";
        QTest::newRow("removed") << QByteArray("/opt/tool (deleted)") << QByteArray() << QByteArray("tool")
                                 << "tool";
        QTest::newRow("no path, short")
            << QByteArray("-") << QByteArray("sshd: a user") << QByteArray("sshd") << "sshd";
        QTest::newRow("no path, cut") << QByteArray("-") << QByteArray("/usr/lib/systemd/systemd-resolved")
                                      << QByteArray("systemd-resolve") << "systemd-resolved";
        QTest::newRow("no path, 15 bytes, another word")
            << QByteArray("-") << QByteArray("-") << QByteArray("kworker/u8:2-ev") << "kworker/u8:2-ev";
        QTest::newRow("nothing") << QByteArray() << QByteArray() << QByteArray() << "";
    }

    void theNameComesFromWhatIsKnown() {
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, firstWord);
        QFETCH(QByteArray, shortName);
        QTEST(executableName(path, firstWord, shortName), "name");
    }

    void aProcessIsAskedToTerminate() {
        Idler idler;
        const RunningProcess process = idler.listed();
        QCOMPARE(endProcess(process), Ending::Asked);
        QCOMPARE(idler.endedBy(), SIGTERM);
    }

    void aProcessThatWasEndedIsNotListedAnyMore() {
        const Idler idler;
        QCOMPARE(endProcess(idler.listed()), Ending::Asked);
        QTRY_VERIFY(!find(idler.id()));
    }

    void aProcessThatHasGoneIsTold() {
        Idler idler;
        const RunningProcess process = idler.listed();
        QCOMPARE(endProcess(process), Ending::Asked);
        QCOMPARE(idler.endedBy(), SIGTERM);
        QCOMPARE(endProcess(process), Ending::Gone);
    }

    void anIdThatBelongsToAnotherByNowIsLeftAlone() {
        Idler idler;
        RunningProcess before = idler.listed();
        before.began -= 1;
        QCOMPARE(endProcess(before), Ending::Gone);
        QVERIFY(idler.running());
    }

    void aZombieIsNeitherListedNorEnded() {
        const Zombie zombie;
        QVERIFY(!find(zombie.id()));
        QCOMPARE(endProcess({zombie.id(), zombie.began(), {}}), Ending::Gone);
    }

    void thisProgramAndTheFirstProcessAreNeverEnded() {
        QCOMPARE(endProcess(find(static_cast<int>(::getpid())).value()), Ending::Refused);
        QCOMPARE(endProcess(find(1).value()), Ending::Refused);
        for (const int id : {0, -1}) { // the system takes these for whole groups of processes
            QCOMPARE(endProcess({id, 0, {}}), Ending::Refused);
        }
    }
};

QTEST_GUILESS_MAIN(TestProcesses)
#include "test_processes.moc"
