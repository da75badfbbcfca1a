#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

#include <QString>
#include <vector>

namespace benthor::link {

// The choices of the command console as the user reads them.

inline constexpr int optionCount = 12; ///< of `Option1`

/// Caption of `Option1`, by index; index 7 has none.
QString optionCaption(int index);
/// Caption of `Label19`, for the indices that it has; the option's caption for the others.
QString listCaption(int index);

/// One entry of the command menu.
struct CommandEntry {
    QString name;    ///< of the control
    int option = 0;  ///< choice that it selects
    QString caption; ///< of the entry, and written on Send
    QString hint;    ///< empty for none
};
const std::vector<CommandEntry>& commandEntries();
/// The entry of a choice, or null for a choice without one.
const CommandEntry* commandEntry(int option);

/// An entry of the command menu: checks it alone, writes its caption on Send, shows its hint here and on the
/// main screen, selects its choice and prepares the command fields. An unknown name does nothing.
void mnuCommand_click(LinkState& link, LinkHost& host, QStringView name);
/// Toggles the expert fields.
void mnuAdvancedOption_click(LinkState& link);

} // namespace benthor::link
