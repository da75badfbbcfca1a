#include "guides/screens/frmgets.h"

#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "shell/process.h"
#include "store/maintenance.h"
#include "store/units.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace benthor::guides {

using platform::ProgramFolder;
using platform::skipErrors;

frmGetS::frmGetS(bool maintain)
    : EmptyScreen(QStringLiteral("frmGetS"), QStringLiteral("Benthor - Getting Started"))
    , maintain_(maintain)
    , Check1_(new QCheckBox(QStringLiteral("Show this screen at start up"))) {
    Check1_->setObjectName(QStringLiteral("Check1"));
    connect(Check1_, &QCheckBox::toggled, this, &frmGetS::Check1_toggled);
    content()->addWidget(Check1_);
    auto* finish = new QPushButton(QStringLiteral("Finish"));
    finish->setObjectName(QStringLiteral("Command2"));
    finish->setProperty("primary", true);
    finish->setDefault(true);
    connect(finish, &QPushButton::clicked, this, &frmGetS::unload);
    content()->addWidget(finish, 0, Qt::AlignRight);
}

/// A store that is missing or cannot be read says nothing about the guide, which then stays; what is wrong is
/// met by the main screen.
void frmGetS::loading() {
    const ProgramFolder& folder = ProgramFolder::current();
    const QString path = folder.path(u"rb.mdb");
    if (maintain_ && !process().firststart) {
        skipErrors([&] {
            store::addmissingfields(path,
                                    [this](const QString& text) { platform::dialogs().message(this, text); });
        });
        store::makedbtxt(folder);
    }
    QString getstarted;
    skipErrors([&] {
        if (!process().database.isOpen()) {
            process().database.open(path);
        }
        getstarted = store::readgetstarted(process().database);
    });
    if (store::guideisclosed(getstarted)) {
        if (!process().firststart) {
            process().database.close();
        }
        unload();
        return;
    }
    const QSignalBlocker quiet(Check1_);
    Check1_->setChecked(true);
}

void frmGetS::Check1_toggled(bool checked) {
    store::writegetstarted(checked ? QStringLiteral("Open") : QStringLiteral("Close"));
}

} // namespace benthor::guides
