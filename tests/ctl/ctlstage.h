#pragma once

#include "divefiles/importer.h"
#include "tests/support/programfixture.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <sys/stat.h>

namespace benthor::tests {

/// What a run of the tool came to.
struct Ran {
    int status = -1; ///< -1: it did not end by itself
    QByteArray out, err;
    QJsonObject json() const { return QJsonDocument::fromJson(out).object(); }
    QStringList lines() const {
        QStringList all = QString::fromUtf8(out).split(QLatin1Char('\n'));
        all.removeLast();
        return all;
    }
};

/// Starts the tool with these words.
inline void startTool(QProcess& process, const QStringList& words) {
    process.setProgram(QStringLiteral(BENTHORCTL));
    process.setArguments(words);
    process.start();
}

inline Ran resultOf(QProcess& process) {
    constexpr int kPatience = 60000;
    if (!process.waitForFinished(kPatience) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// `before`: what the tool's process does before it becomes the tool.
inline Ran runTool(const QStringList& words, const std::function<void()>& before = {}) {
    QProcess process;
    if (before) {
        process.setChildProcessModifier(before);
    }
    startTool(process, words);
    return resultOf(process);
}

/// All of a folder: names, bytes, rights and moments of change.
inline QStringList snapshotOf(const QString& root) {
    QStringList all;
    QDirIterator entries(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        struct stat state {};
        if (::stat(QFile::encodeName(path).constData(), &state) != 0) {
            qFatal("no look at %s", qPrintable(path));
        }
        const QByteArray bytes = entries.fileInfo().isFile() ? platform::readFile(path).value_or("?") : "";
        all +=
            QStringLiteral("%1 %2 %3.%4 %5")
                .arg(path)
                .arg(state.st_mode, 0, 8)
                .arg(state.st_mtim.tv_sec)
                .arg(state.st_mtim.tv_nsec)
                .arg(QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex()));
    }
    all.sort();
    return all;
}

/// A program folder with dives, which the tool is run on. The test's own process has its store open until
/// close().
class ToolFolder : public ProgramFixture {
public:
    inline static const QList<QByteArray> kNoDives;

    /// Imports dives D0000001 and on, with these start codes.
    explicit ToolFolder(const QList<QByteArray>& startcodes = {"812345678", "812445678", "912345678"}) {
        int number = 0;
        for (const QByteArray& code : startcodes) {
            putWaiting(QStringLiteral("Dive%1.txt").arg(++number, 3, 10, QLatin1Char('0')), diveOf(code));
        }
        importWaiting();
    }
    void importDive(const QByteArray& text) const {
        putWaiting(QStringLiteral("dive.txt"), text);
        importWaiting();
    }
    /// A dive of an hour.
    static QByteArray diveOf(const QByteArray& startcode) {
        return goodDive(startcode).replace("Finish,812348145",
                                           "Finish," + QByteArray::number(startcode.toLongLong() + 3600));
    }
    void close() const {
        process().mainrecordset.close();
        process().countrecordset.close();
        process().database.close();
    }
    QStringList words(const QStringList& more) const {
        return QStringList{QStringLiteral("--folder"), folder.root()} + more;
    }
    Ran run(const QStringList& more, const std::function<void()>& before = {}) const {
        return runTool(words(more), before);
    }
    QStringList snapshot() const { return snapshotOf(folder.root()); }

private:
    void importWaiting() const {
        divefiles::ImportState state;
        divefiles::ImportScreen screen;
        if (divefiles::importdives(folder, state, screen) == divefiles::ImportEnd::Failed) {
            qFatal("the dives of the test were not imported");
        }
    }
};

} // namespace benthor::tests
