#pragma once

#include "gas/gasplan.h"

#include <QList>

namespace benthor::gas {

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

/// Whether a text that the device sent is a report of its setup.
bool isReport(const QString& device);
/// The value of a setting in a text in its places: `letter` as in the text.
QString settingin(const QString& text, char16_t letter);

} // namespace benthor::gas
