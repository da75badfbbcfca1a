#include "exports/lossreport.h"

#include <QJsonArray>

namespace benthor::exports {

namespace {

QString inOneLine(QString text) {
    for (QChar& letter : text) {
        const bool breaks = letter.category() == QChar::Other_Control || letter == QChar::LineSeparator ||
                            letter == QChar::ParagraphSeparator;
        letter = breaks ? u' ' : letter;
    }
    return text;
}

QString entry(const QString& id, const QString& text) {
    return id + QStringLiteral(": ") + text;
}

QString ofDives(int number) {
    return number == 1 ? QStringLiteral("1 dive") : QStringLiteral("%1 dives").arg(number);
}

} // namespace

void LossReport::addWithoutSamples(const QString& id, const QString& reason) {
    withoutSamples += entry(id, reason);
}

void LossReport::addMust(const QString& id, const QString& what) {
    musts += entry(id, what);
}

QStringList LossReport::lines() const {
    QStringList all{ofDives(dives) + QStringLiteral(" written")};
    for (const auto& [kind, number] : lost) {
        all += QStringLiteral("no place for: %1 (%2)").arg(kind, ofDives(number));
    }
    for (const QString& dive : withoutSamples) {
        all += QStringLiteral("without samples: ") + dive;
    }
    for (const QString& dive : musts) {
        all += QStringLiteral("made up: ") + dive;
    }
    for (QString& line : all) {
        line = inOneLine(line);
    }
    return all;
}

QJsonObject LossReport::json() const {
    QJsonObject kinds;
    for (const auto& [kind, number] : lost) {
        kinds.insert(kind, number);
    }
    return {{QStringLiteral("dives"), dives},
            {QStringLiteral("lost"), kinds},
            {QStringLiteral("without_samples"), QJsonArray::fromStringList(withoutSamples)},
            {QStringLiteral("musts"), QJsonArray::fromStringList(musts)}};
}

} // namespace benthor::exports
