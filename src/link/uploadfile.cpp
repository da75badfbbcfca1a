#include "link/console.h"
#include "link/textfile.h"

#include <QFile>

namespace benthor::link {

namespace {

constexpr qint64 kMostBytes = 20000;

QString askForFile(const Console& console, LinkHost& host) {
    switch (console.option) {
    case kChoiceLogo:
        return host.openFile(QStringLiteral("BMPText Files (*.bmt)|*.bmt|All Files (*.*)|*.*"),
                             console.convertedlogo);
    case kChoiceSetup:
        return host.openFile(QStringLiteral("Gas Files (*.mit)|*.mit|All Files (*.*)|*.*"),
                             QStringLiteral("default.mit"));
    default:
        return host.openFile(textfilter(), {});
    }
}

/// Byte by byte: whenever the text so far holds two blanks in a row it is emptied.
QByteArray behindLastDoubleBlank(const QByteArray& bytes) {
    QByteArray text;
    for (const char byte : bytes) {
        text += byte;
        if (text.endsWith("  ")) {
            text.clear();
        }
    }
    return text;
}

} // namespace

QString textfilter() {
    return QStringLiteral("Text Files (*.txt)|*.txt|All Files (*.*)|*.*");
}

void mnuOpen_click(LinkState& link, LinkHost& host) {
    Console& console = link.console;
    const QString path = askForFile(console, host);
    if (path.isEmpty()) {
        return;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        host.message(QStringLiteral("The file can't be read: %1\n%2").arg(path, file.errorString()));
        return;
    }
    console.Text5.text = path;
    console.uploadfile = path;
    console.filenameshown = path;
    console.chosenfile = {path, file.read(kMostBytes)};
    if (console.chosenfile.bytes.size() == kMostBytes) {
        offertokeeprest(host, file);
    }
}

Body bodyinhand(const Console& console) {
    const ChosenFile& file = console.chosenfile;
    const bool logo = console.option == kChoiceLogo;
    if (console.Text5.visible && !file.path.isEmpty() && console.Text5.text == file.path) {
        return {Body::Kind::File, logo ? behindLastDoubleBlank(file.bytes) : file.bytes};
    }
    if (logo || console.option == kChoiceBook) {
        return {Body::Kind::Missing, {}};
    }
    const bool setup =
        console.option == kChoiceSetup && console.Text5.visible && !console.Text5.text.isEmpty();
    return {setup ? Body::Kind::Setup : Body::Kind::None, {}};
}

} // namespace benthor::link
