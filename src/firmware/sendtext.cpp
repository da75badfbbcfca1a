#include "firmware/sendtext.h"

#include "firmware/lostline.h"
#include "firmware/session.h"
#include "link/textfile.h"
#include "platform/textformat.h"

namespace benthor::firmware {

namespace {

constexpr qint64 kMostOfText = 30000;
constexpr qint64 kTextBetweenCounts = 5000;
constexpr qint64 kTextBetweenPaints = 128;

} // namespace

bool sendtext(ReprogState& state, ReprogHost& host, QFile& file) {
    const qint64 limit = platform::toWhole(platform::leadingNumber(state.fields.Text12)) + kMostOfText;
    qint64 sent = 0;
    char byte = 0;
    while (sent < limit && file.getChar(&byte)) {
        if (telllost(host, host.MSComm1().Output(QByteArrayView(&byte, 1)), LostAt::Text)) {
            return true;
        }
        ++sent;
        if (sent % kTextBetweenCounts == 0) {
            sayinplace(state, QByteArray::number(sent));
        }
        if (sent % kTextBetweenPaints == 0 && !host.repaint()) {
            return false;
        }
    }
    if (telllost(host, host.MSComm1().Output(" * * "), LostAt::Text)) {
        return true;
    }
    if (sent == limit && !file.atEnd()) {
        link::offertokeeprest(host, file);
    }
    return true;
}

} // namespace benthor::firmware
