#include "link/screens/seriallines.h"
#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/application.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/sessionend.h"
#include "shell/house.h"

#include <QDir>

using namespace benthor;

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    look::apply(application);

    platform::FileResult made;
    const platform::ProgramFolder folder = platform::locateProgramFolder(platform::folderPlaces(), made);
    if (!made) {
        platform::dialogs().message(nullptr, made.error, platform::BoxKind::Critical);
    }
    platform::ProgramFolder::setCurrent(folder);
    QDir::setCurrent(folder.root());

    shell::House house(link::serialLines());
    // Not quit(): that would ask the windows first, and the end has been decided.
    QObject::connect(
        &house, &shell::House::ended, &application, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    const platform::SessionEnd session;
    house.follow(session);
    house.start();
    return QApplication::exec();
}
