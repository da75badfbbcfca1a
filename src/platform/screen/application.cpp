#include "platform/screen/application.h"

#include "platform/screen/dialogs.h"

#include <QLocale>

namespace benthor::platform {

Application::Application(int& argc, char** argv)
    : QApplication(argc, argv) {
    setOrganizationName(QStringLiteral("Benthor"));
    setApplicationName(QStringLiteral("Benthor"));
    setApplicationVersion(QStringLiteral(BENTHOR_VERSION));
    // The name of its entry in the menu: so a compositor finds icon and name for the windows.
    setDesktopFileName(QStringLiteral("example.benthor.benthor"));
    // Between two screens there is a moment without a window: when the program ends is for the screens to
    // say.
    setQuitOnLastWindowClosed(false);
    // Our words are English, and our numbers have a decimal point: so has what the toolkit's own controls
    // write.
    QLocale numbers(QLocale::English, QLocale::World);
    numbers.setNumberOptions(QLocale::OmitGroupSeparator);
    QLocale::setDefault(numbers);
    // English reads from left to right whatever the desktop does: turned round, units would stand before their
    // numbers, and the keys that play a dive would point against its time axis.
    setLayoutDirection(Qt::LeftToRight);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        // One box at a time: a timer that fails at every tick would pile them up.
        if (telling_ == 0) {
            ++telling_;
            dialogs().message(activeWindow(), QString::fromUtf8(error.what()), BoxKind::Warning);
            --telling_;
        }
        return false;
    }
}

} // namespace benthor::platform
