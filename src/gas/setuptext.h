#pragma once

#include "gas/setupfields.h"

#include <QByteArray>
#include <QDateTime>
#include <QStringList>

namespace benthor::gas {

// The setup text as it is written, read and kept: 226 characters that hold the gases and the settings. Its
// places are in setupfields.h.

constexpr int kUsableText = 162; ///< a shorter text is not taken over

/// What stands in for a reply that is too short.
QString stocktext();

/// What the plan writes behind the letter of a tag, as wide as its place; nothing where a cell is no number
/// of its kind or does not fit.
std::optional<QString> fieldvalue(const GasPlan& plan, size_t tag, const QDateTime& now);

/// Writes the settings and then the gas block into `Text7`. A field without a value, and a letter that is not
/// there, are passed over.
void patchsettings(GasPlan& plan, const QDateTime& now);

/// The text that the screen's cells make by themselves, in blank places: what must leave where the screen is
/// sent.
QString textof(const GasPlan& plan, const QDateTime& now);

/// A setup text as it is read from a file or from what the device sent.
struct HeldText {
    QString text;
    QStringList messages; ///< what is told before it is used
};
HeldText readsetup(const QByteArray& bytes);

/// Where a text that is taken over came from.
enum class TextFrom { Device, File };

/// Takes a text over to the plan: gases first, then settings; depths are tenths of the number whatever the
/// unit. False where a field is no number or no value of its setting: what was read before it stays. Sets the
/// process's `depthunit` from the letter S.
bool taketext(GasPlan& plan, const QString& text, const Say& say, TextFrom from = TextFrom::File);

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

} // namespace benthor::gas
