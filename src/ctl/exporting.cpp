#include "ctl/commands.h"
#include "ctl/interruption.h"
#include "ctl/logbook.h"
#include "ctl/looking.h"
#include "ctl/table.h"
#include "exports/dataset.h"
#include "exports/logbookjson.h"
#include "exports/lossreport.h"
#include "exports/outputfile.h"
#include "exports/samplescsv.h"
#include "exports/uddf.h"
#include "exports/zxulogbook.h"
#include "platform/clock.h"

#include <QJsonDocument>

namespace benthor::ctl {

using exports::LossReport;
using exports::WholeDive;

namespace {

/// One dive after the other: no more than one is in memory.
template <typename Writer>
LossReport writeDives(Writer& writer, ReadLogbook& logbook, const QStringList& ids) {
    LossReport report;
    Progress progress(QStringLiteral("Dives"));
    writer.begin();
    for (const QString& id : ids) {
        goOnUnlessInterrupted();
        progress.show(report.dives, ids.size());
        if (const std::optional<WholeDive> dive = logbook.reader().read(id)) {
            writer.add(*dive);
            ++report.dives;
            if (!dive->withoutSamples.isEmpty()) {
                report.addWithoutSamples(dive->figures.id, dive->withoutSamples);
            }
        }
    }
    writer.end();
    return report;
}

LossReport writeAs(ExportFormat format, QIODevice& device, ReadLogbook& logbook, const QStringList& ids) {
    switch (format) {
    case ExportFormat::Uddf: {
        exports::UddfWriter writer(device, QStringLiteral(BENTHOR_VERSION), platform::now());
        static_cast<void>(writeDives(writer, logbook, ids));
        return writer.report();
    }
    case ExportFormat::Csv: {
        exports::SamplesCsv writer(device, exports::SampleIds::First);
        return writeDives(writer, logbook, ids);
    }
    case ExportFormat::Zxu: {
        exports::ZxuLogbook writer(device, platform::now());
        return writeDives(writer, logbook, ids);
    }
    case ExportFormat::Json:
        break;
    }
    exports::LogbookJson writer(device);
    return writeDives(writer, logbook, ids);
}

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
        if (const QString serial = rows.value(0).text().trimmed(); !serial.isEmpty()) {
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
    const LossReport report = writeAs(arguments.format, file.device(), logbook, selected.ids);
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
