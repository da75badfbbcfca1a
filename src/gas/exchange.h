#pragma once

#include "gas/gasplan.h"
#include "gas/setupwarnings.h"
#include "link/setuplink.h"
#include "platform/programfolder.h"

#include <QDateTime>

namespace benthor::gas {

// How the gas screen comes up, what its tick does, and how the setup comes from the device and goes to it.

/// Asks with Yes and No; true for Yes. `below` stands under the question in smaller words.
using Ask = std::function<bool(const QString& text, const QString& title, const QString& below)>;

/// What the screen shows beside the plan.
struct GasShown {
    QString Label7; ///< status of the link
    platform::ToldColour Label7Colour = platform::kToldYellow;
    QString Label20 = QStringLiteral("TIME");
    QString Label22 = QStringLiteral("TYPE");
};

/// Where the text that the screen starts with came from.
enum class TextSource { Last, Stock, None };

/// All of the screen's start that is not layout.
TextSource opengas(GasPlan& plan, const platform::ProgramFolder& folder, const Say& say);

/// One tick. `visible`: the screen can be seen. Nothing at all is done while an import runs.
void Timer5_tick(GasPlan& plan, GasShown& shown, const link::SetupLink& link, bool visible,
                 const QDateTime& now, const Ask& ask, const Say& say);

/// Reads a setup: that received from the device (mode 1, which is first written to its file), or that of the
/// file `path`. False where it was not taken over whole.
bool mnuopensource(GasPlan& plan, const platform::ProgramFolder& folder, int mode, const QString& path,
                   const Say& say);

/// The screen into the text, as a tick writes it, and without a word.
void freshtext(GasPlan& plan, const QDateTime& now);

/// How an update ended: sent; kept back by a told guard; refused by a look of ours, or by the diver.
enum class Update { Sent, Guarded, Refused };

/// Sends the setup, unless a guard keeps it back: then a box says why, and not a byte leaves. The link's
/// screen is in front by then. Behind the guards it goes only where it is what the screen shows, and, where
/// something deserves a second look, after `agree` was asked with Yes for this text.
Update Command1_click(GasPlan& plan, link::SetupLink& link, const Say& say, const DeviceSetup& device,
                      const Ask& agree, const QDateTime& now);
/// The spare of the same act: with a gas block in hand it empties the text first.
Update Command2_click(GasPlan& plan, link::SetupLink& link, const Say& say, const DeviceSetup& device,
                      const Ask& agree, const QDateTime& now);

/// Whether a body that the link is about to send as a setup may leave; says why not. `visible`: the gas
/// screen can be seen, so that the body must be what it shows.
bool mayleave(GasPlan& plan, const link::SetupBody& body, bool visible, const DeviceSetup& device,
              const Ask& agree, const Say& say, const QDateTime& now);

/// Builds the gas block anew, asks for a path (empty: cancelled) and writes the setup text there, as the last
/// tick left it. Returns why it could not be written. What must not leave is not saved either, and is told.
QString mnuSave(GasPlan& plan, const std::function<QString()>& askPath, const Say& say);

/// Before a screen that can be seen closes: the text becomes what it shows. A cell that must not go out is
/// told.
void keepshown(GasPlan& plan, const QDateTime& now, const Say& say);

/// What a closing screen leaves behind: the text for the next start, the text in hand for the device, and the
/// link's text to send. A text that cannot be written is told.
void closegas(GasPlan& plan, const platform::ProgramFolder& folder, link::SetupLink& link, const Say& say);

} // namespace benthor::gas
