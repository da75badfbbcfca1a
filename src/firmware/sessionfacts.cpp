#include "firmware/sessionfacts.h"

#include "firmware/guidance.h"

namespace benthor::firmware {

bool inreprogmode(const ReprogState& state) {
    const QByteArray& text = state.Text4.bytes();
    return text.lastIndexOf("REPROG MODE") > text.lastIndexOf("R, Enter");
}

bool isrestarting(const ReprogState& state) {
    return state.Text4.bytes().startsWith("restarting...");
}

bool hasprompt(const ReprogState& state) {
    return state.Label4[kLampPrompt].colour == platform::kToldGreen;
}

bool issog(const QString& path) {
    return path.contains(QLatin1String(".SOG")) || path.contains(QLatin1String(".sog"));
}

bool willberefused(const ReprogState& state) {
    return state.check.length < 0 || (!issog(state.Text5) && state.check.firstbyte != '&');
}

QString brokenoffwords(const BrokenOff& broken) {
    const QString at = QStringLiteral(" after %1 of %2 bytes").arg(grouped(broken.sent), grouped(broken.of));
    switch (broken.how) {
    case BrokenOff::How::EndedEarly:
        return QStringLiteral("the device ended the transfer") + at;
    case BrokenOff::How::DroppedOut:
        return QStringLiteral("the device dropped out of the transfer") + at;
    case BrokenOff::How::Lost:
        return QStringLiteral("the line was lost") + at;
    case BrokenOff::How::Not:
        break;
    }
    return {};
}

QString quoted(QString bytes) {
    constexpr qsizetype kMost = 14;
    bytes.replace(QLatin1String("\r\n"), QStringLiteral("↵"));
    return u'"' + (bytes.size() > kMost ? bytes.left(kMost) + u'…' : bytes) + u'"';
}

QString grouped(qint64 number) {
    QString text = QString::number(number);
    for (qsizetype at = text.size() - 3; at > 0; at -= 3) {
        text.insert(at, QChar(0x202F));
    }
    return text;
}

} // namespace benthor::firmware
