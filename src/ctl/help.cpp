#include "ctl/help.h"

#include <array>

namespace benthor::ctl {

namespace {

struct Topic {
    const char* command;
    const char* syntax;
    const char* text;
    bool selects;
};

constexpr const char* kProgram =
    R"(Usage: benthorctl [--folder DIR] [--json] COMMAND ...

Works with the dives of Benthor from a shell.

Commands:
  list [SELECTION]       a table of dives
  show ID                all that the store has of one dive
  samples ID             the decoded profile of one dive, as CSV
  check [SELECTION]      what is wrong with the records of dives
  import FILE ...        stores the dives of dive files
  export --format FORMAT --output FILE [--force] SELECTION
                         writes dives to a file: uddf, json, csv or zxu
  dataset DIR [--logbook NAME] SELECTION
                         writes dives as files for engines like DuckDB or Spark
  merge PATH [--dry-run] brings the new dives of another logbook
  verify [FILE ...]      reads the store and its backups through
  stats                  totals, by year and by month

Options:
  --folder DIR  the program folder; without it, the one that benthor uses
  --json        data as JSON instead of text for people
  --help        this text; behind a command, what it does
  --version     the version

A selection of dives is identifiers (D0000012 or 12) or --all, narrowed by
  --since DATE, --until DATE
                the day on which a dive began, both days included; 2008 or
                2008-07 mean all of the year or the month
  --find TEXT   words; all must occur in name, site, notes, comments,
                buddies, serial or date

Exit status: 0 done; 1 done, with findings; 2 wrong usage, or an existing file
without --force; 3 the folder or the store cannot be used; 4 a fault of the
disk, or an interruption: nothing half done is left.
)";

constexpr const char* kSelection = R"(
SELECTION is identifiers (D0000012 or 12) or --all, narrowed by --since DATE,
--until DATE (the day of the start, both days included; 2008 and 2008-07 mean
all of it) and --find TEXT (words; all must occur in name, site, notes,
comments, buddies, serial or date). A dive without a start meets no date. An
identifier that is not there is told, and the status is 1.
)";

constexpr std::array<Topic, 10> kTopics{{
    {"list", "list [SELECTION]",
     R"(A table of dives by their start; all of them where nothing is selected.
Durations are minutes and seconds, depths metres. On a terminal long lines are
cut; otherwise no name is.

With --json: {"dives": [dive, ...]}.
)",
     true},
    {"show", "show ID",
     R"(All that the store has of one dive: its fields, gases, tissues and buddies.
Fields that hold nothing are left out.

With --json: {"dive", "store": {column: text or null}, "gases", "tissues",
"buddies"}, columns as the store spells them.
)",
     false},
    {"samples", "samples ID",
     R"(The decoded profile of one dive as CSV: a row a sample, metric, with the
sample's alarms joined by "; ".

With --json: {"id", "interval_s", "columns": [{"name", "unit"}], "rows"}.
)",
     false},
    {"check", "check [SELECTION]",
     R"(What is wrong with the records of dives, a fault a line; of all dives where
nothing is selected. The status is 1 where there is a fault.

With --json: {"faults": [{"id", "message"}]}.
)",
     true},
    {"import", "import FILE ...",
     R"(Stores the dives of dive files (*.txt), as the program does with a file in
its folder "new", with the same copies. The given files stay; one that lies in
"new" itself is moved. Other files that wait in "new" go on waiting, and a file
that has the name of one of them but other contents is refused. A file of which
only the part before a faulty line could be stored is among both, imported and
refused. The status is 1 where something was refused.

Refused with status 3 while Benthor is open on the folder.

With --json: {"imported": [{"file", "ids"}], "refused": [{"file", "reason"}]}.
)",
     false},
    {"export", "export --format FORMAT --output FILE [--force] SELECTION",
     R"(Writes dives to FILE; "-" is standard output. FORMAT is uddf, json, csv or
zxu. A file that is there is replaced with --force only, and always as a whole:
whoever looks finds the old one or the new one. A device or a pipe is written
in place.

What the format has no place for is told on standard error. With --json that
is a document on standard output (on standard error where the dives go to
standard output): {"dives", "lost", "without_samples", "musts"}.
)",
     true},
    {"dataset", "dataset DIR [--logbook NAME] SELECTION",
     R"(Writes DIR/dives/logbook=NAME/year=YYYY/dives.csv and
DIR/samples/logbook=NAME/year=YYYY/DIVEID.csv, which engines that know Hive
partitions read in place. Where --logbook is not given, NAME is the first serial
in the store. A second run writes only what is new or has changed; dives that
are not selected keep their files, and the files of dives that are gone from
the store go.

With --json: {"written": number, "unchanged": number}.
)",
     true},
    {"merge", "merge PATH [--dry-run]",
     R"(Brings the dives of another logbook that are new here, with their files. PATH
is a program folder or a store. What stands in dives that are in both logbooks
stays as it is here. The store of before is kept as rb-before-merge.mdb, and
Benthor can take the merge back. With --dry-run nothing is written.

Refused with status 3 while Benthor is open on the folder; --dry-run is not.

With --json: {"came": number, "stayed": number, "problems": [text]}.
)",
     false},
    {"verify", "verify [FILE ...]",
     R"(Opens stores for a look, reads them through and counts their dives. Where no
file is given: the store of the program folder, its backups, the store before a
merge, and stores that were replaced or came along. The status is 1 where one
is not sound.

With --json: {"files": [{"file", "sound", "dives", "reason"}]}.
)",
     false},
    {"stats", "stats",
     R"(Dives, time under water, greatest depth and OTU: of all dives, by year and by
month. Dives without a start are among all dives, and in no year and no month.

With --json: {"dives", "seconds", "max_depth_m", "otu", "years": [{"year",
...}], "months": [{"month": "2008-07", ...}]}.
)",
     false},
}};

} // namespace

QString helpText(const QString& command) {
    for (const Topic& topic : kTopics) {
        if (command == QLatin1String(topic.command)) {
            return QStringLiteral("Usage: benthorctl ") + QLatin1String(topic.syntax) +
                   QStringLiteral("\nOptions of all commands: --folder DIR, --json, --help\n\n") +
                   QLatin1String(topic.text) + QLatin1String(topic.selects ? kSelection : "");
        }
    }
    return QLatin1String(kProgram);
}

} // namespace benthor::ctl
