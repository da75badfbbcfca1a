#include "divefiles/importwords.h"

#include <algorithm>

namespace benthor::divefiles {

namespace {

QString namesOf(const QStringList& names) {
    constexpr qsizetype kMost = 5;
    QString text = u'"' + names.first(std::min(kMost, names.size())).join(u"\", \"") + u'"';
    return names.size() <= kMost ? text : text + QStringLiteral(" and %1 more").arg(names.size() - kMost);
}

} // namespace

QString stoppedtext(const QString& name, const QString& reason) {
    return QStringLiteral("The import stopped at the file \"%1\".\n%2\n\nNothing of this file was stored; it "
                          "stays in the folder \"new\". Check that the disk has room and that the program's "
                          "folder can be written, then import again.")
        .arg(name, reason);
}

QString notreadbacktext(const QString& name, const QString& reason) {
    return QStringLiteral(
               "What was stored of the file \"%1\" cannot be read back.\n%2\n\nThe file stays in the "
               "folder \"new\". Look in My Dives whether its dive is there before you import again: "
               "each import makes a dive of it.")
        .arg(name, reason);
}

QString staystext(const QString& name, const QString& reason) {
    return QStringLiteral("The dive of the file \"%1\" is stored, but the file stays in the folder "
                          "\"new\".\n%2\n\nThe next import stores its dive once more.")
        .arg(name, reason);
}

QString notremovedtext(const QString& name, const QString& reason) {
    return QStringLiteral("The dive of the file \"%1\" is stored, but the file cannot be removed.\n%2"
                          "\n\nRemove it from the folder \"new\" by hand, or the next import stores "
                          "the dive once more.")
        .arg(name, reason);
}

QString notsetasidetext(const QString& name, const QString& reason) {
    return QStringLiteral(
               "The file \"%1\" cannot be copied to the folder \"corrupt\".\n%2\n\nIts copy in the "
               "folder \"old\" is whole.")
        .arg(name, reason);
}

QString belowtext(const QStringList& owed, const std::vector<PassedBy>& passedby) {
    QStringList lines;
    if (!owed.isEmpty()) {
        lines +=
            QStringLiteral("Not copied into the folder dbtxt: %1. The profile is taken from the folder old "
                           "when the dive is opened, or at the next start.")
                .arg(namesOf(owed));
    }
    if (!passedby.empty()) {
        lines += passedbytext(passedby);
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace benthor::divefiles
