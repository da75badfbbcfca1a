#pragma once

#include "profile/gaslist.h"
#include "profile/header.h"

#include <QByteArray>
#include <QJsonObject>
#include <vector>

namespace benthor::profile {

QByteArray bytesOfTestData(const QString& name);
QJsonObject jsonOfTestData(const QString& name);

/// A dive of the vectors in one unit.
struct DiveVector {
    QByteArray name; ///< file and unit
    QByteArray text; ///< the file
    bool feet = false;
    QJsonObject stored;   ///< rows of the store: main, gas
    QJsonObject expected; ///< what the dive screen shows
};

/// Every dive of expected.json whose text is found, in both units; without the large one.
const std::vector<DiveVector>& diveVectors();
/// The large dive in both units.
const std::vector<DiveVector>& largeDiveVectors();

DiveRow diveRow(const QJsonObject& stored);
std::vector<GasRow> gasRows(const QJsonObject& stored);

} // namespace benthor::profile
