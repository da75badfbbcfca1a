#include "ctl/importing.h"

#include "ctl/commands.h"
#include "ctl/interruption.h"
#include "ctl/logbook.h"
#include "ctl/table.h"
#include "divefiles/headerscan.h"
#include "divefiles/importer.h"
#include "divefiles/importnote.h"
#include "logbook/acts.h"
#include "platform/filename.h"
#include "platform/files.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

namespace benthor::ctl {

using platform::ProgramFolder;

namespace {

/// No header reaches this far.
constexpr qint64 kHeaderBytesMax = 16LL * 1024 * 1024;

/// A file that is given back to whoever gave it.
struct Refusal {
    QString reason;
};

/// Collects what an import says.
class Listener : public divefiles::ImportScreen {
public:
    explicit Listener(divefiles::ImportState& state)
        : state_(state) {}
    void paint() override {
        if (isInterrupted()) {
            state_.keepimporting = false;
        }
    }
    void message(const QString& text, const QString& below) override {
        if (!isDone_) {
            messages += text.trimmed();
        }
        if (!below.isEmpty()) {
            messages += below;
        }
    }
    void lastfiledone() override { isDone_ = true; } // the end message follows

    QStringList messages;

private:
    divefiles::ImportState& state_;
    bool isDone_ = false;
};

/// One file on its way into the store.
class FileImport {
public:
    FileImport(const ProgramFolder& folder, QString file, ImportResult& result)
        : folder_(folder)
        , file_(std::move(file))
        , name_(QFileInfo(file_).fileName())
        , place_(folder.path(u"new", name_))
        , result_(result) {}

    /// False where nothing can go on behind it.
    bool run() {
        try {
            requireDive();
            takeIntoNew();
        } catch (const Refusal& refusal) {
            result_.refused.push_back({file_, refusal.reason});
            return true;
        }
        if (!result_.fault.isEmpty()) {
            return false;
        }
        import();
        return result_.fault.isEmpty();
    }

private:
    /// What no import takes is found before the folder is touched.
    void requireDive() const {
        if (!QFileInfo::exists(file_)) {
            throw Refusal{QStringLiteral("There is no such file.")};
        }
        if (!platform::isFile(file_)) {
            throw Refusal{QStringLiteral("It is no regular file.")};
        }
        if (name_.startsWith(QLatin1Char('.'))) {
            throw Refusal{QStringLiteral("Its name begins with a point.")};
        }
        const std::optional<QByteArray> bytes = platform::readFile(file_, kHeaderBytesMax);
        if (!bytes) {
            throw Refusal{QStringLiteral("It cannot be read.")};
        }
        const divefiles::HeaderScan scan = divefiles::scanheader(*bytes);
        if (scan.outcome == divefiles::ScanOutcome::VersionMissing) {
            throw Refusal{QStringLiteral("Version or Interval not found !")};
        }
        if (scan.actions.empty() || !std::holds_alternative<divefiles::NewDive>(scan.actions.front())) {
            throw Refusal{QStringLiteral("There is no dive in it.")};
        }
    }

    void takeIntoNew() {
        waited_ = platform::sameContents(file_, place_);
        if (!waited_ && QFileInfo::exists(place_)) {
            throw Refusal{QStringLiteral("Another file of its name waits in the folder new: start Benthor, "
                                         "which imports that one.")};
        }
        QDir().mkpath(folder_.path(u"new"));
        const QString text = divefiles::takemanualfile(folder_, file_);
        if (text.isEmpty()) {
            return;
        }
        if (!name_.endsWith(QLatin1String(".txt"), Qt::CaseInsensitive)) {
            throw Refusal{text};
        }
        result_.fault = QStringLiteral("%1: %2").arg(file_, text);
    }

    void import() {
        divefiles::ImportState state;
        Listener listener(state);
        const divefiles::ImportEnd end = divefiles::importdives(folder_, state, listener, name_);
        takeOutOfNew();
        if (!state.imported.isEmpty()) {
            result_.imported.push_back({file_, state.imported});
        }
        switch (end) {
        case divefiles::ImportEnd::Done:
            result_.notes += listener.messages;
            if (state.imported.isEmpty()) {
                result_.fault = QStringLiteral("Interrupted.");
                removeLeftovers(state.importstamp);
            }
            break;
        case divefiles::ImportEnd::TooManyFields:
            result_.refused.push_back(
                {file_, listener.messages.value(0) +
                            QStringLiteral(" What stands before that line is stored; a copy of the file is "
                                           "in the folder corrupt.")});
            break;
        case divefiles::ImportEnd::VersionMissing:
            result_.refused.push_back({file_, listener.messages.value(0)});
            break;
        default:
            result_.fault = QStringLiteral("%1: %2").arg(
                file_, listener.messages.isEmpty() ? QStringLiteral("It is gone from the folder new.")
                                                   : listener.messages.join(QLatin1Char('\n')));
            removeLeftovers(state.importstamp);
        }
    }

    /// A file that is not stored would be imported at the program's next start, unasked.
    void takeOutOfNew() const {
        if (!waited_ && QFileInfo::exists(place_)) {
            static_cast<void>(platform::removeFile(place_));
            static_cast<void>(platform::syncFolder(folder_.path(u"new")));
        }
    }

    /// The copy for the viewer that no dive names.
    void removeLeftovers(const QString& stamp) const {
        if (!stamp.isEmpty()) {
            const divefiles::ImportNote note(folder_, stamp);
            divefiles::tidydbtxt(folder_, logbook::awayfiles);
        }
    }

    const ProgramFolder& folder_;
    QString file_;
    QString name_;
    QString place_;
    ImportResult& result_;
    bool waited_ = false; ///< the very file waits in `new`
};

} // namespace

QJsonObject ImportResult::json() const {
    QJsonArray came;
    for (const Imported& one : imported) {
        came.append(QJsonObject{{QStringLiteral("file"), one.file},
                                {QStringLiteral("ids"), QJsonArray::fromStringList(one.ids)}});
    }
    QJsonArray stayed;
    for (const Refused& one : refused) {
        stayed.append(
            QJsonObject{{QStringLiteral("file"), one.file}, {QStringLiteral("reason"), one.reason}});
    }
    return {{QStringLiteral("imported"), came}, {QStringLiteral("refused"), stayed}};
}

QStringList ImportResult::lines() const {
    QStringList lines;
    for (const Imported& one : imported) {
        lines +=
            QStringLiteral("%1: imported as %2").arg(shownText(one.file), one.ids.join(QLatin1String(", ")));
    }
    for (const Refused& one : refused) {
        lines += QStringLiteral("%1: refused. %2").arg(shownText(one.file), shownText(one.reason));
    }
    return lines;
}

ImportResult importFiles(const ProgramFolder& folder, const QStringList& files) {
    ImportResult result;
    Progress progress(QStringLiteral("Files"));
    qsizetype done = 0;
    for (const QString& file : files) {
        if (isInterrupted()) {
            result.fault = QStringLiteral("Interrupted.");
            break;
        }
        progress.show(done++, files.size());
        if (!FileImport(folder, file, result).run()) {
            break;
        }
    }
    return result;
}

Status runImport(const Arguments& arguments, Output& output) {
    const WriteLogbook logbook(requireFolder(arguments.folder));
    const ImportResult result = importFiles(logbook.folder(), arguments.files);
    for (const QString& note : result.notes) {
        tell(QStringLiteral("benthorctl: ") + note);
    }
    if (arguments.json) {
        output.json(result.json());
    } else {
        for (const QString& line : result.lines()) {
            output.line(line);
        }
    }
    if (!result.fault.isEmpty()) {
        output.flush(); // what came before it is in the store
        throw Failure(kFault, result.fault);
    }
    return result.refused.empty() ? kDone : kFindings;
}

} // namespace benthor::ctl
