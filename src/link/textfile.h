#pragma once

#include "platform/files.h"

#include <QIODevice>
#include <QString>

namespace benthor::link {

/// Filter of the dialogs that open or save a text.
QString textfilter();

/// Of a text that was too long to be sent whole: asks whether the rest is to be kept, and where. `rest`:
/// open, at what was not sent. A file that can't be written is told. `Host` asks and tells: it has confirm(),
/// saveFile() and message() of the link or of the firmware session.
template <class Host> void offertokeeprest(Host& host, QIODevice& rest) {
    if (!host.confirm(QStringLiteral("Not all text sent. Do you want to save remaining text in new file?"),
                      QStringLiteral("Save Text"))) {
        return;
    }
    const QString path = host.saveFile(textfilter(), {});
    if (path.isEmpty()) {
        return;
    }
    const platform::FileResult written = platform::writeFileWhole(path, rest.readAll());
    if (!written) {
        host.message(QStringLiteral("The rest of the text can't be saved: ") + written.error, {});
    }
}

} // namespace benthor::link
