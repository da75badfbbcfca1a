#pragma once

#include "exports/uddf.h"
#include "tests/exports/madedives.h"
#include "tests/exports/uddfreading.h"

#include <QBuffer>
#include <QtTest>

namespace benthor::tests {

/// A file of some dives, written and read again.
struct Written {
    explicit Written(const std::vector<MadeDive>& dives) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        exports::UddfWriter writer(buffer, QStringLiteral("2.0"),
                                   QDateTime({2026, 1, 2}, {3, 4, 5}, Qt::UTC));
        writer.begin();
        for (const MadeDive& dive : dives) {
            writer.add(dive.whole());
        }
        writer.end();
        report = writer.report();
        root = readXml(bytes, error);
    }
    explicit Written(const MadeDive& dive)
        : Written(std::vector{dive}) {}

    /// Empty when the file is well-formed, its references lead somewhere, and it keeps to our schema.
    QString broken() const {
        for (const QString& complaint : {error, brokenReferences(root)}) {
            if (!complaint.isEmpty()) {
                return complaint;
            }
        }
        return invalid(bytes, QStringLiteral(BENTHOR_TEST_DATA "/uddf/subset.xsd"));
    }
    const Element& dive(size_t number = 0) const { return *divesOf(root).at(number); }
    QStringList lostKinds() const {
        QStringList kinds;
        for (const auto& [kind, dives] : report.lost) {
            kinds += kind;
        }
        return kinds;
    }

    QByteArray bytes;
    Element root;
    QString error;
    exports::LossReport report;
};

} // namespace benthor::tests
