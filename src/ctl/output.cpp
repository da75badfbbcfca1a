#include "ctl/output.h"

#include "ctl/interruption.h"
#include "ctl/outcome.h"
#include "ctl/table.h"

#include <QJsonDocument>

#include <cerrno>
#include <cstring>
#include <sys/ioctl.h>
#include <unistd.h>

namespace benthor::ctl {

namespace {

constexpr qsizetype kBlock = 65536;

void writeAll(const QByteArray& bytes) {
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count =
            ::write(STDOUT_FILENO, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR) {
            throw Failure(kFault, QStringLiteral("Cannot write to standard output: ") +
                                      QString::fromLocal8Bit(std::strerror(errno)));
        }
        written += std::max<ssize_t>(count, 0);
        if (written < bytes.size()) {
            goOnUnlessInterrupted(); // it waited for its reader, and took a part or nothing
        }
    }
}

void writeError(const QByteArray& bytes) {
    // Nobody is left to be told where this fails.
    static_cast<void>(!::write(STDERR_FILENO, bytes.constData(), static_cast<size_t>(bytes.size())));
}

} // namespace

void Output::bytes(const QByteArray& bytes) {
    waiting_ += bytes;
    if (waiting_.size() >= kBlock) {
        flush();
    }
}

void Output::line(const QString& text) {
    bytes(text.toUtf8() + '\n');
}

void Output::json(const QJsonObject& object) {
    bytes(QJsonDocument(object).toJson(QJsonDocument::Indented));
}

void Output::flush() {
    writeAll(std::exchange(waiting_, {}));
}

JsonList::JsonList(Output& output, const char* name)
    : output_(output) {
    output_.bytes(QByteArray("{\"") + name + "\": [");
}

void JsonList::item(const QJsonObject& object) {
    output_.bytes((any_ ? ",\n" : "\n") + QJsonDocument(object).toJson(QJsonDocument::Compact));
    any_ = true;
}

void JsonList::end() {
    output_.bytes(any_ ? "\n]}\n" : "]}\n");
}

void tell(const QString& text) {
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        writeError(shownText(line).toUtf8() + '\n'); // names of files and dives may come from anyone
    }
}

Progress::Progress(QString what)
    : what_(std::move(what))
    , isTerminal_(::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    if (isShown_) {
        writeError("\r\033[K");
    }
}

void Progress::show(qint64 done, qint64 of) {
    constexpr qint64 kSteps = 100;
    const qint64 now = of > 0 ? done * kSteps / of : 0;
    if (!isTerminal_ || now == last_) {
        return;
    }
    last_ = now;
    isShown_ = true;
    writeError("\r" + QStringLiteral("%1: %2 of %3").arg(what_).arg(done).arg(of).toUtf8() + "\033[K");
}

int terminalWidth() {
    winsize size{};
    return ::isatty(STDOUT_FILENO) == 1 && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

} // namespace benthor::ctl
