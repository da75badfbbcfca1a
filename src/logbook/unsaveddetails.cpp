#include "logbook/unsaveddetails.h"

#include "platform/filename.h"
#include "platform/files.h"

#include <QFileInfo>

namespace benthor::logbook {

namespace {

QString fileName(const QString& diveid, int number) {
    const QString name =
        platform::isFileName(diveid) ? QStringLiteral("unsaved-") + diveid : QStringLiteral("unsaved-dive");
    return (number == 1 ? name : name + QLatin1Char('-') + QString::number(number)) + QStringLiteral(".txt");
}

} // namespace

QString unsavedtext(const store::DiveIdentity& dive, const DiverAdds& diver, const QString& reason) {
    QString text =
        QStringLiteral("Details of the dive %1 that were typed and could not be stored.\n%2\n\nStart code: "
                       "%3\nFile in dbtxt: %4\n")
            .arg(dive.diveid, reason, dive.startcode.text(), dive.dbtxtname.text());
    const auto add = [&text](const char* caption, const QString& value) {
        text += QLatin1Char('\n') + QLatin1String(caption) + QLatin1String(":\n") + value + QLatin1Char('\n');
    };
    add("Dive name", diver.location);
    add("User Name", diver.username);
    add("Department", diver.department);
    add("Site", diver.site);
    add("Weather", diver.weather);
    add("S\\N", diver.suit);
    add("Buddies", diver.buddies.join(QLatin1Char('\n')));
    add("Dive Notes", diver.divenote);
    add("Site Notes", diver.sitenote);
    add("Comments", diver.comments);
    return text;
}

QString writeunsaved(const platform::ProgramFolder& folder, const store::DiveIdentity& dive,
                     const DiverAdds& diver, const QString& reason) {
    int number = 1;
    QString name = fileName(dive.diveid, number);
    for (; QFileInfo::exists(folder.path(name)) || QFileInfo(folder.path(name)).isSymLink();) {
        name = fileName(dive.diveid, ++number);
    }
    const QByteArray text = unsavedtext(dive, diver, reason).toUtf8();
    return platform::writeFileWhole(folder.path(name), text) ? name : QString();
}

QStringList unsavednames(const platform::ProgramFolder& folder) {
    return folder.listFiles(QString(), QStringLiteral("unsaved-*.txt"));
}

QString unsavedline(const QStringList& names) {
    if (names.isEmpty()) {
        return {};
    }
    const QString first =
        QStringLiteral("Details of a dive were typed and could not be stored as the program ended. They "
                       "stand in the file \"%1\" of the program's folder")
            .arg(names.first());
    return names.size() == 1
               ? first + QLatin1Char('.')
               : first + QStringLiteral(", others in %1 more.").arg(static_cast<int>(names.size()) - 1);
}

} // namespace benthor::logbook
