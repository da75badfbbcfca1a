#include "platform/instancecall.h"

#include "platform/activationtoken.h"

#include <QFile>
#include <QSocketNotifier>
#include <QStringDecoder>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace benthor::platform {

namespace {

using namespace std::chrono_literals;
using How = CallAnswer::How;

constexpr qsizetype kLongestMessage = kLongestPath + 1024;
constexpr size_t kMostCallers = 8;
constexpr auto kPatienceWithCaller = 2s;
constexpr auto kSeldom = 1000ms;
constexpr auto kOften = 20ms;

// A message is one packet, so it is there as a whole or not at all. Behind the two calls a zero byte and the
// caller's leave to come to the front may follow.
const QByteArray kFront = QByteArrayLiteral("benthor front\n");
const QByteArray kOpen = QByteArrayLiteral("benthor open\n"); ///< the path follows, as it is
const QByteArray kTaken = QByteArrayLiteral("taken\n");       ///< words follow, in both
const QByteArray kRefused = QByteArrayLiteral("refused\n");

struct Address {
    sockaddr_un name{};
    socklen_t size = 0;
};

/// An address that begins with a zero byte is no file.
std::optional<Address> addressOf(const QString& folder) {
    const QByteArray text = callAddress(folder);
    if (text.isEmpty()) {
        return std::nullopt;
    }
    Address address;
    address.name.sun_family = AF_UNIX;
    std::copy(text.begin(), text.end(), address.name.sun_path + 1);
    address.size =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + static_cast<size_t>(text.size()));
    return address;
}

const sockaddr* generic(const Address& address) {
    return reinterpret_cast<const sockaddr*>(&address.name);
}

int makeSocket(int flags) {
    return ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0);
}

bool isOfThisUser(int socket) {
    ucred other{};
    socklen_t size = sizeof(other);
    return ::getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &other, &size) == 0 && other.uid == ::geteuid();
}

void send(int socket, const QByteArray& message) {
    static_cast<void>(!::send(socket, message.constData(), static_cast<size_t>(message.size()),
                              MSG_DONTWAIT | MSG_NOSIGNAL));
}

enum class Received { Nothing, Message, Gone };

Received receive(int socket, QByteArray& message) {
    message.resize(kLongestMessage);
    const ssize_t size =
        ::recv(socket, message.data(), static_cast<size_t>(message.size()), MSG_DONTWAIT | MSG_TRUNC);
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
        return Received::Nothing;
    }
    if (size <= 0 || size > message.size()) {
        return Received::Gone;
    }
    message.truncate(size);
    return Received::Message;
}

/// Whether the caller has given up meanwhile: what it said holds no longer.
bool hasHungUp(int socket) {
    pollfd one{socket, POLLRDHUP, 0};
    return ::poll(&one, 1, 0) > 0 && (one.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0;
}

struct Wish {
    QString file; ///< empty for a call to the front
    QByteArray token;
};

/// Nothing for what is no call.
std::optional<Wish> wishIn(const QByteArray& message) {
    const qsizetype end = message.indexOf('\0');
    const QByteArray call = end < 0 ? message : message.left(end);
    Wish wish{{}, end < 0 ? QByteArray() : message.mid(end + 1)};
    if (end >= 0 && !isActivationToken(wish.token)) {
        return std::nullopt;
    }
    if (call == kFront) {
        return wish;
    }
    if (!call.startsWith(kOpen)) {
        return std::nullopt;
    }
    const QByteArray bytes = call.mid(kOpen.size());
    QStringDecoder decoder(QStringDecoder::Utf8);
    wish.file = decoder(bytes);
    const bool good = !decoder.hasError() && wish.file.startsWith(u'/');
    return good ? std::optional(wish) : std::nullopt;
}

std::optional<CallAnswer> answerIn(const QByteArray& message) {
    for (const auto& [lead, how] : {std::pair(kTaken, How::Taken), std::pair(kRefused, How::Refused)}) {
        if (message.startsWith(lead)) {
            return CallAnswer{how, QString::fromUtf8(message.mid(lead.size()))};
        }
    }
    return std::nullopt;
}

CallAnswer waitForAnswer(int socket, std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    QByteArray message;
    while (std::chrono::steady_clock::now() < end) {
        switch (receive(socket, message)) {
        case Received::Gone:
            return {}; // it ended
        case Received::Message:
            return answerIn(message).value_or(CallAnswer{});
        case Received::Nothing:
            break;
        }
        const auto rest =
            std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        pollfd one{socket, POLLIN, 0};
        static_cast<void>(::poll(&one, 1, static_cast<int>(std::max<qint64>(rest.count() + 1, 0))));
    }
    return {How::Silent, {}};
}

} // namespace

/// Two names of one folder have one address.
QByteArray callAddress(const QString& folder) {
    struct stat facts {};
    if (::stat(QFile::encodeName(folder).constData(), &facts) != 0) {
        return {};
    }
    return "benthor-" + QByteArray::number(::geteuid()) + '-' +
           QByteArray::number(static_cast<quint64>(facts.st_dev), 16) + '-' +
           QByteArray::number(static_cast<quint64>(facts.st_ino), 16);
}

CallAnswer callInstance(const QString& folder, const QString& file, std::chrono::milliseconds patience,
                        const QByteArray& token) {
    const std::optional<Address> address = addressOf(folder);
    const QByteArray path = file.toUtf8();
    const int socket = makeSocket(0);
    if (!address || socket < 0 || path.size() > kLongestPath) {
        if (socket >= 0) {
            ::close(socket);
        }
        return {};
    }
    // Where more callers wait than the copy has let in, the connection itself waits.
    const timeval most{static_cast<time_t>(patience.count() / 1000),
                       static_cast<suseconds_t>(patience.count() % 1000 * 1000)};
    ::setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &most, sizeof(most));
    CallAnswer answer;
    if (::connect(socket, generic(*address), address->size) != 0) {
        answer.how = errno == EAGAIN ? How::Silent : How::Nobody;
    } else if (isOfThisUser(socket)) {
        const QByteArray leave = isActivationToken(token) ? '\0' + token : QByteArray();
        send(socket, (path.isEmpty() ? kFront : kOpen + path) + leave);
        answer = waitForAnswer(socket, patience);
    }
    ::close(socket);
    return answer;
}

CallDoor::CallDoor(const QString& folder, Answer answer)
    : answer_(std::move(answer)) {
    const std::optional<Address> address = addressOf(folder);
    const int socket = address ? makeSocket(SOCK_NONBLOCK) : -1;
    if (socket < 0) {
        return;
    }
    if (::bind(socket, generic(*address), address->size) != 0 ||
        ::listen(socket, static_cast<int>(kMostCallers)) != 0) {
        ::close(socket);
        return;
    }
    listener_ = socket;
    notifier_ = std::make_unique<QSocketNotifier>(listener_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, &timer_, [this] { look(); });
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(kSeldom);
}

CallDoor::~CallDoor() {
    notifier_.reset();
    for (const Caller& caller : callers_) {
        ::close(caller.socket);
    }
    if (listener_ >= 0) {
        ::close(listener_);
    }
}

void CallDoor::look() {
    takeCallers();
    std::erase_if(callers_, [this](const Caller& caller) {
        const bool done = serve(caller);
        if (done) {
            ::close(caller.socket);
        }
        return done;
    });
    timer_.start(callers_.empty() ? kSeldom : kOften);
}

void CallDoor::takeCallers() {
    while (callers_.size() < kMostCallers) {
        const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (socket < 0) {
            return;
        }
        callers_.push_back({socket, std::chrono::steady_clock::now() + kPatienceWithCaller});
    }
}

/// True when nothing more is to be had of this caller.
bool CallDoor::serve(const Caller& caller) {
    if (!isOfThisUser(caller.socket)) {
        return true;
    }
    QByteArray message;
    switch (receive(caller.socket, message)) {
    case Received::Nothing:
        return std::chrono::steady_clock::now() >= caller.until;
    case Received::Gone:
        return true;
    case Received::Message:
        break;
    }
    const std::optional<Wish> wish = wishIn(message);
    if (!wish || hasHungUp(caller.socket)) {
        return true;
    }
    const CallAnswer answer = answer_(wish->file, wish->token);
    if (answer.how == How::Taken || answer.how == How::Refused) {
        send(caller.socket, (answer.how == How::Taken ? kTaken : kRefused) + answer.words.toUtf8());
    }
    return true;
}

} // namespace benthor::platform
