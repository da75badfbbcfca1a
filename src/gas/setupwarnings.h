#pragma once

#include "gas/gasplan.h"

#include <QStringList>

namespace benthor::gas {

/// What is known of the device that a setup would go to.
struct DeviceSetup {
    QString reported;        ///< its setup as it was last received; empty for none
    bool unreadable = false; ///< its firmware has no command that reads the setup
};

/// What a person should look at twice before the screen is sent, a sentence each; each names its cell.
QStringList setupwarnings(const GasPlan& plan, const DeviceSetup& device);

/// What stands for the text and its warnings, without the moment: as long as it is the same, nothing has
/// changed since the diver agreed.
QString agreementof(const QString& text, const QStringList& warnings, const DeviceSetup& device);

} // namespace benthor::gas
