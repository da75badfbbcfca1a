#include "gas/exchange.h"

#include "gas/gascalc.h"
#include "gas/setuptext.h"
#include "platform/files.h"
#include "platform/textformat.h"
#include "shell/process.h"

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
    for (const Question& question : kQuestions) {
        if (ask(QLatin1String(question.text), title)) {
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

void tickVisible(GasPlan& plan, GasShown& shown, const QDateTime& now, const Say& say) {
    buildgasblock(plan, say);
    const bool currentIsActive = plan.rows[static_cast<size_t>(plan.currentgasrow)].active;
    plan.settings.divegas = plan.start;
    plan.rows[static_cast<size_t>(plan.start)].active = true;
    if (!currentIsActive) {
        showgasrow(plan, plan.start);
    }
    if (plan.unitshown != process().depthunit) {
        plan.unitshown = process().depthunit;
        chooseunits(plan, process().depthunit != QLatin1String("metre"), say);
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

void mnuopensource(GasPlan& plan, const ProgramFolder& folder, int mode, const QString& path,
                   const Say& say) {
    const bool received = mode == 1;
    const QString file = received ? folder.path(u"gdatalastrec.mit") : path;
    if (received) {
        static_cast<void>(platform::writeFileWhole(file, receivedfile(plan.Text8_1)));
    }
    const auto failed = [&] {
        say(received ? QStringLiteral("Error in file gdatalastrec.mit")
                     : QStringLiteral("Error in file. .mit file to gdatalast.mit"));
    };
    plan.Text8_0.clear();
    const std::optional<QByteArray> bytes = platform::readFile(file);
    if (!bytes) {
        failed();
        return;
    }
    const HeldText held = readsetup(*bytes);
    plan.Text8_0 = held.text;
    for (const QString& message : held.messages) {
        say(message);
    }
    process().uploadtext = plan.Text8_0;
    if (plan.Text8_0.size() >= kUsableText && !taketext(plan, plan.Text8_0, say)) {
        failed();
    }
}

void Command1_click(GasPlan& plan, link::SetupLink& link, const Say& say) {
    link.prepareSetup();
    process().uploadtext = plan.Text7 + kEscape;
    link.setTextToSend(process().uploadtext);
    const QStringList boxes = sendguards(process().uploadtext);
    for (const QString& box : boxes) {
        say(box);
    }
    if (!boxes.isEmpty()) {
        return;
    }
    if (process().deviceconnected == 1) {
        link.sendSetup();
    } else {
        say(QStringLiteral("KD/Tolby not connected!\r\nSave to file using File menu.."));
    }
}

void Command2_click(GasPlan& plan, link::SetupLink& link, const Say& say) {
    if (!plan.Text6.isEmpty()) {
        plan.Text7.clear();
    }
    Command1_click(plan, link, say);
}

QString mnuSave(GasPlan& plan, const std::function<QString()>& askPath, const Say& say) {
    buildgasblock(plan, say);
    const QString path = askPath();
    return path.isEmpty() ? QString() : platform::writeFileWhole(path, savedfile(plan.Text7)).error;
}

void closegas(GasPlan& plan, const ProgramFolder& folder, link::SetupLink& link, const Say& say) {
    static_cast<void>(platform::writeFileWhole(folder.path(u"gdatalast.mit"), savedfile(plan.Text7)));
    buildgasblock(plan, say);
    process().uploadtext = plan.Text6;
    link.setTextToSend(plan.Text7 + kEscape);
}

} // namespace benthor::gas
