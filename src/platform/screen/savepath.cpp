#include "platform/screen/savepath.h"

#include "platform/screen/dialogs.h"

#include <QDir>
#include <QFileInfo>

namespace benthor::platform {

namespace {

const QString kAllFiles = QStringLiteral("*");

/// The endings of a filter's types, without their point; "*" for all files.
QStringList endingsOf(const QString& filter) {
    QStringList endings;
    const QStringList parts = filter.split(u'|');
    for (qsizetype at = 1; at < parts.size(); at += 2) {
        endings += parts[at].section(u'.', 1).trimmed();
    }
    return endings;
}

} // namespace

QString withEnding(const QString& path, const QString& filter, int type) {
    const QStringList endings = endingsOf(filter);
    const QFileInfo file(path);
    const QString typed = file.suffix();
    const bool named = typed != kAllFiles && endings.contains(typed, Qt::CaseInsensitive);
    const QString picked = endings.value(type);
    if (type > 0 && !picked.isEmpty() && picked != kAllFiles) {
        if (typed.compare(picked, Qt::CaseInsensitive) == 0) {
            return path;
        }
        return (named ? path.chopped(typed.size() + 1) : path) + u'.' + picked;
    }
    const bool anything = endings.contains(kAllFiles) && !typed.isEmpty();
    if (path.isEmpty() || endings.isEmpty() || named || anything) {
        return path;
    }
    return (path.endsWith(u'.') ? path.chopped(1) : path) + u'.' + endings.first();
}

QString askSavePath(QWidget* parent, const QString& title, const QString& folder, const QString& filter) {
    QString start = folder;
    for (;;) {
        const SaveAnswer answer = dialogs().saveFileAs(parent, title, start, filter);
        if (answer.path.isEmpty()) {
            return {};
        }
        const QString path = withEnding(answer.path, filter, answer.type);
        if (path == answer.path || !QFileInfo::exists(path) ||
            dialogs().confirm(
                parent,
                QStringLiteral("%1 is already there. Replace it?").arg(QDir::toNativeSeparators(path)), title,
                BoxKind::Warning, true)) {
            return path;
        }
        start = answer.path;
    }
}

} // namespace benthor::platform
