// The roads on which a setup leaves the screen.

#include "gas/exchange.h"
#include "gas/gascalc.h"
#include "gas/setuplook.h"
#include "gas/setuptext.h"
#include "platform/files.h"
#include "session/process.h"

namespace benthor::gas {

namespace {

using platform::ProgramFolder;

bool restsForImport(const Say& say) {
    if (process().importing) {
        say(QStringLiteral(
            "An import runs, and the setup text is not that of the screen until it has ended. Nothing "
            "was sent or saved: wait for the import, or stop it, and try again."));
    }
    return process().importing;
}

bool agreed(GasPlan& plan, const QString& text, const DeviceSetup& device, const Ask& agree) {
    const QStringList warnings = setupwarnings(plan, device);
    const QString agreement = agreementof(text, warnings, device);
    if (warnings.isEmpty() || plan.agreed == agreement) {
        return true;
    }
    const QString question =
        QStringLiteral("Look twice before this goes to the device:\r\n\r\n%1\r\n\r\nSend it all the same?")
            .arg(warnings.join(QStringLiteral("\r\n")));
    if (!agree || !agree(question, QStringLiteral("Update KD/Tolby"), {})) {
        return false;
    }
    plan.agreed = agreement;
    return true;
}

} // namespace

void freshtext(GasPlan& plan, const QDateTime& now) {
    plan.settings.divegas = plan.start;
    if (plan.activecount() > 0) {
        buildgasblock(plan, [](const QString&) {});
    }
    patchsettings(plan, now);
}

Update Command1_click(GasPlan& plan, link::SetupLink& link, const Say& say, const DeviceSetup& device,
                      const Ask& agree, const QDateTime& now) {
    if (restsForImport(say)) {
        return Update::Refused;
    }
    link.prepareSetup();
    process().uploadtext = plan.Text7 + kEscape;
    link.setTextToSend(process().uploadtext);
    const QStringList boxes = sendguards(process().uploadtext);
    for (const QString& box : boxes) {
        say(box);
    }
    if (!boxes.isEmpty()) {
        return Update::Guarded;
    }
    const QString refusal = refusalof(plan, plan.Text7, now);
    if (!refusal.isEmpty()) {
        say(refusal);
        return Update::Refused;
    }
    if (process().deviceconnected != 1) {
        say(QStringLiteral("KD/Tolby not connected!\r\nSave to file using File menu.."));
        return Update::Guarded;
    }
    if (!agreed(plan, textof(plan, now), device, agree)) {
        return Update::Refused;
    }
    if (!link.sendSetup()) {
        plan.agreed.clear(); // it did not go
    }
    return Update::Sent;
}

bool mayleave(GasPlan& plan, const link::SetupBody& body, bool visible, const DeviceSetup& device,
              const Ask& agree, const Say& say, const QDateTime& now) {
    if (restsForImport(say)) {
        return false;
    }
    const bool ofScreen = visible && !body.fromFile;
    const QString refusal = bodyrefusal(plan, body, visible, now);
    if (!refusal.isEmpty()) {
        say(refusal);
    }
    return refusal.isEmpty() &&
           (!ofScreen || process().deviceconnected != 1 || agreed(plan, textof(plan, now), device, agree));
}

Update Command2_click(GasPlan& plan, link::SetupLink& link, const Say& say, const DeviceSetup& device,
                      const Ask& agree, const QDateTime& now) {
    if (!plan.Text6.isEmpty()) {
        plan.Text7.clear();
    }
    return Command1_click(plan, link, say, device, agree, now);
}

QString mnuSave(GasPlan& plan, const std::function<QString()>& askPath, const Say& say) {
    if (restsForImport(say)) {
        return {};
    }
    buildgasblock(plan, say);
    const QString refusal = saverefusal(plan);
    if (!refusal.isEmpty()) {
        say(refusal);
        return {};
    }
    const QString path = askPath();
    return path.isEmpty() ? QString() : platform::writeFileWhole(path, savedfile(plan.Text7)).error;
}

void keepshown(GasPlan& plan, const QDateTime& now, const Say& say) {
    QString words;
    for (const WrongCell& one : wrongcells(plan)) {
        // The others have no place in the text; but for Max PPO2 a change of unit may wait.
        if (one.cell != Cell::PPO2 && (one.cell != Cell::Maximum || plan.headfeet != plan.feet())) {
            words += QStringLiteral("\r\n%1: %2.").arg(one.name, one.why);
        }
    }
    if (!words.isEmpty()) {
        say(QStringLiteral("The setup is kept for the next time without:") + words);
    }
    GasPlan shown = plan;
    freshtext(shown, now);
    if (!differing(shown.Text7, plan.Text7).isEmpty()) {
        freshtext(plan, now);
    }
}

void closegas(GasPlan& plan, const ProgramFolder& folder, link::SetupLink& link, const Say& say) {
    const QString path = folder.path(u"gdatalast.mit");
    const platform::FileResult saved = platform::writeFileWhole(path, savedfile(plan.Text7));
    if (!saved) {
        say(QStringLiteral("The setup can't be kept for the next time: ") + saved.error);
    }
    buildgasblock(plan, say);
    process().uploadtext = plan.Text6;
    link.setTextToSend(plan.Text7 + kEscape);
}

} // namespace benthor::gas
