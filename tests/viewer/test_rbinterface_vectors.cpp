#include "divescreen.h"

#include "platform/grid/flexgrid.h"

#include <QCheckBox>
#include <QJsonArray>
#include <QLabel>
#include <QtTest>

using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::FlexGrid;

namespace {

QStringList texts(const QJsonArray& values) {
    QStringList result;
    for (const QJsonValueConstRef value : values) {
        result += value.toString();
    }
    return result;
}

} // namespace

class TestRbinterfaceVectors : public QObject {
    Q_OBJECT

private slots:
    void aDiveShowsWhatWasExpectedOfIt_data();
    void aDiveShowsWhatWasExpectedOfIt();
};

void TestRbinterfaceVectors::aDiveShowsWhatWasExpectedOfIt_data() {
    QTest::addColumn<const DiveVector*>("vector");
    for (const DiveVector& vector : diveVectors()) {
        QTest::newRow(vector.name.constData()) << &vector;
    }
}

/// A null in the vectors leaves a value open.
void TestRbinterfaceVectors::aDiveShowsWhatWasExpectedOfIt() {
    QFETCH(const DiveVector*, vector);
    DiveScreen bench;
    bench.put(*vector);
    rbinterface& screen = bench.load();
    const QJsonObject& expected = vector->expected;

    QCOMPARE(bench.boxes.messages(), texts(expected["messages"].toArray()));
    QCOMPARE(screen.windowTitle(), expected["caption"].toString());
    const QJsonObject boxes = expected["boxes"].toObject();
    for (auto box = boxes.begin(); box != boxes.end(); ++box) {
        if (!box.value().isNull()) {
            QCOMPARE(box.key() + ' ' + textOf(screen, box.key().toLatin1().constData()),
                     box.key() + ' ' + box.value().toString());
        }
    }
    if (!expected["gas_list"].isNull()) {
        QCOMPARE(textOf(screen, "gasList").split(QStringLiteral("\r\n"), Qt::SkipEmptyParts),
                 texts(expected["gas_list"].toArray()));
    }
    const QJsonObject enabled = expected["series_enabled"].toObject();
    for (auto check = enabled.begin(); check != enabled.end(); ++check) {
        if (!check.value().isNull()) {
            const QByteArray name = check.key().toLatin1();
            QVERIFY2(control<QCheckBox>(screen, name).isEnabled() == check.value().toBool(), name);
        }
    }
    // Those that the profile takes away. The selection of the first row then hides those of ceiling,
    // temperature and filter, whose texts it reads.
    const QJsonArray hidden = expected["masks_hidden"].toArray();
    for (const int i : {0, 2, 5}) {
        const QByteArray name = "Frame4(" + QByteArray::number(i) + ')';
        QVERIFY2(control<QWidget>(screen, name).isHidden() == hidden.contains(i), name);
    }
    const FlexGrid& grid = control<FlexGrid>(screen, "MSFlexGrid1");
    QCOMPARE(grid.rows(), expected["records"].toInt() + 4);
    const QJsonArray rows = expected["grid"].toArray();
    for (int row = 1; row <= rows.size(); ++row) {
        const QJsonArray cells = rows[row - 1].toArray();
        for (int column = 0; column < cells.size(); ++column) {
            const QString cell = cells[column].toString();
            QVERIFY2(cells[column].isNull() || grid.text(row, column) == cell,
                     qPrintable(QStringLiteral("row %1 column %2: %3 for %4")
                                    .arg(row)
                                    .arg(column)
                                    .arg(grid.text(row, column), cell)));
        }
    }
}

QTEST_MAIN(TestRbinterfaceVectors)
#include "test_rbinterface_vectors.moc"
