#include "divefiles/importer.h"

#include "divefiles/filenames.h"
#include "divefiles/headerscan.h"
#include "divefiles/importcopies.h"
#include "divefiles/importnote.h"
#include "divefiles/importwords.h"
#include "divefiles/keptfiles.h"
#include "divefiles/owedprofiles.h"
#include "divefiles/storedrows.h"
#include "divefiles/waitingfiles.h"
#include "platform/clock.h"
#include "platform/faultpoint.h"
#include "platform/skiperrors.h"
#include "session/process.h"
#include "store/diveinhand.h"

#include <QDir>
#include <QFileInfo>

#include <cstring>

namespace benthor::divefiles {

namespace {

using platform::FileResult;

/// No header reaches this far; a file that goes on is read no further.
constexpr qint64 kHeaderBytesMax = 16LL * 1024 * 1024;

/// A fault of disk or store that ends the run. The text is shown.
struct ImportFault {
    QString text;
};

/// A fault that leaves the file where it was and nothing of it in the store.
[[noreturn]] void failFile(const QString& name, const QString& reason) {
    throw ImportFault{stoppedtext(name, reason)};
}

void requireFor(const QString& name, const FileResult& result) {
    if (!result) {
        failFile(name, result.error);
    }
}

/// What follows every run, however it ends: a flag left behind would stop the timers for good.
class RunEnd {
public:
    explicit RunEnd(ImportScreen& screen)
        : screen_(screen) {}
    ~RunEnd() {
        screen_.runends();
        process().importing = false;
    }
    RunEnd(const RunEnd&) = delete;
    RunEnd& operator=(const RunEnd&) = delete;

private:
    ImportScreen& screen_;
};

WaitingFiles wantedfiles(const platform::ProgramFolder& folder, const QString& only) {
    WaitingFiles found = waitingfiles(folder);
    if (!only.isEmpty()) {
        found.names = found.names.contains(only) ? QStringList{only} : QStringList();
        found.passedby.clear(); // nobody asked for those
    }
    return found;
}

class ImportRun {
public:
    ImportRun(const platform::ProgramFolder& folder, ImportState& state, ImportScreen& screen,
              const QString& only)
        : folder_(folder)
        , state_(state)
        , screen_(screen)
        , found_(wantedfiles(folder, only))
        , names_(found_.names)
        , copies_(folder, names_, [this] { screen_.paint(); }) {}

    ImportEnd run() {
        state_ = ImportState{true, importstamp(platform::now()), 0, {}, {}};
        screen_.runbegins();
        if (names_.isEmpty()) {
            screen_.nofiles();
            return ImportEnd::NoFiles;
        }
        const ImportEnd end = work();
        if (end != ImportEnd::Done) {
            screen_.runbroke();
        }
        return end;
    }

private:
    QString waiting(const QString& name) const { return folder_.path(u"new", name); }
    QString kept(const QString& name) const { return folder_.path(u"old", name); }

    ImportEnd work() {
        try {
            prepare();
            const ImportNote note(folder_, state_.importstamp);
            copyAll();
            process().importing = true;
            screen_.repaint();
            for (qsizetype i = 0; i < names_.size() && state_.keepimporting; ++i) {
                const ImportEnd end = importFile(static_cast<int>(i) + 1, names_[i]);
                if (end != ImportEnd::Done) {
                    return end;
                }
            }
        } catch (const ImportFault& fault) {
            tell(fault.text);
            return ImportEnd::Failed;
        }
        static_cast<void>(removal_.wait());
        screen_.lastfiledone();
        tell(QStringLiteral("Dive(s) put into database."));
        screen_.showdives();
        return ImportEnd::Done;
    }

    /// The words with which a run ends, and below them what else is to be known of it.
    void tell(const QString& text) { screen_.message(text, belowtext(owed_, found_.passedby)); }

    /// What must hold before anything is copied.
    void prepare() {
        if (!process().database.isOpen()) {
            failFile(names_.first(), QStringLiteral("The store is not open."));
        }
        if (const QString reason = process().database.readOnlyReason(); !reason.isEmpty()) {
            failFile(names_.first(), QStringLiteral("The dive store is opened for reading only. ") + reason);
        }
        QDir().mkpath(folder_.path(u"old"));
        if (QFileInfo(folder_.path(u"old")).canonicalFilePath() ==
            QFileInfo(folder_.path(u"new")).canonicalFilePath()) {
            failFile(names_.first(), QStringLiteral("The folders \"new\" and \"old\" are one."));
        }
        // A file that an earlier run removed does not come back behind a crash, as a second dive.
        requireFor(names_.first(), platform::syncFolder(folder_.path(u"new")));
        std::vector<OwedProfile> owed;
        platform::skipErrors([&] { owed = owedprofiles(process().database); });
        copies_.choosestamp(state_.importstamp, owed);
        state_.importstamp = copies_.stamp();
    }

    /// The first pass: no file is touched before all have their copies.
    void copyAll() {
        const auto goOn = [this] {
            screen_.paint();
            return state_.keepimporting;
        };
        qint64 bytes = 0;
        for (qsizetype i = 0; i < names_.size() && goOn(); ++i) {
            const QString& name = names_[i];
            screen_.copying(static_cast<int>(i) + 1, static_cast<int>(names_.size()));
            const FileResult copied = copies_.make(name, goOn);
            if (!state_.keepimporting) {
                return; // closed meanwhile: nothing is stored of any file
            }
            requireFor(name, copied);
            screen_.filelisted(name);
            bytes += QFileInfo(waiting(name)).size();
        }
        requireFor(names_.first(), copies_.settle());
        screen_.totals(static_cast<int>(names_.size()), bytes);
    }

    ImportEnd importFile(int number, const QString& name) {
        screen_.filebegins(number, QStringLiteral("System processing : ") + name);
        screen_.yield();
        platform::faultAt("file");
        screen_.stopenabled();
        requireFor(name, copies_.renew(name));
        const std::optional<QByteArray> bytes = platform::readFile(kept(name), kHeaderBytesMax);
        if (!bytes) {
            failFile(name, QStringLiteral("It cannot be read."));
        }
        const HeaderScan scan = scanheader(*bytes);
        state_.divecounter += scan.profiles;
        if (scan.outcome == ScanOutcome::VersionMissing) {
            state_.unreadable = name;
            tell(QStringLiteral("Version or Interval not found !"));
            return ImportEnd::VersionMissing;
        }
        if (!scan.actions.empty()) {
            storeRows(scan, name);
        }
        if (scan.outcome != ScanOutcome::Finished) {
            setAside(name, scan.outcome);
        }
        removeSource(name);
        return scan.outcome == ScanOutcome::Finished ? ImportEnd::Done : ImportEnd::TooManyFields;
    }

    /// All rows of one file or none, and with them the note of a profile that is not in its place.
    void storeRows(const HeaderScan& scan, const QString& name) {
        store::DiveInHand inHand;
        WrittenDives written;
        try {
            platform::Transaction transaction(process().database);
            written = writerows(scan, state_.importstamp, name);
            const std::optional<OwedProfile> owed = copies_.owed(name);
            if (owed) {
                noteowed(process().database, *owed);
            }
            // A file whose removal a crash takes back comes in as a second dive: there is one such at most.
            static_cast<void>(removal_.wait());
            transaction.commit();
            inHand.keep();
            if (owed) {
                owed_ += name;
            }
        } catch (const platform::StoreError& error) {
            failFile(name, error.text());
        }
        for (const DiveRows& dive : written.dives) {
            state_.imported += dive.diveid;
        }
        requireReadBack(written, name);
        for (int refused = 0; refused < written.refusedSerials; ++refused) {
            screen_.message(QStringLiteral("Data corrupt. Cause could be intermittent link to Morvalien. "
                                           "File is being deleted.."),
                            QString());
        }
    }

    /// Looks into the store through a handle of its own, as whoever reads it later will.
    void requireReadBack(const WrittenDives& written, const QString& name) {
        QString reason = QStringLiteral("The store does not give back what was written into it.");
        try {
            if (!reader_.isOpen()) {
                reader_.open(process().database.path());
            }
            if (const int number = platform::faultAt("readback")) {
                throw platform::StoreError(QString::fromLocal8Bit(std::strerror(number)));
            }
            if (readsback(reader_, written)) {
                return;
            }
        } catch (const platform::StoreError& error) {
            reason = error.text();
        }
        throw ImportFault{notreadbacktext(name, reason)};
    }

    /// What is told of a file with a faulty line: the rows read so far stay, the file goes to `corrupt`.
    void setAside(const QString& name, ScanOutcome outcome) {
        tell(outcome == ScanOutcome::GasTooMany ? QStringLiteral("Errors Gas - Too many parameters  !")
                                                : QStringLiteral("Errors Tissue - Too many parametre  !"));
        QDir().mkpath(folder_.path(u"corrupt"));
        if (const FileResult copied = platform::copyFile(kept(name), folder_.path(u"corrupt", name));
            !copied) {
            screen_.message(notsetasidetext(name, copied.error), QString());
        }
        process().mainrecordset.close();
    }

    /// The last thing that happens to a file.
    void removeSource(const QString& name) {
        const int number = platform::faultAt("compare");
        if (number != 0 || !copies_.stands(name)) {
            throw ImportFault{staystext(
                name, number != 0
                          ? QString::fromLocal8Bit(std::strerror(number))
                          : QStringLiteral("Its copy in the folder \"old\" does not have its bytes."))};
        }
        if (const FileResult removed = platform::removeFile(waiting(name)); !removed) {
            throw ImportFault{notremovedtext(name, removed.error)};
        }
        // Where this fails the next run does it before it begins.
        removal_.begin(folder_.path(u"new"));
        platform::faultAt("removed");
    }

    const platform::ProgramFolder& folder_;
    ImportState& state_;
    ImportScreen& screen_;
    WaitingFiles found_;
    const QStringList& names_;
    ImportCopies copies_;
    QStringList owed_;
    platform::Database reader_;
    platform::FolderSyncBehind removal_; ///< of the file before
};

} // namespace

ImportEnd importdives(const platform::ProgramFolder& folder, ImportState& state, ImportScreen& screen,
                      const QString& only) {
    if (process().importing) {
        return ImportEnd::AlreadyRunning;
    }
    const RunEnd end(screen);
    return ImportRun(folder, state, screen, only).run();
}

QString takemanualfile(const platform::ProgramFolder& folder, const QString& path) {
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const qsizetype point = name.lastIndexOf(QLatin1Char('.'));
    if (point < 0 || name.mid(point + 1).compare(QLatin1String("txt"), Qt::CaseInsensitive) != 0) {
        return QStringLiteral("File Extention is wrong !");
    }
    const QString place = folder.path(u"new", name);
    FileResult copied;
    if (!platform::sameContents(path, place)) {
        copied = keepinold(folder, name);
        if (copied) {
            copied = platform::copyFile(path, place);
        }
    }
    return copied ? QString() : QStringLiteral("Error reading data file. ") + copied.error;
}

} // namespace benthor::divefiles
