#include "gas/exchange.h"

#include "gas/gascalc.h"
#include "gas/setuplook.h"
#include "gas/setuptext.h"
#include "gas/typing.h"
#include "platform/files.h"
#include "platform/textformat.h"
#include "session/process.h"

#include <algorithm>

namespace benthor::gas {

namespace {

using platform::ProgramFolder;

constexpr int kFirstBailOut = 5; ///< of a Halverin: diluents below, bail-out gases from here on
constexpr int kTraxGases = 4;

bool isType(const char* type) {
    return process().producttype == QLatin1String(type);
}

void nameRows(GasPlan& plan) {
    const bool halverin = isType("HALV");
    for (int i = 0; i < kGases; ++i) {
        const QString word = !halverin           ? QStringLiteral("Gas %1")
                             : i < kFirstBailOut ? QStringLiteral("DIL %1")
                                                 : QStringLiteral("OCB %1");
        plan.rows[static_cast<size_t>(i)].name = word.arg(i);
    }
}

void askForType(const Ask& ask) {
    const QString title = QStringLiteral("Product Type");
    struct Question {
        const char* text;
        const char* type;
    };
    static constexpr std::array<Question, 3> kQuestions{
        {{"Are you connecting to a Halverin LSS?", "HALV"},
         {"Are you connecting to a Trax or Q9 mode KD", "TRAX"},
         {"Are you connecting to an Morvalien", "MORVA"}}};
    const QString below =
        QStringLiteral("A device is connected that does not tell its type, and which gases it "
                       "can start with depends on that.");
    for (const Question& question : kQuestions) {
        if (ask(QLatin1String(question.text), title, below)) {
            process().producttype = QLatin1String(question.type);
            return;
        }
    }
    process().producttype = QStringLiteral("KD3");
}

/// What a device of that type lets be chosen.
void layTypeRules(GasPlan& plan, const Say& say) {
    for (int i = 0; i < kGases; ++i) {
        GasRow& row = plan.rows[static_cast<size_t>(i)];
        row.activeEnabled = !(isType("TRAX") && i >= kTraxGases);
        row.startEnabled = row.activeEnabled && !(isType("HALV") && i >= kFirstBailOut);
    }
    if (!isType("HALV")) {
        return;
    }
    nameRows(plan);
    if (plan.activecount() < 2) {
        say(QStringLiteral("Halverin must have one Dil and one OCB selected"));
        plan.rows[kFirstBailOut].active = true;
        plan.rows[kFirstBailOut].cellsEnabled = true;
    }
}

/// As a click on its box: a gas that begins to be active can be written into.
void activateStart(GasPlan& plan) {
    GasRow& row = plan.rows[static_cast<size_t>(plan.start)];
    if (!row.active) {
        row.active = true;
        row.cellsEnabled = true;
        row.changed = true;
    }
}

bool anyDepthTyped(const GasPlan& plan) {
    return std::any_of(plan.rows.begin(), plan.rows.end(), [](const GasRow& row) { return row.MODtyped; });
}

void takeUnit(GasPlan& plan, const Say& say) {
    plan.unitshown = process().depthunit;
    const bool feet = process().depthunit != QLatin1String("metre");
    if (!anyDepthTyped(plan)) {
        chooseunits(plan, feet, say);
        return;
    }
    plan.typed = true;
    const Replacing replacing(plan, QStringLiteral("the change of the unit"));
    chooseunits(plan, feet, say);
}

void tickVisible(GasPlan& plan, GasShown& shown, const QDateTime& now, const Say& say) {
    buildgasblock(plan, say);
    const bool currentIsActive = plan.rows[static_cast<size_t>(plan.currentgasrow)].active;
    plan.settings.divegas = plan.start;
    activateStart(plan);
    if (!currentIsActive) {
        showgasrow(plan, plan.start);
    }
    if (plan.unitshown != process().depthunit) {
        takeUnit(plan, say);
    }
    shown.Label20 = platform::formatDate(now, u"mmm dd yyyy  hh:nn:ss");
    patchsettings(plan, now);
}

} // namespace

TextSource opengas(GasPlan& plan, const ProgramFolder& folder, const Say& say) {
    plan.Text7.clear();
    plan.maxppo2 = 1.4;
    plan.Text5 = QStringLiteral("1.4");
    plan.depthperbar = kMetresPerBar;
    if (process().uploadtext.size() < kUsableText) {
        recalcmods(plan, say);
    } else {
        gas_openupdate(plan, say);
    }
    if (isType("HALV")) {
        plan.rows[kFirstBailOut].active = true;
    }
    for (int i = 0; i < kGases; ++i) {
        activeclicked(plan, i, say);
    }
    nameRows(plan);
    chooseunits(plan, process().depthunit != QLatin1String("metre"), say);
    const QByteArray last = platform::readFile(folder.path(u"gdatalast.mit")).value_or(QByteArray());
    const QByteArray stock = platform::readFile(folder.path(u"gdata.mit")).value_or(QByteArray());
    plan.Text7 = starttext(last, stock);
    plan.unitshown = process().depthunit;
    if (plan.Text7.isEmpty()) {
        return TextSource::None;
    }
    return plan.Text7 == starttext(last, QByteArray()) ? TextSource::Last : TextSource::Stock;
}

void Timer5_tick(GasPlan& plan, GasShown& shown, const link::SetupLink& link, bool visible,
                 const QDateTime& now, const Ask& ask, const Say& say) {
    if (process().importing) {
        return;
    }
    if (visible) {
        tickVisible(plan, shown, now, say);
    }
    shown.Label7 = link.caption();
    shown.Label7Colour = link.captionColour();
    if (shown.Label7 != QLatin1String("Connected")) {
        return;
    }
    process().producttype = devicetype(link.receivedText(), process().producttype);
    shown.Label22 = typecaption(process().producttype);
    if (!link.waitsForDirectory() && isType("OTHER")) {
        askForType(ask);
    } else {
        layTypeRules(plan, say);
    }
}

bool mnuopensource(GasPlan& plan, const ProgramFolder& folder, int mode, const QString& path,
                   const Say& say) {
    const bool received = mode == 1;
    const QString file = received ? folder.path(u"gdatalastrec.mit") : path;
    const auto failed = [&] {
        say(received ? QStringLiteral("Error in file gdatalastrec.mit")
                     : QStringLiteral("Error in file. .mit file to gdatalast.mit"));
    };
    // A file that cannot be written holds what came another time.
    if (received && !platform::writeFileWhole(file, receivedfile(plan.Text8_1))) {
        failed();
        return false;
    }
    plan.Text8_0.clear();
    const std::optional<QByteArray> bytes = platform::readFile(file);
    if (!bytes) {
        failed();
        return false;
    }
    const HeldText held = readsetup(*bytes);
    plan.Text8_0 = held.text;
    for (const QString& message : held.messages) {
        say(message);
    }
    process().uploadtext = plan.Text8_0;
    if (plan.Text8_0.size() < kUsableText) {
        return false;
    }
    std::optional<Replacing> replacing;
    if (received) {
        replacing.emplace(plan, QStringLiteral("the setup that the device sent"));
    }
    if (!taketext(plan, plan.Text8_0, say, received ? TextFrom::Device : TextFrom::File)) {
        failed();
        return false;
    }
    return true;
}

} // namespace benthor::gas
