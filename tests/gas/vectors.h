#pragma once

#include "gas/gascalc.h"
#include "session/process.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace benthor::tests {

inline QJsonObject vectorFile(const char* name) {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no vectors %s", name);
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

inline QJsonArray cases(const QJsonObject& file, const char* name) {
    const QJsonArray array = file.value(QLatin1String(name)).toArray();
    if (array.isEmpty()) {
        qFatal("no cases %s", name);
    }
    return array;
}

/// Compares unless the vector leaves it open.
inline bool agrees(const QJsonValue& expected, const QString& actual) {
    return expected.isNull() || expected.isUndefined() || expected.toString() == actual;
}

inline QString colourName(platform::ToldColour colour) {
    switch (colour) {
    case gas::kLightCyan:
        return QStringLiteral("light cyan");
    case gas::kLightYellow:
        return QStringLiteral("light yellow");
    case gas::kOrange:
        return QStringLiteral("orange");
    case platform::kToldRed:
        return QStringLiteral("red");
    default:
        return QString::number(colour, 16);
    }
}

/// Notes what is told.
struct Told {
    QStringList messages;
    gas::Say say = [this](const QString& text) { messages += text; };
    Told() = default;
    Told(const Told&) = delete;
    Told& operator=(const Told&) = delete;
};

inline bool isFeet(const QJsonValue& units) {
    return units.toString() == QLatin1String("Feet");
}

inline gas::GasPlan planIn(const QJsonValue& units) {
    process() = Process();
    gas::GasPlan plan;
    plan.depthperbar = isFeet(units) ? gas::kFeetPerBar : gas::kMetresPerBar;
    plan.headfeet = plan.feet();
    process().depthunit = isFeet(units) ? QStringLiteral("Feet") : QStringLiteral("metre");
    return plan;
}

inline QStringList textList(const QJsonValue& array) {
    QStringList list;
    for (const QJsonValue& one : array.toArray()) {
        list += one.toString();
    }
    return list;
}

} // namespace benthor::tests
