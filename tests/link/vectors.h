#pragma once

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace benthor::tests {

inline QByteArray testData(const QString& name) {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no test data %s", qPrintable(name));
    }
    return file.readAll();
}

inline QJsonObject vectors(const QString& name) {
    const QJsonObject all = QJsonDocument::fromJson(testData(name)).object();
    if (all.isEmpty()) {
        qFatal("no vectors in %s", qPrintable(name));
    }
    return all;
}

} // namespace benthor::tests
