#include "link/screens/pc_link_1.h"

#include "shell/process.h"

#include <QLabel>
#include <QVBoxLayout>

namespace benthor::link {

PC_Link_1::PC_Link_1()
    : EmptyScreen(QStringLiteral("PC_Link_1"), QString()) {
    AFLabel3_ = new QLabel(QStringLiteral("Not Connected"));
    AFLabel3_->setObjectName(QStringLiteral("AFLabel3"));
    content()->insertWidget(1, AFLabel3_);
}

QString PC_Link_1::caption() const {
    return AFLabel3_->text();
}

void PC_Link_1::loading() {
    setTitle(process().screenmode == QLatin1String("Dive") ? QStringLiteral("Dive Download")
                                                           : QStringLiteral("Setup Utilities"));
}

void PC_Link_1::unloading() {
    process().screenmode.clear();
}

} // namespace benthor::link
