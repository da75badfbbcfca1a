// A start of the program and the copy that is open already, here on two threads of one process.

#include "platform/activationtoken.h"
#include "platform/instancecall.h"
#include "platform/instancelock.h"
#include "tests/support/asnobody.h"
#include "tests/support/calling.h"

#include <QDir>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace benthor;
using namespace std::chrono_literals;
using platform::CallAnswer;
using platform::CallDoor;
using platform::callInstance;
using platform::InstanceLock;
using tests::Call;
using How = CallAnswer::How;

namespace {

/// A caller of another make, at the address of the calls; closed with the object.
class RawCaller {
public:
    explicit RawCaller(const QByteArray& address)
        : socket_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0)) {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::copy(address.begin(), address.end(), name.sun_path + 1);
        const auto size =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<size_t>(address.size()));
        connected_ = ::connect(socket_, reinterpret_cast<const sockaddr*>(&name), size) == 0;
    }
    ~RawCaller() { ::close(socket_); }
    RawCaller(const RawCaller&) = delete;
    RawCaller& operator=(const RawCaller&) = delete;

    bool isConnected() const { return connected_; }
    void say(const QByteArray& message) const {
        static_cast<void>(
            !::send(socket_, message.constData(), static_cast<size_t>(message.size()), MSG_NOSIGNAL));
    }
    /// Whether the other side has closed without a word.
    bool wasHungUpOn() const {
        char byte = 0;
        return ::recv(socket_, &byte, 1, MSG_DONTWAIT) == 0;
    }

private:
    int socket_;
    bool connected_ = false;
};

} // namespace

class TestInstanceCall : public QObject {
    Q_OBJECT

private slots:
    void init() {
        directory_ = std::make_unique<QTemporaryDir>();
        heard_.clear();
        tokens_.clear();
    }

    void aFileIsHandedOverAsItIs_data();
    void aFileIsHandedOverAsItIs();
    void anEmptyCallAsksForTheFront();
    void aTokenGoesOverWithTheCall_data();
    void aTokenGoesOverWithTheCall();
    void aTokenIsTakenOutOfTheEnvironmentAndLentToIt();
    void aRefusalComesWithItsWords();
    void aCopyThatIsEndingIsNobody();
    void withoutACopyNobodyIsReached();
    void aFolderHasOneAddressByAllItsNames();
    void aSecondDoorOfTheSameFolderIsShut();
    void whatIsNoCallIsNotHeard_data();
    void whatIsNoCallIsNotHeard();
    void aCallerWhoSaysNothingKeepsNobodyElseOut();
    void anotherUsersCallIsNotHeard();
    void aCallerWhoHasGivenUpIsNotObeyed();
    void aBusyLoopThatServesNoLinesHears();
    void manyCallersAreAllAnswered();
    void theLockSaysWhoHoldsIt();
    void aLockIsTakenWhenItsHolderEnds();

private:
    QString folder() const { return directory_->path(); }
    CallDoor::Answer noting(CallAnswer answer = {How::Taken, {}}) {
        return [this, answer](const QString& file, const QByteArray& token) {
            heard_ += file;
            tokens_ += token;
            return answer;
        };
    }

    std::unique_ptr<QTemporaryDir> directory_;
    QStringList heard_;
    QByteArrayList tokens_;
};

void TestInstanceCall::aFileIsHandedOverAsItIs_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "/home/anna/plan.mit";
    QTest::newRow("blanks and quotes") << "/home/an na/\"my\" 'plan'.mit";
    QTest::newRow("a line end") << "/home/anna/line\nend\r\n.mit";
    QTest::newRow("letters of the world") << QStringLiteral("/home/änna/пла́н 計画 🐬.mit");
    QTest::newRow("as long as can be") << QString(u'/' + QString(4095, u'x'));
}

void TestInstanceCall::aFileIsHandedOverAsItIs() {
    QFETCH(QString, path);
    const CallDoor door(folder(), noting());
    QVERIFY(door.isOpen());
    const Call call(folder(), path);
    QTRY_VERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Taken);
    QCOMPARE(heard_, QStringList{path});
}

void TestInstanceCall::anEmptyCallAsksForTheFront() {
    const CallDoor door(folder(), noting());
    const Call call(folder(), {});
    QTRY_VERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Taken);
    QCOMPARE(heard_, QStringList{QString()});
}

void TestInstanceCall::aTokenGoesOverWithTheCall_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<QByteArray>("heard");
    const QByteArray usual = "desktop/Files/2041-0-host_TIME81234";
    QTest::newRow("with a file") << "/home/anna/plan.mit" << usual << usual;
    QTest::newRow("to the front") << QString() << usual << usual;
    QTest::newRow("none") << "/home/anna/plan.mit" << QByteArray() << QByteArray();
    QTest::newRow("as long as can be, with such a path")
        << QString(u'/' + QString(4095, u'x')) << QByteArray(512, 't') << QByteArray(512, 't');
    QTest::newRow("what is no token stays") << QString() << QByteArray("a b") << QByteArray();
    QTest::newRow("too long a one stays") << QString() << QByteArray(513, 't') << QByteArray();
}

void TestInstanceCall::aTokenGoesOverWithTheCall() {
    QFETCH(QString, path);
    QFETCH(QByteArray, token);
    QFETCH(QByteArray, heard);
    const CallDoor door(folder(), noting());
    const Call call(
        folder(), path, 20s, [] { return true; }, token);
    QTRY_VERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Taken);
    QCOMPARE(heard_, QStringList{path});
    QCOMPARE(tokens_, QByteArrayList{heard});
}

void TestInstanceCall::aTokenIsTakenOutOfTheEnvironmentAndLentToIt() {
    constexpr const char* kName = "XDG_ACTIVATION_TOKEN";
    qputenv(kName, "one-2");
    QCOMPARE(platform::takeActivationToken(), "one-2");
    QVERIFY(!qEnvironmentVariableIsSet(kName));
    QCOMPARE(platform::takeActivationToken(), QByteArray());
    qputenv(kName, "one 2");
    QCOMPARE(platform::takeActivationToken(), QByteArray());
    {
        const platform::LeaveToActivate leave("three");
        QCOMPARE(qgetenv(kName), "three");
    }
    QVERIFY(!qEnvironmentVariableIsSet(kName));
    qputenv(kName, "of this start");
    { const platform::LeaveToActivate none({}); }
    QCOMPARE(qgetenv(kName), "of this start");
    qunsetenv(kName);
}

void TestInstanceCall::aRefusalComesWithItsWords() {
    const CallDoor door(folder(), noting({How::Refused, QStringLiteral("Ä device\nis busy.")}));
    const Call call(folder(), QStringLiteral("/a.mit"));
    QTRY_VERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Refused);
    QCOMPARE(call.answer().words, QStringLiteral("Ä device\nis busy."));
}

void TestInstanceCall::aCopyThatIsEndingIsNobody() {
    const CallDoor door(folder(), noting({How::Nobody, {}}));
    const Call call(folder(), QStringLiteral("/a.mit"));
    QTRY_VERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Nobody);
}

void TestInstanceCall::withoutACopyNobodyIsReached() {
    QCOMPARE(callInstance(folder(), QStringLiteral("/a.mit"), 20s).how, How::Nobody);
    QCOMPARE(callInstance(directory_->filePath(QStringLiteral("none")), {}, 20s).how, How::Nobody);
    { const CallDoor gone(folder(), noting()); }
    QCOMPARE(callInstance(folder(), QStringLiteral("/a.mit"), 20s).how, How::Nobody);
    QCOMPARE(heard_, QStringList());
    QVERIFY(QDir(folder()).isEmpty()); // nothing is left there
}

void TestInstanceCall::aFolderHasOneAddressByAllItsNames() {
    const QTemporaryDir other;
    const QString link = other.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(folder(), link));
    const CallDoor door(folder(), noting());
    const Call call(link, {});
    QTRY_VERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Taken);
    QCOMPARE(callInstance(other.path(), {}, 20s).how, How::Nobody);
}

void TestInstanceCall::aSecondDoorOfTheSameFolderIsShut() {
    const CallDoor door(folder(), noting());
    const CallDoor second(folder(), noting());
    QVERIFY(door.isOpen());
    QVERIFY(!second.isOpen());
}

void TestInstanceCall::whatIsNoCallIsNotHeard_data() {
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("another word") << QByteArray("benthor close\n");
    QTest::newRow("half a call") << QByteArray("benthor op");
    QTest::newRow("no path") << QByteArray("benthor open\n");
    QTest::newRow("a path from somewhere") << QByteArray("benthor open\nplan.mit");
    QTest::newRow("no token behind a zero") << QByteArray("benthor open\n/a.mit\0", 20);
    QTest::newRow("blanks in a token") << QByteArray("benthor open\n/a.mit\0a b", 23);
    QTest::newRow("two tokens") << QByteArray("benthor front\n\0a\0b", 18);
    QTest::newRow("a token too long") << QByteArray("benthor front\n") + '\0' + QByteArray(513, 'x');
    QTest::newRow("a token alone") << QByteArray("\0a", 2);
    QTest::newRow("no letters") << QByteArray("benthor open\n/\xff\xfe.mit");
    QTest::newRow("too long") << QByteArray("benthor open\n/" + QByteArray(100000, 'x'));
}

void TestInstanceCall::whatIsNoCallIsNotHeard() {
    QFETCH(QByteArray, message);
    const CallDoor door(folder(), noting());
    const RawCaller caller(platform::callAddress(folder()));
    QVERIFY(caller.isConnected());
    caller.say(message);
    QTRY_VERIFY(caller.wasHungUpOn());
    QCOMPARE(heard_, QStringList());
}

void TestInstanceCall::aCallerWhoSaysNothingKeepsNobodyElseOut() {
    const CallDoor door(folder(), noting());
    const RawCaller silent(platform::callAddress(folder()));
    QVERIFY(silent.isConnected());
    const Call call(folder(), {});
    QTRY_VERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Taken);
    QTRY_VERIFY(silent.wasHungUpOn());
}

void TestInstanceCall::anotherUsersCallIsNotHeard() {
    if (geteuid() != 0) {
        QSKIP("only root can be somebody else");
    }
    const CallDoor door(folder(), noting());
    const QByteArray address = platform::callAddress(folder());
    QCOMPARE(tests::runAsNobody([&address] {
                 const RawCaller caller(address);
                 caller.say("benthor open\n/a.mit");
                 return caller.isConnected() ? 0 : 1;
             }),
             0);
    // What came before this call has been looked at when it is answered.
    const Call call(folder(), {});
    QTRY_VERIFY(call.isOver());
    QCOMPARE(heard_, QStringList{QString()});
}

void TestInstanceCall::aCallerWhoHasGivenUpIsNotObeyed() {
    const CallDoor door(folder(), noting());
    QCOMPARE(callInstance(folder(), QStringLiteral("/a.mit"), 50ms).how,
             How::Silent); // nobody serves the door
    const Call call(folder(), {});
    QTRY_VERIFY(call.isOver());
    QCOMPARE(heard_, QStringList{QString()});
}

void TestInstanceCall::aBusyLoopThatServesNoLinesHears() {
    const CallDoor door(folder(), noting());
    const Call call(folder(), QStringLiteral("/a.mit"));
    for (const QDeadlineTimer end(20s); !call.isOver() && !end.hasExpired();) {
        QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
        QThread::msleep(1);
    }
    QVERIFY(call.isOver());
    QCOMPARE(call.answer().how, How::Taken);
}

void TestInstanceCall::manyCallersAreAllAnswered() {
    constexpr int kCallers = 30;
    const CallDoor door(folder(), noting());
    std::vector<std::unique_ptr<Call>> calls;
    for (int i = 0; i < kCallers; ++i) {
        calls.push_back(std::make_unique<Call>(folder(), QStringLiteral("/%1.mit").arg(i)));
    }
    for (const auto& call : calls) {
        QTRY_VERIFY_WITH_TIMEOUT(call->isOver(), 20000);
        QCOMPARE(call->answer().how, How::Taken);
    }
    heard_.removeDuplicates();
    QCOMPARE(heard_.size(), kCallers);
}

void TestInstanceCall::theLockSaysWhoHoldsIt() {
    const QFileInfo file(directory_->filePath(QStringLiteral(".benthor.lock")));
    { const InstanceLock made(folder()); }
    const QDateTime before = file.lastModified();
    for (const char* const program : {"benthor", "benthorctl"}) {
        const InstanceLock first(folder(), program);
        const InstanceLock second(folder());
        QVERIFY(first.held());
        QVERIFY(!second.held());
        QCOMPARE(second.holder(), program);
        QCOMPARE(InstanceLock(folder()).holder(), program); // who looked in vain is not taken for a holder
    }
    QVERIFY(InstanceLock(folder()).holder().isEmpty());
    QCOMPARE(QFileInfo(file.filePath()).lastModified(), before); // a look and a failed command change nothing
}

void TestInstanceCall::aLockIsTakenWhenItsHolderEnds() {
    auto first = std::make_unique<InstanceLock>(folder());
    InstanceLock second(folder(), "benthorctl");
    QVERIFY(!second.tryAgain());
    first.reset();
    QVERIFY(second.tryAgain());
    QVERIFY(second.held());
    const InstanceLock third(folder());
    QVERIFY(!third.held());
    QCOMPARE(third.holder(), "benthorctl");
}

QTEST_GUILESS_MAIN(TestInstanceCall)
#include "test_instancecall.moc"
