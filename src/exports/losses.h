#pragma once

#include "exports/lossreport.h"
#include "exports/wholedive.h"

#include <span>

namespace benthor::exports {

// What of a dive a format has no place for, by the names that a loss report counts it under.

/// Kinds of columns of the profile.
enum class ColumnKind { Cells, Marks, Filter, Batteries, Co2, Thermistors, Extra };

/// Adds each of these kinds of which the dive recorded something.
void addLostColumns(const WholeDive& dive, std::span<const ColumnKind> kinds, LostKinds& lost);

/// Adds "field X" for each field of the dive's row that says something, unless the file holds it (`held`, in
/// any case of letters) or another field says just as much.
void addLostFields(const WholeDive& dive, std::span<const char* const> held, LostKinds& lost);

/// Adds "tissues" where the dive has some.
void addLostTissues(const WholeDive& dive, LostKinds& lost);
/// Adds "gases on or off" where a gas says which it was.
void addLostGasStates(const WholeDive& dive, LostKinds& lost);

/// What a table of samples (.csv) leaves out of a dive.
LostKinds csvLosses(const WholeDive& dive);
/// What the DL7 segments (.zxu) leave out.
LostKinds zxuLosses(const WholeDive& dive);

} // namespace benthor::exports
