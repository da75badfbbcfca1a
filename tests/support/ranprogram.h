#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace benthor::tests {

/// What came of a program that was run to its end.
struct Ended {
    int status = -1; ///< -1 where it could not be run, or crashed
    QByteArray out, err;
};

inline Ended runProgram(const QString& program, const QStringList& words, const QString& folder = {}) {
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, words);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace benthor::tests
