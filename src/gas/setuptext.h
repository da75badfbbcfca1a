#pragma once

#include "gas/gasplan.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

namespace benthor::gas {

// The setup text: 226 characters that hold the gases and the settings. Positions count from 1. Gas i stands
// at 16i + 1: its letter, nitrogen, helium, depth, active; the lettered settings K to Y stand behind position
// 160; "Z" and ESC end it.

constexpr int kGasBlock = 160;    ///< characters of the gases
constexpr int kUsableText = 162;  ///< a shorter text is not taken over
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

/// What stands in for a reply that is too short.
QString stocktext();

/// What the plan writes behind the letter of a tag; nothing where a cell is no number.
std::optional<QString> fieldvalue(const GasPlan& plan, size_t tag, const QDateTime& now);

/// Writes the settings and then the gas block into `Text7`. A value too long for its place, and a letter that
/// is not there, are passed over.
void patchsettings(GasPlan& plan, const QDateTime& now);

/// A setup text as it is read from a file or from what the device sent.
struct HeldText {
    QString text;
    QStringList messages; ///< what is told before it is used
};
HeldText readsetup(const QByteArray& bytes);

/// Takes a text over to the plan: gases first, then settings; depths are tenths of the number whatever the
/// unit. False where a field is no number or no value of its setting: what was read before it stays. Sets the
/// process's `depthunit` from the letter S.
bool taketext(GasPlan& plan, const QString& text, const Say& say);

/// Takes the gases of the process's `uploadtext` over, depths by the unit in force. A text that is too short
/// changes nothing.
void gas_openupdate(GasPlan& plan, const Say& say);

/// The text that the screen starts with: of the file of the last time, else of the stock file, else none.
/// Null bytes are a file that is not there.
QString starttext(const QByteArray& last, const QByteArray& stock);

/// What the file of the received setup holds.
QByteArray receivedfile(const QString& received);
/// What a file of a saved text holds.
QByteArray savedfile(const QString& text);

/// The boxes that keep a text from being sent; none: it may go.
QStringList sendguards(const QString& uploadtext);

/// The type of the device by the words that it has sent; `before` where none is there.
QString devicetype(const QByteArray& received, const QString& before);
/// What `Label22` shows for a type.
QString typecaption(const QString& producttype);

/// A difference between two setup texts, for a person: the setting, what stands before and what would stand
/// behind.
struct SetupChange {
    QString setting;
    QString before; ///< empty: was not read
    QString after;
    bool operator==(const SetupChange&) const = default;
};
/// What a text would change in a device that last reported `device`; the date stamp is left out. Without a
/// usable report each setting is a change that was not read.
QList<SetupChange> setupchanges(const QString& device, const QString& text);
/// What a person should look at twice before the text is sent, in words.
QStringList setupwarnings(const GasPlan& plan);

} // namespace benthor::gas
