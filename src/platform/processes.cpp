#include "platform/processes.h"

#include <QFile>

#include <array>
#include <csignal>
#include <libproc2/pids.h>
#include <memory>
#include <optional>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace benthor::platform {

namespace {

constexpr int kFirstProcess = 1;
constexpr int kMomentToGo = 200; // milliseconds
constexpr char kZombie = 'Z';
constexpr char kDead = 'X';

enum Item { Id, Began, State, ShortName, Path, Words };
std::array<pids_item, 6> kItems{PIDS_ID_PID, PIDS_TICS_BEGAN, PIDS_STATE, PIDS_CMD, PIDS_EXE, PIDS_CMDLINE_V};

struct Release {
    void operator()(pids_info* info) const { procps_pids_unref(&info); }
};
using Reader = std::unique_ptr<pids_info, Release>;

Reader makeReader() {
    pids_info* info = nullptr;
    return Reader(procps_pids_new(&info, kItems.data(), kItems.size()) < 0 ? nullptr : info);
}

/// Nothing of one that has ended.
std::optional<RunningProcess> processOf(const pids_stack& stack) {
    const auto& value = [&stack](Item item) -> const auto& {
        return stack.head[item].result;
    };
    const auto state = static_cast<char>(value(State).s_ch);
    if (state == kZombie || state == kDead) {
        return std::nullopt;
    }
    const auto word = [](const char* text) {
        return text != nullptr ? QByteArrayView(text) : QByteArrayView();
    };
    char** words = value(Words).strv;
    return RunningProcess{value(Id).s_int, value(Began).ull_int,
                          executableName(word(value(Path).str), word(words != nullptr ? *words : nullptr),
                                         word(value(ShortName).str))};
}

bool isRunning(const RunningProcess& process) {
    const Reader reader = makeReader();
    auto id = static_cast<unsigned>(process.id);
    const pids_fetch* found = reader ? procps_pids_select(reader.get(), &id, 1, PIDS_SELECT_PID) : nullptr;
    if (found == nullptr || found->counts->total != 1) {
        return false;
    }
    const std::optional<RunningProcess> now = processOf(**found->stacks);
    return now && now->began == process.began;
}

/// A handle on a process: it stays with that one, whoever gets the id later.
class Handle {
public:
    // The C library's own header for these calls lacks the linkage that C++ needs.
    explicit Handle(int id)
        : file_(static_cast<int>(::syscall(SYS_pidfd_open, id, 0U))) {}
    ~Handle() {
        if (file_ >= 0) {
            ::close(file_);
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    bool isOpen() const { return file_ >= 0; }
    bool terminate() const { return ::syscall(SYS_pidfd_send_signal, file_, SIGTERM, nullptr, 0U) == 0; }
    void waitForEnd(int milliseconds) const {
        pollfd ended{file_, POLLIN, 0};
        ::poll(&ended, 1, milliseconds);
    }

private:
    int file_;
};

QByteArrayView lastPart(QByteArrayView path) {
    return path.sliced(path.lastIndexOf('/') + 1);
}

} // namespace

std::vector<RunningProcess> runningProcesses() {
    std::vector<RunningProcess> all;
    const Reader reader = makeReader();
    const pids_fetch* found = reader ? procps_pids_reap(reader.get(), PIDS_FETCH_TASKS_ONLY) : nullptr;
    for (int i = 0; found != nullptr && i < found->counts->total; ++i) {
        if (std::optional<RunningProcess> process = processOf(*found->stacks[i])) {
            all.push_back(*std::move(process));
        }
    }
    return all;
}

Ending endProcess(const RunningProcess& process) {
    if (process.id <= kFirstProcess || process.id == ::getpid()) {
        return Ending::Refused;
    }
    // The handle comes first: were it opened behind the look at the start time, the id could change hands in
    // between.
    const Handle handle(process.id);
    if (!isRunning(process)) {
        return Ending::Gone;
    }
    if (!handle.isOpen() || !handle.terminate()) {
        return isRunning(process) ? Ending::Refused : Ending::Gone;
    }
    handle.waitForEnd(kMomentToGo);
    return Ending::Asked;
}

QString executableName(QByteArrayView path, QByteArrayView firstWord, QByteArrayView shortName) {
    constexpr QByteArrayView kDeleted(" (deleted)"); // the system's mark when the file was removed meanwhile
    constexpr qsizetype kShortest = 15;
    if (path.startsWith('/')) {
        const QByteArrayView file = path.endsWith(kDeleted) ? path.chopped(kDeleted.size()) : path;
        return QFile::decodeName(lastPart(file).toByteArray());
    }
    const QByteArrayView word = lastPart(firstWord);
    const bool cut = shortName.size() == kShortest && word.startsWith(shortName);
    return QFile::decodeName((cut ? word : shortName).toByteArray());
}

} // namespace benthor::platform
