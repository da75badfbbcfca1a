#include "link/body.h"

#include <QFileInfo>

namespace benthor::link {

namespace {

constexpr qsizetype kMostOfCommand = 14; ///< letters; a name with its trailer is longer

QString shortened(QString command) {
    command.replace(QLatin1String("\r\n"), QStringLiteral("↵"));
    return command.size() > kMostOfCommand ? command.left(kMostOfCommand).trimmed() + QStringLiteral("…")
                                           : command;
}

/// As it leaves: an interval has three digits at least.
QString commandtosend(Console console) {
    const QString typed = typedinterval(console);
    if (!typed.isEmpty()) {
        console.Text9 = typed;
    }
    if (console.option == kChoiceIntervalSend) {
        console.Text9 = console.Text9.rightJustified(console.Text9MaxLength, QLatin1Char('0'));
    }
    return shortened(wire(console));
}

} // namespace

QString goeswords(const Console& console) {
    if (isupdate(console)) {
        return QStringLiteral("Sends the setup of the gas screen");
    }
    if (typedinterval(console).size() > console.Text9MaxLength) {
        return QStringLiteral("Sends nothing: at most %1 digits").arg(console.Text9MaxLength);
    }
    const QString command = commandtosend(console);
    switch (bodyinhand(console).kind) {
    case Body::Kind::Missing:
        return QStringLiteral("Sends nothing: open a file first");
    case Body::Kind::File:
        return QStringLiteral("Sends %1, then %2")
            .arg(command, QFileInfo(console.chosenfile.path).fileName());
    case Body::Kind::Setup:
        return QStringLiteral("Sends %1, then the setup").arg(command);
    case Body::Kind::None:
        break;
    }
    return command.isEmpty() ? QStringLiteral("Sends nothing") : QStringLiteral("Sends %1").arg(command);
}

} // namespace benthor::link
