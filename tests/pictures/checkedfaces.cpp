#include "tests/pictures/checkedfaces.h"

#include "platform/programfolder.h"
#include "shell/house.h"
#include "tests/support/scripteddialogs.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QWidget>

namespace benthor::tests {

void FaultAlbum::add(QWidget* window, const QString& name, const QList<QSize>& sizes) {
    ++faces_;
    const QList<QSize> all = sizes.isEmpty() ? QList<QSize>{QSize()} : sizesFor(sizes);
    for (const QSize& size : all) {
        // A layout for a wide window may let go of its room in two steps.
        for (int step = 0; size.isValid() && step < 2; ++step) {
            window->resize(size);
            settle();
        }
        settle();
        lookAt(window, name, size);
    }
}

bool FaultAlbum::isFaultless(const QString& kind, const std::function<bool(const QString&)>& isMeant) const {
    bool faultless = true;
    for (const QString& line : faults_.value(kind)) {
        if (!isMeant || !isMeant(line)) {
            qWarning("%s", qPrintable(line));
            faultless = false;
        }
    }
    return faultless;
}

void FaultAlbum::note(const QString& kind, const QString& face, const QStringList& faults) {
    for (const QString& fault : faults) {
        if (!faults_[kind].contains(fault)) {
            faults_[kind].insert(fault, QStringLiteral("%1: %2").arg(face, fault));
        }
    }
}

QString takeFaces(FaultAlbum& album, const QByteArray& faces, const QString& folder, const QString& files,
                  const QString& makedemo) {
    const QDir place(folder);
    for (const QString& name : QDir(files).entryList(QDir::Files)) {
        if (!QFile::copy(QDir(files).filePath(name), place.filePath(name))) {
            return QStringLiteral("%1 cannot be copied").arg(name);
        }
    }
    for (const char* part : {"new", "old", "corrupt", "dbtxt", "jpg", "Reprog", "ports"}) {
        if (!place.mkpath(QLatin1String(part))) {
            return QStringLiteral("%1 cannot be made").arg(QLatin1String(part));
        }
    }
    if (QProcess::execute(makedemo, {folder}) != 0) {
        return QStringLiteral("the demonstration folder cannot be filled");
    }
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       place.filePath(QStringLiteral("settings")));
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder));

    ScriptedDialogs dialogs;
    if (faces == "locked") {
        takeLockedStore(album);
    } else if (faces == "older") {
        takeOlderStore(album);
    } else {
        shell::House house;
        house.start();
        settle();
        takeAll(album, dialogs);
    }
    return {};
}

} // namespace benthor::tests
