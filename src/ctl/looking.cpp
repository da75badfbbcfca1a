#include "ctl/looking.h"

#include "ctl/commands.h"
#include "ctl/interruption.h"
#include "ctl/logbook.h"
#include "ctl/table.h"
#include "exports/divejson.h"
#include "exports/numbertext.h"
#include "exports/samplescsv.h"

#include <QJsonArray>

#include <cmath>

namespace benthor::ctl {

using exports::DiveFigures;
using exports::WholeDive;

namespace {

QString numberWords(const std::optional<double>& number, const char* unit = "") {
    return number ? QString::fromLatin1(exports::numberText(*number)) + QLatin1String(unit) : QString();
}

QString momentWords(const QDateTime& moment) {
    return moment.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

/// The selected dives of the logbook, one by one. Says on standard error which are not there.
template <typename Do> Status eachDive(ReadLogbook& logbook, const Selection& selection, Do work) {
    const Selected selected = selectDives(logbook.database(), logbook.reader(), selection);
    for (const QString& id : selected.ids) {
        goOnUnlessInterrupted();
        if (const std::optional<DiveFigures> figures = logbook.reader().figures(id)) {
            work(*figures);
        }
    }
    return tellMissing(selected);
}

/// A row of the store, a field a line; Null is left out. A text of several lines goes on below its first.
void addRow(QStringList& lines, const exports::StoreFields& row) {
    qsizetype widest = 0;
    for (const auto& [name, value] : row) {
        widest = std::max(widest, name.size());
    }
    for (const auto& [name, value] : row) {
        if (!value) {
            continue;
        }
        QString text = *value;
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        const QString margin(widest + 4, QLatin1Char(' '));
        QString caption = QStringLiteral("  ") + shownText(name).leftJustified(widest + 2);
        for (const QString& line : text.split(QLatin1Char('\n'))) {
            lines += caption + shownText(line);
            caption = margin;
        }
    }
}

std::optional<WholeDive> findDive(ReadLogbook& logbook, const QString& id) {
    Selection one;
    one.ids = {id};
    const Selected selected = selectDives(logbook.database(), logbook.reader(), one);
    std::optional<WholeDive> dive;
    if (!selected.ids.isEmpty()) {
        dive = logbook.reader().read(selected.ids.first());
    }
    if (!dive) {
        static_cast<void>(tellMissing(selected));
    }
    return dive;
}

} // namespace

Status tellMissing(const Selected& selected) {
    for (const QString& id : selected.missing) {
        tell(QStringLiteral("benthorctl: There is no dive %1.").arg(shownText(id)));
    }
    if (selected.unnamed > 0) {
        tell(QStringLiteral("benthorctl: %1 in the store cannot be told apart from others by an identifier, "
                            "and is passed over.")
                 .arg(selected.unnamed == 1 ? QStringLiteral("1 dive")
                                            : QStringLiteral("%1 dives").arg(selected.unnamed)));
    }
    return selected.missing.isEmpty() && selected.unnamed == 0 ? kDone : kFindings;
}

QString durationWords(const std::optional<double>& seconds) {
    constexpr qint64 kMinute = 60;
    if (!seconds) {
        return {};
    }
    const auto whole = static_cast<qint64>(*seconds);
    return QStringLiteral("%1:%2").arg(whole / kMinute).arg(whole % kMinute, 2, 10, QLatin1Char('0'));
}

QStringList listHeadings() {
    return {QStringLiteral("ID"),   QStringLiteral("Start"), QStringLiteral(">Duration"),
            QStringLiteral(">Max"), QStringLiteral(">OTU"),  QStringLiteral(">Faults"),
            QStringLiteral("S/N"),  QStringLiteral("Name"),  QStringLiteral("Site")};
}

QStringList listCells(const DiveFigures& figures) {
    return {figures.id,
            momentWords(figures.start),
            durationWords(figures.duration),
            numberWords(figures.maxdepth, " m"),
            numberWords(figures.otu),
            figures.faults.isEmpty() ? QString() : QString::number(figures.faults.size()),
            figures.serial.value_or(QString()),
            figures.name.value_or(QString()),
            figures.site.value_or(QString())};
}

QStringList showLines(const WholeDive& dive) {
    const DiveFigures& figures = dive.figures;
    QStringList lines{QStringLiteral("Dive %1").arg(shownText(figures.id))};
    addRow(lines, {{QStringLiteral("Start"), momentWords(figures.start)},
                   {QStringLiteral("End"), momentWords(figures.end)},
                   {QStringLiteral("Duration"), durationWords(figures.duration)},
                   {QStringLiteral("Max depth"), numberWords(figures.maxdepth, " m")},
                   {QStringLiteral("Samples"),
                    dive.withoutSamples.isEmpty() ? QString::number(dive.samples()) : dive.withoutSamples}});
    for (const QString& fault : figures.faults) {
        lines += QStringLiteral("  Fault: ") + shownText(fault);
    }
    lines += QStringLiteral("Store");
    addRow(lines, dive.store);
    const auto table = [&](const char* caption, const std::vector<exports::StoreFields>& rows) {
        for (size_t i = 0; i < rows.size(); ++i) {
            lines += QStringLiteral("%1 %2").arg(QLatin1String(caption)).arg(i + 1);
            addRow(lines, rows[i]);
        }
    };
    table("Gas", dive.gases);
    table("Tissue", dive.tissues);
    for (const QString& buddy : dive.buddies) {
        lines += QStringLiteral("Buddy ") + shownText(buddy);
    }
    return lines;
}

Status runList(const Arguments& arguments, Output& output) {
    ReadLogbook logbook(requireFolder(arguments.folder));
    if (arguments.json) {
        JsonList list(output, "dives");
        const Status status = eachDive(logbook, arguments.selection, [&](const DiveFigures& figures) {
            list.item(exports::diveObject(figures));
        });
        list.end();
        return status;
    }
    Table table(listHeadings());
    const Status status = eachDive(logbook, arguments.selection,
                                   [&](const DiveFigures& figures) { table.add(listCells(figures)); });
    for (const QString& line : table.lines(terminalWidth())) {
        output.line(line);
    }
    return status;
}

Status runCheck(const Arguments& arguments, Output& output) {
    ReadLogbook logbook(requireFolder(arguments.folder));
    bool any = false;
    std::optional<JsonList> list;
    if (arguments.json) {
        list.emplace(output, "faults");
    }
    const Status status = eachDive(logbook, arguments.selection, [&](const DiveFigures& figures) {
        for (const QString& fault : figures.faults) {
            any = true;
            if (list) {
                list->item({{QStringLiteral("id"), figures.id}, {QStringLiteral("message"), fault}});
            } else {
                output.line(shownText(figures.id) + QStringLiteral("  ") + shownText(fault));
            }
        }
    });
    if (list) {
        list->end();
    }
    return any ? kFindings : status;
}

Status runShow(const Arguments& arguments, Output& output) {
    ReadLogbook logbook(requireFolder(arguments.folder));
    const std::optional<WholeDive> dive = findDive(logbook, arguments.id);
    if (!dive) {
        return kFindings;
    }
    if (arguments.json) {
        output.json(exports::showObject(*dive));
        return kDone;
    }
    for (const QString& line : showLines(*dive)) {
        output.line(line);
    }
    return kDone;
}

Status runSamples(const Arguments& arguments, Output& output) {
    ReadLogbook logbook(requireFolder(arguments.folder));
    const std::optional<WholeDive> dive = findDive(logbook, arguments.id);
    if (!dive) {
        return kFindings;
    }
    if (!dive->withoutSamples.isEmpty()) {
        tell(QStringLiteral("benthorctl: ") + dive->withoutSamples);
    }
    output.bytes(arguments.json ? exports::samplesJson(*dive) + '\n'
                                : exports::samplesCsvHeader(exports::SampleIds::None) +
                                      exports::samplesCsvLines(*dive, exports::SampleIds::None));
    return kDone;
}

} // namespace benthor::ctl
