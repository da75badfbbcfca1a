#pragma once

#include "link/console.h"
#include "session/process.h"
#include "tests/link/fakehost.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace benthor::tests {

/// The command console with a line that is open and leads nowhere.
struct ConsoleStage {
    ConsoleStage() {
        process() = Process();
        host.line.open = true;
    }
    void choose(int option) {
        link.console.option = option;
        link::preparecommand(link);
    }
    void answer(const QByteArray& reply) {
        host.line.onPoll = [this, reply] { host.line.waiting = reply; };
    }
    QString file(const QByteArray& bytes, const QString& name) {
        QFile out(folder.filePath(name));
        if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size()) {
            qFatal("no file to open");
        }
        return out.fileName();
    }

    /// Opens a file with those bytes through the entry; its name stands in the box then.
    void openFile(const QByteArray& bytes, const QString& name) {
        host.chosenFile = file(bytes, name);
        link::mnuOpen_click(link, host);
    }

    QTemporaryDir folder;
    link::LinkState link;
    FakeHost host;
};

} // namespace benthor::tests
