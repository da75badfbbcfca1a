#pragma once

#include "tests/firmware/fakereproghost.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace benthor::tests {

/// What a device tells of the bytes that it received.
inline QByteArray toldSum(qint64 sum) {
    return QByteArray::number(sum, 16).toUpper().rightJustified(8, '0') + "  Prog y/n\r\n";
}

/// A session that stands in the mode, with an image of that many bytes, a star ahead.
struct Sending {
    explicit Sending(int length = 7040, const QString& name = QStringLiteral("a.sog"), char first = '*') {
        host.line.open = true;
        firmware::freecontrols(state);
        state.reprogfolder = folder.path();
        state.Text4.assign("REPROG MODE type rb");
        image = QByteArray(length, '\0');
        for (int at = 0; at < length; ++at) {
            image[at] = static_cast<char>(at * 7 + at / 128);
        }
        if (length > 0) {
            image[0] = first;
        }
        put(name, image);
        state.Text5 = folder.filePath(name);
    }
    void put(const QString& name, const QByteArray& bytes) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("no image");
        }
    }
    void send() { firmware::Command5_click(state, host); }
    /// The device tells in the wait what it received.
    void tellSum(qint64 more) {
        host.onPause = [this, more] {
            if (host.pauses.size() == 1) {
                host.line.waiting += toldSum(state.sum + more);
            }
        };
    }
    /// What is on the line once the loop over the image has ended, as a text.
    QByteArray behind(qsizetype blocks) const {
        QByteArray text;
        for (size_t at = static_cast<size_t>(blocks); at < host.line.writes.size(); ++at) {
            text += host.line.writes[at];
        }
        return text;
    }

    QTemporaryDir folder;
    QByteArray image;
    firmware::ReprogState state;
    FakeReprogHost host;
};

} // namespace benthor::tests
