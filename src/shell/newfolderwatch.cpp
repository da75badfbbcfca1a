#include "shell/newfolderwatch.h"

#include <QStringList>

#include <algorithm>

namespace benthor::shell {

bool mayImport(QStringView linkCaption, bool linkOnScreen) {
    return linkCaption.contains(u"Search", Qt::CaseInsensitive) || !linkOnScreen;
}

bool startsImport(int waiting, int watched) {
    return waiting >= 1 && waiting > watched;
}

int watchedNext(int waiting, int watched, bool judged) {
    return judged ? waiting : std::min(waiting, watched);
}

QString waitingText(int waiting) {
    return waiting == 0   ? QStringLiteral("No files wait")
           : waiting == 1 ? QStringLiteral("1 file waits")
                          : QStringLiteral("%1 files wait").arg(waiting);
}

QString stoppedText(int waiting) {
    return QStringLiteral("Stopped: ") + waitingText(waiting);
}

QString folderNotice(const QString& unreadable, const QString& passedby) {
    QStringList lines;
    if (!unreadable.isEmpty()) {
        lines += QStringLiteral("\"%1\" has neither a version nor an interval: each import ends there.")
                     .arg(shortenedName(unreadable));
    }
    if (!passedby.isEmpty()) {
        lines += passedby;
    }
    return lines.join(QLatin1Char('\n'));
}

QString shortenedName(const QString& name, qsizetype most) {
    if (name.size() <= most) {
        return name;
    }
    const qsizetype half = (most - 1) / 2;
    return name.left(half) + QChar(0x2026) + name.right(half);
}

} // namespace benthor::shell
