#include "divefiles/importwords.h"

#include <algorithm>

namespace benthor::divefiles {

namespace {

QString namesOf(const QStringList& names) {
    constexpr qsizetype kMost = 5;
    QString text = u'"' + names.first(std::min(kMost, names.size())).join(u"\", \"") + u'"';
    return names.size() <= kMost ? text : text + QStringLiteral(" and %1 more").arg(names.size() - kMost);
}

/// What happened, why, and what that means.
QString faultwords(const QString& happened, const QString& reason, const QString& meaning) {
    return happened + QLatin1Char('\n') + reason + QLatin1String("\n\n") + meaning;
}

} // namespace

QString stoppedtext(const QString& name, const QString& reason) {
    return faultwords(QStringLiteral("The import stopped at the file \"%1\".").arg(name), reason,
                      QStringLiteral("Nothing of this file was stored; it stays in the folder \"new\". Check "
                                     "that the disk has room and that the program's folder can be written, "
                                     "then import again."));
}

QString notreadbacktext(const QString& name, const QString& reason) {
    return faultwords(
        QStringLiteral("What was stored of the file \"%1\" cannot be read back.").arg(name), reason,
        QStringLiteral("The file stays in the folder \"new\". Look in My Dives whether its dive is there "
                       "before you import again: each import makes a dive of it."));
}

QString staystext(const QString& name, const QString& reason) {
    return faultwords(
        QStringLiteral("The dive of the file \"%1\" is stored, but the file stays in the folder \"new\".")
            .arg(name),
        reason, QStringLiteral("The next import stores its dive once more."));
}

QString notremovedtext(const QString& name, const QString& reason) {
    return faultwords(
        QStringLiteral("The dive of the file \"%1\" is stored, but the file cannot be removed.").arg(name),
        reason,
        QStringLiteral("Remove it from the folder \"new\" by hand, or the next import stores the dive once "
                       "more."));
}

QString notsetasidetext(const QString& name, const QString& reason) {
    return faultwords(QStringLiteral("The file \"%1\" cannot be copied to the folder \"corrupt\".").arg(name),
                      reason, QStringLiteral("Its copy in the folder \"old\" is whole."));
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
