#pragma once

#include "gas/gasplan.h"

#include <optional>

namespace benthor::gas {

// The places of the setup text, and what the cells of the screen put into them. Both lengths and every place
// are held here: whoever writes into the text goes through this file, and nothing that is typed moves a
// place.
//
// Positions count from 1. Gas i stands at 16i + 1: its letter, nitrogen, helium, depth, active. The lettered
// settings K to Y stand behind position 160; "Z" and ESC end the text.

constexpr int kGasBlock = 160;    ///< characters of the gases
constexpr int kRowWidth = 16;     ///< of one gas
constexpr int kSetupText = 226;   ///< of a whole text
constexpr int kPositionOfY = 222; ///< what guards every send
constexpr char16_t kEscape = 0x1b;

struct Tag {
    char16_t letter;
    int width; ///< characters behind the letter
    const char* setting;
};
inline constexpr std::array<Tag, 15> kTags{{{u'K', 10, "date stamp"},
                                            {u'L', 1, "Dive Gas"},
                                            {u'M', 1, "Backlight"},
                                            {u'N', 1, "Last Stop"},
                                            {u'O', 1, "HUD HI"},
                                            {u'P', 3, "PPO2 Set Point"},
                                            {u'Q', 1, "Silent mode"},
                                            {u'R', 1, "Big Graphics"},
                                            {u'S', 1, "Units"},
                                            {u'T', 3, "CNS"},
                                            {u'U', 3, "Safety"},
                                            {u'V', 3, "Screen Saver secs"},
                                            {u'W', 3, "Home timeout secs"},
                                            {u'X', 1, "Closed Circuit"},
                                            {u'Y', 1, "Closed Circuit again"}}};

/// A text with every letter and blank in its place and 0 for every digit.
QString blanktext();

/// What does not stand in its place in a text, by name ("Gas 3", "Last Stop", "the length"); empty where each
/// letter and blank does and every field holds digits. `Part` looks at the gases alone.
enum class Part { Whole, Gases };
QString misplaced(const QString& text, Part part = Part::Whole);

/// The first setting or gas in which two texts in their places differ, by name; the stamp is left out.
QString differing(const QString& one, const QString& other);

/// What the cells of a gas put into the text, each exactly as wide as its place; nothing where a cell is no
/// number of its kind or does not fit. Nitrogen and helium stand or fall together: half of a mix is none that
/// was shown.
struct GasFields {
    std::optional<QString> nitrogen; ///< three characters
    std::optional<QString> helium;   ///< three characters, the cell's own
    std::optional<QString> depth;    ///< four digits: hundredths of a bar
};
GasFields gasfields(const GasRow& row, double depthperbar);

/// The ten gases as 160 characters. A field without a value keeps the characters of `last`, 160 of them, and
/// so does a depth under the head of another unit than that in force; nothing where there are none.
std::optional<QString> gasblockof(const GasPlan& plan, const QString& last);

/// Writes a letter with its value where the letter first stands in the text, whatever its case. The text
/// keeps its length; a value that is not as wide as its place, and a letter that is not there, are passed
/// over.
void putfield(QString& text, const Tag& tag, const QString& value);

/// Writes the gas block over the first 160 characters; a shorter text grows to it.
void putgases(QString& text, const QString& gasblock);

/// A number with a point that has at most `places` digits behind it, no sign; blanks around it do not count.
std::optional<double> unsignednumber(QStringView text, int places);

} // namespace benthor::gas
