#include "ctl/run.h"

#include "ctl/commands.h"
#include "ctl/help.h"
#include "ctl/interruption.h"
#include "exports/exporterror.h"
#include "exports/outputfile.h"
#include "logbook/mergeplan.h"
#include "platform/storewait.h"

#include <array>

namespace benthor::ctl {

namespace {

using Run = Status (*)(const Arguments&, Output&);

Run commandOf(const QString& name) {
    constexpr std::array<std::pair<const char*, Run>, 10> kRuns{{{"list", &runList},
                                                                 {"show", &runShow},
                                                                 {"samples", &runSamples},
                                                                 {"check", &runCheck},
                                                                 {"import", &runImport},
                                                                 {"export", &runExport},
                                                                 {"dataset", &runDataset},
                                                                 {"merge", &runMerge},
                                                                 {"verify", &runVerify},
                                                                 {"stats", &runStats}}};
    for (const auto& [known, run] : kRuns) {
        if (name == QLatin1String(known)) {
            return run;
        }
    }
    return nullptr;
}

Status obey(const Arguments& arguments, Output& output) {
    if (arguments.help) {
        output.bytes(helpText(arguments.command).toUtf8());
    } else if (arguments.version) {
        output.line(QStringLiteral("benthorctl " BENTHOR_VERSION));
    } else {
        const platform::StoreWaiting waiting(
            [](platform::StoreWait, std::chrono::milliseconds) { return !isInterrupted(); });
        const Status status = commandOf(arguments.command)(arguments, output);
        output.flush();
        return status;
    }
    output.flush();
    return kDone;
}

Status fail(Status status, const QString& text) {
    tell(QStringLiteral("benthorctl: ") + (isInterrupted() ? QStringLiteral("Interrupted.") : text));
    return isInterrupted() ? kFault : status;
}

} // namespace

int run(const QStringList& words) {
    const Understood understood = readArguments(words);
    if (!understood.error.isEmpty()) {
        return fail(kUsage, understood.error + QStringLiteral(" Try benthorctl --help."));
    }
    try {
        Output output;
        return obey(understood.arguments, output);
    } catch (const Failure& failure) {
        return fail(failure.status(), failure.text());
    } catch (const exports::FileExistsError& error) {
        return fail(kUsage, error.text());
    } catch (const exports::ExportError& error) {
        return fail(kFault, error.text());
    } catch (const platform::StoreError& error) {
        return fail(statusOf(error), error.text());
    } catch (const logbook::MergeStopped&) {
        return fail(kFault, QStringLiteral("Interrupted."));
    } catch (const std::exception& error) { // no memory, above all
        return fail(kFault, QString::fromLocal8Bit(error.what()));
    }
}

} // namespace benthor::ctl
