#pragma once

#include "platform/screen/emptyscreen.h"

namespace benthor::logbook {

/// The details of one dive; nothing of them stands yet but their card.
class rbdetails : public platform::EmptyScreen {
    Q_OBJECT

public:
    rbdetails()
        : EmptyScreen(QStringLiteral("rbdetails"), QStringLiteral("Dive and Log details")) {}
};

} // namespace benthor::logbook
