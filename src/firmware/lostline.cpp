#include "firmware/lostline.h"

namespace benthor::firmware {

using platform::Written;

namespace {

/// The line's part of the sentence, and how it can be had back.
struct Loss {
    QString what;
    QString remedy;
};

Loss lossof(Written how) {
    if (how == Written::Stuck) {
        return {QStringLiteral("took nothing for two seconds,"), QStringLiteral("Check adapter and cable, ")};
    }
    return {how == Written::Cut ? QStringLiteral("was cut") : QStringLiteral("is cut"),
            QStringLiteral("Plug it in again, ")};
}

QString withoutComma(const QString& words) {
    return words.endsWith(u',') ? words.chopped(1) : words;
}

} // namespace

QString lostwords(Written how, LostAt where, qint64 bytes) {
    if (how == Written::Whole) {
        return {};
    }
    const Loss loss = lossof(how);
    const QString again =
        QStringLiteral("\r\n") + loss.remedy + QStringLiteral("click Refresh, and try again.");
    switch (where) {
    case LostAt::Start:
        return QStringLiteral("Not reprogrammed! The line to the device is cut, and not one byte was sent.") +
               again;
    case LostAt::Image:
        return QStringLiteral("Not reprogrammed! The line to the device %1 after %2 bytes.")
                   .arg(loss.what)
                   .arg(bytes) +
               again;
    case LostAt::Verdict:
        return QStringLiteral("Not reprogrammed! The line to the device %1 before the device told what it "
                              "received.")
                   .arg(loss.what) +
               again;
    case LostAt::Confirming:
        return QStringLiteral(
                   "The line to the device %1 when the image was confirmed: whether it is programmed "
                   "is not known.\r\n%2and click Refresh to see what the device tells.")
            .arg(loss.what, loss.remedy);
    case LostAt::Text:
        return QStringLiteral("Not all was sent: the line to the device %1.").arg(withoutComma(loss.what)) +
               again;
    case LostAt::Command:
        break;
    }
    return QStringLiteral("Nothing more was sent: the line to the device %1.").arg(withoutComma(loss.what)) +
           again;
}

bool telllost(ReprogHost& host, Written how, LostAt where, qint64 bytes) {
    if (how == Written::Whole) {
        return false;
    }
    host.message(lostwords(how, where, bytes), {});
    return true;
}

} // namespace benthor::firmware
