// What the told guards say, and the device's type by its words.

#include "gas/setuptext.h"

namespace benthor::gas {

QStringList sendguards(const QString& uploadtext) {
    const QString bad = QStringLiteral("Bad data - probably caused by incompatible language version!\r\n");
    if (uploadtext.contains(QLatin1Char(','))) {
        return {bad + QStringLiteral("No data updated!,,")};
    }
    if (uploadtext.contains(QLatin1Char('.'))) {
        return {bad + QStringLiteral("No data updated!..")};
    }
    if (uploadtext.indexOf(QLatin1Char('Y')) != kPositionOfY - 1) {
        return {bad + QStringLiteral("No data updated! %1").arg(uploadtext.size()), uploadtext};
    }
    return {};
}

QString devicetype(const QByteArray& received, const QString& before) {
    struct Word {
        const char* word;
        const char* type;
    };
    static constexpr std::array<Word, 5> kWords{
        {{"KD3", "KD3"}, {"KDX", "KDX"}, {"2010", "KDX"}, {"HALV", "HALV"}, {"TRAX", "TRAX"}}};
    QString type = before;
    for (const Word& word : kWords) {
        if (received.contains(word.word)) {
            type = QLatin1String(word.type);
        }
    }
    return type;
}

QString typecaption(const QString& producttype) {
    struct Caption {
        const char* type;
        const char* caption;
    };
    static constexpr std::array<Caption, 8> kCaptions{{{"HALV", "Halverin"},
                                                       {"TRAX", "Trax Gas Mode"},
                                                       {"MORVA", "Morvalien"},
                                                       {"RT22", "RT22"},
                                                       {"KD3", "KD"},
                                                       {"KDX", "KDx"},
                                                       {"UNKNOWN", "Unkown"},
                                                       {"OTHER", "Type"}}};
    for (const Caption& caption : kCaptions) {
        if (producttype == QLatin1String(caption.type)) {
            return QLatin1String(caption.caption);
        }
    }
    return {};
}

} // namespace benthor::gas
