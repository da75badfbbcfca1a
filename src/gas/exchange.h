#pragma once

#include "gas/gasplan.h"
#include "link/setuplink.h"
#include "platform/programfolder.h"

#include <QDateTime>

namespace benthor::gas {

// How the gas screen comes up, what its tick does, and how the setup comes from the device and goes to it.

/// Asks with Yes and No; true for Yes.
using Ask = std::function<bool(const QString& text, const QString& title)>;

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
/// file `path`.
void mnuopensource(GasPlan& plan, const platform::ProgramFolder& folder, int mode, const QString& path,
                   const Say& say);

/// Sends the setup, unless a guard keeps it back: then a box says why, and not a byte leaves. The link's
/// screen is in front by then.
void Command1_click(GasPlan& plan, link::SetupLink& link, const Say& say);
/// The spare of the same act: with a gas block in hand it empties the text first.
void Command2_click(GasPlan& plan, link::SetupLink& link, const Say& say);

/// Builds the gas block anew, asks for a path (empty: cancelled) and writes the setup text there, as the last
/// tick left it. Returns why it could not be written.
QString mnuSave(GasPlan& plan, const std::function<QString()>& askPath, const Say& say);

/// What a closing screen leaves behind: the text for the next start, the text in hand for the device, and the
/// link's text to send.
void closegas(GasPlan& plan, const platform::ProgramFolder& folder, link::SetupLink& link, const Say& say);

} // namespace benthor::gas
