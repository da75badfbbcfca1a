#include "store/jet/readjet.h"

#include "store/jet/frames.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

namespace benthor::store {

using platform::StoreError;

namespace {

constexpr int kLookMilliseconds = 20;
constexpr qint64 kPiece = 1 << 16;
constexpr int kEndMilliseconds = 1000;

QString& chosenReader() {
    static QString path;
    return path;
}

QString readerPath() {
    if (!chosenReader().isEmpty()) {
        return chosenReader();
    }
    const QString folder = QCoreApplication::applicationDirPath();
    const QString installed = QDir::cleanPath(folder + QStringLiteral("/../libexec/benthor/benthor-readjet"));
    const QString beside = folder + QStringLiteral("/benthor-readjet");
    return !QFileInfo(beside).isExecutable() && QFileInfo(installed).isExecutable() ? installed : beside;
}

class ReadingProgram : public JetRowSource {
public:
    ReadingProgram(JetProgress waiting, std::chrono::milliseconds patience)
        : waiting_(std::move(waiting))
        , patience_(patience)
        , piece_(kPiece, '\0') {}

    void start(const QString& path) {
        const QString program = readerPath();
        if (!QFileInfo(program).isExecutable()) {
            throw StoreError(QStringLiteral("The program that reads Jet files is missing: %1").arg(program));
        }
        process_.setStandardErrorFile(QProcess::nullDevice());
        process_.setStandardInputFile(QProcess::nullDevice());
        process_.start(program, {QFileInfo(path).absoluteFilePath()}, QIODevice::ReadOnly);
        if (!process_.waitForStarted()) {
            throw StoreError(QStringLiteral("The program that reads Jet files cannot be started: %1")
                                 .arg(process_.errorString()));
        }
        if (event() != FrameStream::Event::Head) {
            throw endedEarly();
        }
    }

    ~ReadingProgram() override {
        if (process_.state() != QProcess::NotRunning) {
            process_.kill();
            process_.waitForFinished(kEndMilliseconds);
        }
    }

    const JetHead& head() override { return stream_.head(); }

    bool nextRow(std::vector<JetValue>& row) override {
        if (event() != FrameStream::Event::Row) {
            return false;
        }
        row = stream_.row();
        return true;
    }

    void finish() override {
        if (event() != FrameStream::Event::End) {
            throw endedEarly();
        }
        for (QElapsedTimer since = started(); process_.state() != QProcess::NotRunning;) {
            process_.waitForFinished(kLookMilliseconds);
            readMore();
            stayPatient(since);
        }
        readMore();
        if (process_.exitStatus() != QProcess::NormalExit || process_.exitCode() != 0) {
            throw endedEarly();
        }
    }

private:
    static QElapsedTimer started() {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }

    /// The next event, waited for.
    FrameStream::Event event() {
        FrameStream::Event event = stream_.next();
        for (QElapsedTimer since = started(); event == FrameStream::Event::NeedsMore;
             event = stream_.next()) {
            if (!readMore()) {
                waitForMore(since);
            }
        }
        return event;
    }

    bool readMore() {
        const qint64 count = process_.read(piece_.data(), static_cast<qint64>(piece_.size()));
        if (count <= 0) {
            return false;
        }
        stream_.add(std::string_view(piece_.data(), static_cast<std::size_t>(count)));
        return true;
    }

    void waitForMore(const QElapsedTimer& since) {
        if (process_.waitForReadyRead(kLookMilliseconds) || process_.bytesAvailable() > 0) {
            return;
        }
        if (process_.state() == QProcess::NotRunning) {
            throw endedEarly();
        }
        stayPatient(since);
    }

    void stayPatient(const QElapsedTimer& since) {
        if (waiting_ && !waiting_(0, 0)) {
            throw JetStopped();
        }
        if (since.hasExpired(patience_.count())) {
            throw StoreError(QStringLiteral("The program that reads Jet files came to no end with it."));
        }
    }

    StoreError endedEarly() {
        process_.waitForFinished(kEndMilliseconds);
        const bool died =
            process_.state() == QProcess::NotRunning && process_.exitStatus() == QProcess::CrashExit;
        return StoreError(
            died ? QStringLiteral("The program that reads Jet files broke down over it.")
                 : QStringLiteral("The program that reads Jet files ended before the file did."));
    }

    JetProgress waiting_;
    std::chrono::milliseconds patience_;
    std::string piece_;
    FrameStream stream_;
    QProcess process_;
};

} // namespace

std::unique_ptr<JetRowSource> readjet(const QString& path, const JetProgress& waiting,
                                      std::chrono::milliseconds patience) {
    auto reader = std::make_unique<ReadingProgram>(waiting, patience);
    reader->start(path);
    return reader;
}

void setjetreader(const QString& program) {
    chosenReader() = program;
}

} // namespace benthor::store
