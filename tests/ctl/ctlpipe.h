#pragma once

#include "tests/ctl/ctlstage.h"

#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace benthor::tests {

/// A dive with so many samples that no pipe holds them.
inline QByteArray longDive() {
    QByteArray dive = goodDive();
    constexpr int kSamples = 20000;
    return dive.replace(",10,0,70,M0,T20,A500\r\n",
                        QByteArray(",10,0,70,M0,T20,A500\r\n").repeated(kSamples));
}

/// What a child does so that its files cannot grow beyond `most` bytes.
inline std::function<void()> smallDisk(rlim_t most) {
    return [most] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{most, most};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
}

/// Standard output that the test reads, or does not.
class Pipe {
public:
    Pipe() {
        path_ = folder_.filePath(QStringLiteral("pipe"));
        if (::mkfifo(QFile::encodeName(path_).constData(), 0600) != 0) {
            qFatal("no pipe");
        }
        open_ = ::open(QFile::encodeName(path_).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    ~Pipe() { closeReader(); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    QString path() const { return path_; }
    int waiting() const {
        int bytes = 0;
        return ::ioctl(open_, FIONREAD, &bytes) == 0 ? bytes : -1;
    }
    void closeReader() {
        if (open_ >= 0) {
            ::close(std::exchange(open_, -1));
        }
    }

private:
    QTemporaryDir folder_;
    QString path_;
    int open_ = -1;
};

/// Runs the tool until its output, which nobody reads, takes no more; then `act`.
inline Ran runUntilFull(const QStringList& words, const std::function<void(QProcess&, Pipe&)>& act) {
    Pipe pipe;
    QProcess process;
    process.setStandardOutputFile(pipe.path());
    startTool(process, words);
    constexpr int kPatience = 60000;
    constexpr int kFull = 14 * 4096; // of 16 pages, of which not each is filled to its end
    if (!process.waitForStarted() || !QTest::qWaitFor([&] { return pipe.waiting() >= kFull; }, kPatience)) {
        qFatal("the pipe was not filled");
    }
    act(process, pipe);
    return resultOf(process);
}

} // namespace benthor::tests
