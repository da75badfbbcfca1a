#include "shell/openedfile.h"

#include <QFile>
#include <QFileInfo>

namespace benthor::shell {

FileKind kindOf(const QString& path) {
    const QString name = path.mid(path.lastIndexOf(u'/') + 1);
    if (name.endsWith(QLatin1String(".mit"), Qt::CaseInsensitive)) {
        return FileKind::Setup;
    }
    return name.endsWith(QLatin1String(".sog"), Qt::CaseInsensitive) ? FileKind::Image : FileKind::Other;
}

QString whyNotOpened(const QString& path) {
    const auto notOpened = [&path](const QString& reason) {
        return QStringLiteral("The file %1 was not opened. ").arg(path) + reason;
    };
    const QFileInfo file(path);
    if (!file.exists()) {
        return notOpened(file.isSymLink() ? QStringLiteral("It is a link to a file that is not there.")
                                          : QStringLiteral("It is not there."));
    }
    if (file.isDir()) {
        return notOpened(QStringLiteral("It is a folder."));
    }
    if (kindOf(path) == FileKind::Other) {
        return notOpened(
            QStringLiteral("Benthor opens setups (.mit) and firmware images (.sog). The file of a dive comes "
                           "in by the folder \"new\", or with Dive File Find on the main screen."));
    }
    // A pipe or a device would be waited for.
    if (!file.isFile()) {
        return notOpened(QStringLiteral("It is no regular file."));
    }
    QFile bytes(path);
    return bytes.open(QIODevice::ReadOnly) ? QString() : notOpened(bytes.errorString() + u'.');
}

} // namespace benthor::shell
