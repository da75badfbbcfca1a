#include "ctl/commands.h"
#include "ctl/interruption.h"
#include "ctl/logbook.h"
#include "ctl/looking.h"
#include "ctl/table.h"
#include "exports/dataset.h"
#include "exports/exportdives.h"
#include "exports/outputfile.h"

#include <QJsonDocument>

namespace benthor::ctl {

using exports::LossReport;

namespace {

/// On standard output where it was asked for as a document and the dives do not go there.
void tellReport(const LossReport& report, const Arguments& arguments, Output& output) {
    if (!arguments.json) {
        for (const QString& line : report.lines()) {
            tell(line);
        }
    } else if (arguments.output == QLatin1String("-")) {
        tell(QString::fromUtf8(QJsonDocument(report.json()).toJson(QJsonDocument::Compact)));
    } else {
        output.json(report.json());
    }
}

/// The first serial that the store has; empty where it has none.
QString firstSerial(platform::Database& database) {
    platform::Recordset rows = database.openRecordset("SELECT Suit FROM main ORDER BY rowid");
    for (; !rows.eof(); rows.moveNext()) {
        if (QString serial = rows.value(0).text().trimmed(); !serial.isEmpty()) {
            return serial;
        }
    }
    return {};
}

} // namespace

Status runExport(const Arguments& arguments, Output& output) {
    ReadLogbook logbook(requireFolder(arguments.folder));
    const Selected selected = selectDives(logbook.database(), logbook.reader(), arguments.selection);
    const Status status = tellMissing(selected);
    if (selected.ids.isEmpty() && !selected.missing.isEmpty()) {
        tell(QStringLiteral("benthorctl: Nothing was written."));
        return status;
    }
    exports::OutputFile file(arguments.output, arguments.force);
    Progress progress(QStringLiteral("Dives"));
    const LossReport report = exports::exportdives(arguments.format, file.device(), logbook.reader(),
                                                   selected.ids, [&progress](int done, int of) {
                                                       goOnUnlessInterrupted();
                                                       progress.show(done, of);
                                                       return true;
                                                   });
    goOnUnlessInterrupted();
    file.commit();
    tellReport(report, arguments, output);
    return status;
}

Status runDataset(const Arguments& arguments, Output& output) {
    ReadLogbook logbook(requireFolder(arguments.folder));
    const Selected selected = selectDives(logbook.database(), logbook.reader(), arguments.selection);
    const Status status = tellMissing(selected);
    const QString name = arguments.logbook.isEmpty() ? firstSerial(logbook.database()) : arguments.logbook;
    Progress progress(QStringLiteral("Dives"));
    const exports::DatasetCounts counts = exports::writeDataset(
        arguments.path, name, logbook.reader(), selected.ids, [&](qsizetype done, qsizetype of) {
            goOnUnlessInterrupted();
            progress.show(done, of);
        });
    for (const QString& line : counts.withoutSamples) {
        tell(shownText(line));
    }
    if (arguments.json) {
        output.json({{QStringLiteral("written"), static_cast<qint64>(counts.written)},
                     {QStringLiteral("unchanged"), static_cast<qint64>(counts.unchanged)}});
        return status;
    }
    output.line(QStringLiteral("Files written: %1").arg(counts.written));
    output.line(QStringLiteral("Files unchanged: %1").arg(counts.unchanged));
    output.line(QStringLiteral("Files removed: %1").arg(counts.removed));
    return status;
}

} // namespace benthor::ctl
