#include "divefiles/importer.h"

#include "divefiles/filenames.h"
#include "divefiles/headerscan.h"
#include "divefiles/keptfiles.h"
#include "platform/clock.h"
#include "platform/faultpoint.h"
#include "shell/process.h"
#include "store/access.h"
#include "store/diveinhand.h"
#include "store/identifiers.h"

#include <QDir>
#include <QFileInfo>

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
    throw ImportFault{
        QStringLiteral("The import stopped at the file \"%1\".\n%2\n\nNothing of this file was stored; it "
                       "stays in the folder \"new\". Check that the disk has room and that the program's "
                       "folder can be written, then import again.")
            .arg(name, reason)};
}

void requireFor(const QString& name, const FileResult& result) {
    if (!result) {
        failFile(name, result.error);
    }
}

QString latin1(const QByteArray& bytes) {
    return QString::fromLatin1(bytes);
}

template <size_t Count> std::array<QString, Count> latin1(const std::array<QByteArray, Count>& fields) {
    std::array<QString, Count> texts;
    std::transform(fields.begin(), fields.end(), texts.begin(),
                   [](const QByteArray& field) { return latin1(field); });
    return texts;
}

/// Writes what the scan found, one action after the other.
class RowWriter {
public:
    RowWriter(const QString& stamp, const QString& name)
        : stamp_(stamp)
        , name_(name) {}

    /// Whether the store took every serial.
    bool serialTaken() const { return serialTaken_; }

    void operator()(const NewDive& dive) {
        store::newdive(latin1(dive.version));
        store::putfilenames(dbtxtname(stamp_, name_), name_);
    }

    void operator()(const PutField& put) {
        const QString value = latin1(put.value);
        switch (put.field) {
        case HeaderField::Interval:
            store::putinterval(value);
            break;
        case HeaderField::Serial:
            store::putusername(value);
            serialTaken_ = store::putsuit(value) && serialTaken_;
            break;
        case HeaderField::Start:
            store::putstart(value);
            break;
        case HeaderField::Status:
            store::putstatus(value);
            break;
        case HeaderField::Descend:
            store::putdescend(value);
            break;
        case HeaderField::DAtmos:
            store::putdatmos(value);
            break;
        case HeaderField::DStack:
            store::putdstack(value);
            break;
        case HeaderField::DUsage:
            store::putdusage(value);
            break;
        case HeaderField::MaxD:
            store::putmaxdepth(value);
            break;
        case HeaderField::Otu:
            store::putotu(value);
            break;
        case HeaderField::HpCylinder:
            store::puthpcylinder(value);
            break;
        }
    }

    void operator()(const PutFinish& finish) {
        store::putfinish(latin1(finish.finishcode));
        store::putduration(latin1(finish.startcode), latin1(finish.finishcode));
    }

    void operator()(const AddGas& gas) { store::addgasrow(latin1(gas.fields)); }
    void operator()(const AddTissue& tissue) { store::addtissuerow(latin1(tissue.fields)); }

private:
    const QString& stamp_;
    const QString& name_;
    bool serialTaken_ = true;
};

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

class ImportRun {
public:
    ImportRun(const platform::ProgramFolder& folder, ImportState& state, ImportScreen& screen)
        : folder_(folder)
        , state_(state)
        , screen_(screen) {}

    ImportEnd run() {
        state_ = ImportState{true, importstamp(platform::now()), 0};
        screen_.runbegins();
        names_ = folder_.listFiles(QStringLiteral("new"), QStringLiteral("*.txt"));
        if (names_.isEmpty()) {
            screen_.nofiles();
            return ImportEnd::NoFiles;
        }
        try {
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
            screen_.message(fault.text);
            return ImportEnd::Failed;
        }
        screen_.lastfiledone();
        screen_.message(QStringLiteral("Dive(s) put into database."));
        screen_.showdives();
        return ImportEnd::Done;
    }

private:
    QString waiting(const QString& name) const { return folder_.path(u"new", name); }
    QString kept(const QString& name) const { return folder_.path(u"old", name); }

    /// The first pass: no file is touched before all have their copies.
    void copyAll() {
        if (!process().database.isOpen()) {
            failFile(names_.first(), QStringLiteral("The store is not open."));
        }
        QDir().mkpath(folder_.path(u"old"));
        qint64 bytes = 0;
        for (const QString& name : names_) {
            requireFor(name, platform::copyFile(waiting(name), kept(name), platform::FolderSync::Later));
            screen_.filelisted(name);
            copyForViewer(name, platform::FolderSync::Later);
            bytes += QFileInfo(waiting(name)).size();
        }
        requireFor(names_.first(), platform::syncFolder(folder_.path(u"old")));
        static_cast<void>(platform::syncFolder(folder_.path(u"dbtxt")));
        screen_.totals(static_cast<int>(names_.size()), bytes);
    }

    ImportEnd importFile(int number, const QString& name) {
        screen_.filebegins(number, QStringLiteral("System processing : ") + name);
        screen_.yield();
        platform::faultAt("file");
        screen_.stopenabled();
        const std::optional<QByteArray> bytes = platform::readFile(waiting(name), kHeaderBytesMax);
        if (!bytes) {
            failFile(name, QStringLiteral("It cannot be read."));
        }
        const HeaderScan scan = scanheader(*bytes);
        state_.divecounter += scan.profiles;
        if (scan.outcome == ScanOutcome::VersionMissing) {
            screen_.message(QStringLiteral("Version or Interval not found !"));
            return ImportEnd::VersionMissing;
        }
        keepCopy(name);
        if (!storeRows(scan, name)) {
            screen_.message(QStringLiteral(
                "Data corrupt. Cause could be intermittent link to Morvalien. File is being deleted.."));
        }
        if (scan.outcome != ScanOutcome::Finished) {
            setAside(name, scan.outcome);
        }
        if (const FileResult removed = platform::removeFile(waiting(name)); !removed) {
            throw ImportFault{
                QStringLiteral("The dive of the file \"%1\" is stored, but the file cannot be removed.\n%2"
                               "\n\nRemove it from the folder \"new\" by hand, or the next import stores "
                               "the dive once more.")
                    .arg(name, removed.error)};
        }
        platform::faultAt("removed");
        return scan.outcome == ScanOutcome::Finished ? ImportEnd::Done : ImportEnd::TooManyFields;
    }

    /// The copies were made in the first pass; since then events have run, and the file may be another by
    /// now.
    void keepCopy(const QString& name) {
        if (!platform::sameContents(waiting(name), kept(name))) {
            requireFor(name, platform::copyFile(waiting(name), kept(name)));
            copyForViewer(name, platform::FolderSync::Now);
        }
    }

    /// A dive without this copy is stored all the same.
    void copyForViewer(const QString& name, platform::FolderSync sync) {
        static_cast<void>(platform::copyFile(
            waiting(name), folder_.path(u"dbtxt", copyname(state_.importstamp, name)), sync));
    }

    /// All rows of one file or none. False when the store refused a serial.
    bool storeRows(const HeaderScan& scan, const QString& name) {
        if (scan.actions.empty()) {
            return true;
        }
        store::DiveInHand inHand;
        try {
            RowWriter writer(state_.importstamp, name);
            platform::Transaction transaction(process().database);
            for (const HeaderAction& action : scan.actions) {
                std::visit(writer, action);
            }
            transaction.commit();
            inHand.keep();
            return writer.serialTaken();
        } catch (const platform::StoreError& error) {
            failFile(name, error.text());
        }
    }

    /// What is told of a file with a faulty line: the rows read so far stay, the file goes to `corrupt`.
    void setAside(const QString& name, ScanOutcome outcome) {
        screen_.message(outcome == ScanOutcome::GasTooMany
                            ? QStringLiteral("Errors Gas - Too many parameters  !")
                            : QStringLiteral("Errors Tissue - Too many parametre  !"));
        QDir().mkpath(folder_.path(u"corrupt"));
        if (const FileResult copied = platform::copyFile(waiting(name), folder_.path(u"corrupt", name));
            !copied) {
            screen_.message(
                QStringLiteral("The file \"%1\" cannot be copied to the folder \"corrupt\".\n%2\n\nIts copy "
                               "in the folder \"old\" is whole.")
                    .arg(name, copied.error));
        }
        process().mainrecordset.close();
    }

    const platform::ProgramFolder& folder_;
    ImportState& state_;
    ImportScreen& screen_;
    QStringList names_;
};

} // namespace

ImportEnd importdives(const platform::ProgramFolder& folder, ImportState& state, ImportScreen& screen) {
    if (process().importing) {
        return ImportEnd::AlreadyRunning;
    }
    const RunEnd end(screen);
    return ImportRun(folder, state, screen).run();
}

QString takemanualfile(const platform::ProgramFolder& folder, const QString& path) {
    const QString name = path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
    const qsizetype point = name.lastIndexOf(QLatin1Char('.'));
    if (point < 0 || name.mid(point + 1) != QLatin1String("txt")) {
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
