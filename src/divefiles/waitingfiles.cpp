#include "divefiles/waitingfiles.h"

#include "divefiles/keptfiles.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace benthor::divefiles {

namespace {

bool endsLikeADive(const QByteArray& name) {
    return name.size() >= 4 && name.last(4).compare(".txt", Qt::CaseInsensitive) == 0;
}

QString shown(const QByteArray& name) {
    QString text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        text += byte >= 0x20 && byte < 0x7f ? QString(QLatin1Char(c))
                                            : QStringLiteral("\\x%1").arg(byte, 2, 16, QLatin1Char('0'));
    }
    return text;
}

/// Follows a link: one that leads to a dive file is as good as the file.
bool isRegular(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) {
        return true;
    }
    struct stat state {};
    return ::fstatat(folder, entry.d_name, &state, 0) == 0 && S_ISREG(state.st_mode);
}

} // namespace

WaitingFiles waitingfiles(const platform::ProgramFolder& folder) {
    WaitingFiles found{folder.listFiles(QStringLiteral("new"), QStringLiteral("*.txt")), {}};
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(
        ::opendir(QFile::encodeName(folder.path(u"new")).constData()), &::closedir);
    if (entries == nullptr) {
        return found;
    }
    const auto pass = [&](const QString& name, const char* reason) {
        found.passedby.push_back({name, QLatin1String(reason)});
    };
    while (const dirent* entry = ::readdir(entries.get())) {
        const QByteArray bytes(entry->d_name);
        if (!endsLikeADive(bytes)) {
            continue;
        }
        const QString name = QString::fromUtf8(bytes);
        if (name.toUtf8() != bytes) {
            pass(shown(bytes), "no UTF-8");
        } else if (!isRegular(::dirfd(entries.get()), *entry)) {
            pass(name, "no regular file");
            found.names.removeOne(name);
        } else if (bytes.startsWith('.')) {
            pass(name, "begins with a point");
        }
    }
    std::sort(found.passedby.begin(), found.passedby.end(),
              [](const PassedBy& one, const PassedBy& two) { return one.name < two.name; });
    return found;
}

QString passedbytext(const std::vector<PassedBy>& passedby, int most) {
    if (passedby.empty()) {
        return {};
    }
    QStringList names;
    for (const PassedBy& one : passedby) {
        if (names.size() == most) {
            names += QStringLiteral("and %1 more").arg(static_cast<int>(passedby.size()) - most);
            break;
        }
        names += QStringLiteral("\"%1\" (%2)").arg(one.name, one.reason);
    }
    return QStringLiteral("Passed by in the folder new: ") + names.join(QLatin1String(", "));
}

platform::FileResult movetocorrupt(const platform::ProgramFolder& folder, const QString& name) {
    if (platform::FileResult kept = keepinold(folder, name); !kept) {
        return kept;
    }
    QDir().mkpath(folder.path(u"corrupt"));
    platform::FileResult copied = copytofreename(folder.path(u"new", name), folder, u"corrupt", name);
    if (!copied) {
        return copied;
    }
    platform::FileResult removed = platform::removeFile(folder.path(u"new", name));
    static_cast<void>(platform::syncFolder(folder.path(u"new")));
    return removed;
}

} // namespace benthor::divefiles
