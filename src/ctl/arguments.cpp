#include "ctl/arguments.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace benthor::ctl {

namespace {

/// What stands behind a command without an option.
enum class Operands { None, Identifiers, OneIdentifier, Files, SomeFiles, OnePath, PathAndIdentifiers };

struct Command {
    const char* name;
    Operands operands;
    bool selects;        ///< takes the options of a selection
    const char* options; ///< further ones, between blanks
};

constexpr std::array<Command, 10> kCommands{{
    {"list", Operands::Identifiers, true, " "},
    {"show", Operands::OneIdentifier, false, " "},
    {"samples", Operands::OneIdentifier, false, " "},
    {"check", Operands::Identifiers, true, " "},
    {"import", Operands::SomeFiles, false, " "},
    {"export", Operands::Identifiers, true, " format output force "},
    {"dataset", Operands::PathAndIdentifiers, true, " logbook "},
    {"merge", Operands::OnePath, false, " dry-run "},
    {"verify", Operands::Files, false, " "},
    {"stats", Operands::None, false, " "},
}};

struct Option {
    const char* name;
    bool hasValue;
};
constexpr std::array<Option, 13> kOptions{{{"help", false},
                                           {"version", false},
                                           {"json", false},
                                           {"folder", true},
                                           {"all", false},
                                           {"since", true},
                                           {"until", true},
                                           {"find", true},
                                           {"format", true},
                                           {"output", true},
                                           {"force", false},
                                           {"logbook", true},
                                           {"dry-run", false}}};

/// What is wrong with the words.
struct Wrong {
    QString text;
};

QString quoted(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

bool isAllowed(const Command& command, const char* option) {
    const QLatin1String name(option);
    for (const char* const always : {"help", "json", "folder"}) {
        if (name == QLatin1String(always)) {
            return true;
        }
    }
    for (const char* const one : {"all", "since", "until", "find"}) {
        if (name == QLatin1String(one)) {
            return command.selects;
        }
    }
    return QLatin1String(command.options).contains(QLatin1Char(' ') + name + QLatin1Char(' '));
}

class Reading {
public:
    explicit Reading(const QStringList& words) {
        parser_.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        for (const Option& option : kOptions) {
            const QString name = QLatin1String(option.name);
            parser_.addOption(option.hasValue ? QCommandLineOption(name, {}, name)
                                              : QCommandLineOption(name));
        }
        if (!parser_.parse(QStringList(QStringLiteral("benthorctl")) + words)) {
            throw Wrong{parser_.errorText()};
        }
        operands_ = parser_.positionalArguments();
    }

    Arguments read() {
        result_.help = isSet("help");
        result_.version = isSet("version");
        result_.json = isSet("json");
        result_.folder = value("folder");
        const Command* command = takeCommand();
        if (command != nullptr) {
            requireAllowed(*command);
        }
        if (result_.help || (result_.version && command == nullptr)) {
            return result_;
        }
        if (command == nullptr) {
            throw Wrong{QStringLiteral("A command is missing.")};
        }
        readOptions(*command);
        readOperands(*command);
        requireWhole(*command);
        return result_;
    }

private:
    bool isSet(const char* option) const { return parser_.isSet(QLatin1String(option)); }

    /// Empty where the option is not there.
    QString value(const char* option) const {
        const QStringList values = parser_.values(QLatin1String(option));
        if (values.size() > 1) {
            throw Wrong{QStringLiteral("--%1 stands there twice.").arg(QLatin1String(option))};
        }
        if (!values.isEmpty() &&
            (values.first().isEmpty() || values.first().startsWith(QLatin1String("--")))) {
            throw Wrong{QStringLiteral("--%1 wants a value.").arg(QLatin1String(option))};
        }
        return values.value(0);
    }

    const Command* takeCommand() {
        if (operands_.isEmpty()) {
            return nullptr;
        }
        result_.command = operands_.takeFirst();
        const auto* const found = std::find_if(kCommands.begin(), kCommands.end(), [&](const Command& one) {
            return result_.command == QLatin1String(one.name);
        });
        if (found == kCommands.end()) {
            throw Wrong{QStringLiteral("There is no command %1.").arg(quoted(result_.command))};
        }
        return found;
    }

    void requireAllowed(const Command& command) const {
        for (const Option& option : kOptions) {
            if (isSet(option.name) && !isAllowed(command, option.name)) {
                throw Wrong{QStringLiteral("The command %1 has no option --%2.")
                                .arg(QLatin1String(command.name), QLatin1String(option.name))};
            }
        }
    }

    void readOptions(const Command& command) {
        Selection& selection = result_.selection;
        selection.all = isSet("all");
        if (const QString since = value("since"); !since.isEmpty()) {
            selection.since = days("since", since).first;
        }
        if (const QString until = value("until"); !until.isEmpty()) {
            selection.until = days("until", until).second;
        }
        static const QRegularExpression blanks(QStringLiteral("\\s+"));
        for (const QString& text : parser_.values(QStringLiteral("find"))) {
            selection.words += text.split(blanks, Qt::SkipEmptyParts);
        }
        if (isSet("find") && selection.words.isEmpty()) {
            throw Wrong{QStringLiteral("--find wants a word.")};
        }
        result_.output = value("output");
        result_.force = isSet("force");
        result_.logbook = value("logbook");
        result_.dryRun = isSet("dry-run");
        if (const QString format = value("format"); !format.isEmpty()) {
            result_.format = formatOf(format);
        } else if (isAllowed(command, "format")) {
            throw Wrong{QStringLiteral("--format is missing: uddf, json, csv or zxu.")};
        }
    }

    static std::pair<QDate, QDate> days(const char* option, const QString& text) {
        const auto found = daysOf(text);
        if (!found) {
            throw Wrong{QStringLiteral("--%1 wants a date (2008, 2008-07 or 2008-07-15), not %2.")
                            .arg(QLatin1String(option), quoted(text))};
        }
        return *found;
    }

    static ExportFormat formatOf(const QString& text) {
        if (const std::optional<ExportFormat> format = exports::formatNamed(text)) {
            return *format;
        }
        throw Wrong{QStringLiteral("There is no format %1: uddf, json, csv or zxu.").arg(quoted(text))};
    }

    void readOperands(const Command& command) {
        const bool one = command.operands == Operands::OneIdentifier || command.operands == Operands::OnePath;
        if (one || command.operands == Operands::PathAndIdentifiers) {
            if (operands_.isEmpty()) {
                throw Wrong{QStringLiteral("The command %1 wants %2.")
                                .arg(QLatin1String(command.name),
                                     QLatin1String(command.operands == Operands::OneIdentifier
                                                       ? "the identifier of a dive"
                                                       : "a path"))};
            }
            const QString first = operands_.takeFirst();
            (command.operands == Operands::OneIdentifier ? result_.id : result_.path) =
                command.operands == Operands::OneIdentifier ? identifierOf(first) : first;
        }
        if (operands_.isEmpty()) {
            return;
        }
        if (one || command.operands == Operands::None) {
            throw Wrong{QStringLiteral("The command %1 does not know what to do with %2.")
                            .arg(QLatin1String(command.name), quoted(operands_.first()))};
        }
        if (command.operands == Operands::Files || command.operands == Operands::SomeFiles) {
            result_.files = operands_;
            return;
        }
        for (const QString& id : operands_) {
            result_.selection.ids += identifierOf(id);
        }
    }

    void requireWhole(const Command& command) const {
        const Selection& selection = result_.selection;
        if (selection.all && !selection.ids.isEmpty()) {
            throw Wrong{QStringLiteral("--all and an identifier exclude each other.")};
        }
        if (selection.since.isValid() && selection.until.isValid() && selection.since > selection.until) {
            throw Wrong{QStringLiteral("--since lies behind --until.")};
        }
        if (command.operands == Operands::SomeFiles && result_.files.isEmpty()) {
            throw Wrong{QStringLiteral("The command %1 wants a file.").arg(QLatin1String(command.name))};
        }
        if (QLatin1String(command.name) == QLatin1String("export") && result_.output.isEmpty()) {
            throw Wrong{QStringLiteral("--output is missing: a file, or - for standard output.")};
        }
        const bool goesOut = isAllowed(command, "format") || isAllowed(command, "logbook");
        if (goesOut && !selection.isGiven()) {
            throw Wrong{QStringLiteral("The command %1 wants a selection of dives; --all means every one.")
                            .arg(QLatin1String(command.name))};
        }
    }

    QCommandLineParser parser_;
    QStringList operands_;
    Arguments result_;
};

} // namespace

Understood readArguments(const QStringList& words) {
    try {
        return {Reading(words).read(), {}};
    } catch (const Wrong& wrong) {
        return {{}, wrong.text};
    }
}

QStringList commandNames() {
    QStringList names;
    for (const Command& command : kCommands) {
        names += QLatin1String(command.name);
    }
    return names;
}

} // namespace benthor::ctl
