#include "divetext.h"
#include "platform/textformat.h"
#include "profile/gridcells.h"
#include "vectors.h"

#include <QJsonArray>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;

namespace {

/// Position of a vector in its list.
constexpr const char* kIndex = "index";

struct Opened {
    GasArrays gases;
    GasNames names;
    DiveProfile profile;
    QStringList messages;
    double interval = 0.0;
};

Opened opened(const DiveVector& dive) {
    Opened result;
    const QString gasMessage = readgaslist(gasRows(dive.stored), dive.feet, result.gases);
    if (!gasMessage.isEmpty()) {
        result.messages += gasMessage;
    }
    result.names = gasNames(result.gases);
    const auto message = [&result](const QString& text) { result.messages += text; };
    result.profile = decodeProfile(dive.text, dive.feet, {.message = message});
    result.interval = platform::leadingNumber(diveRow(dive.stored).interval.value_or(QString()));
    return result;
}

QStringList texts(const QJsonValue& array) {
    QStringList result;
    for (const QJsonValueConstRef text : array.toArray()) {
        result += text.toString();
    }
    return result;
}

QStringList numbers(const QJsonValue& array) {
    QStringList result;
    for (const QJsonValueConstRef number : array.toArray()) {
        result += QString::number(number.toInt());
    }
    return result;
}

void addRows(const std::vector<DiveVector>& vectors) {
    QTest::addColumn<int>(kIndex);
    for (size_t i = 0; i < vectors.size(); ++i) {
        QTest::newRow(vectors[i].name.constData()) << static_cast<int>(i);
    }
}

/// "stick channel sample" to the text of the value, without zeros.
QMap<QString, QString> sticksOf(const DiveProfile& profile) {
    QMap<QString, QString> result;
    const std::array sticks{&profile.tpmstick0, &profile.tpmstick1, &profile.tpmstick2};
    for (size_t stick = 0; stick < sticks.size(); ++stick) {
        for (size_t channel = 1; channel <= 8; ++channel) {
            const SampleArray& readings = (*sticks[stick])[channel];
            for (int n = 1; n <= kMostSamples && !readings.values().empty(); ++n) {
                if (const float value = sampleOf(readings, n); value != 0.0F) {
                    result[QStringLiteral("%1 %2 %3").arg(stick).arg(channel).arg(n)] =
                        platform::floatText(value);
                }
            }
        }
    }
    return result;
}

QMap<QString, QString> sticksOf(const QJsonObject& expected) {
    QMap<QString, QString> result;
    for (auto stick = expected.begin(); stick != expected.end(); ++stick) {
        const QJsonObject channels = stick.value().toObject();
        for (auto channel = channels.begin(); channel != channels.end(); ++channel) {
            const QJsonObject samples = channel.value().toObject();
            for (auto sample = samples.begin(); sample != samples.end(); ++sample) {
                if (sample.value().toString() != QLatin1String("0")) {
                    result[stick.key() + ' ' + channel.key() + ' ' + sample.key()] =
                        sample.value().toString();
                }
            }
        }
    }
    return result;
}

void compareRow(const Opened& dive, int row, const QJsonArray& expected) {
    QCOMPARE(expected.size(), static_cast<qsizetype>(kSampleColumns));
    for (int column = 0; column < kSampleColumns; ++column) {
        if (expected[column].isNull()) {
            continue;
        }
        const QString cell = cellText(dive.profile, dive.names, dive.interval, row, column);
        QVERIFY2(cell == expected[column].toString(),
                 qPrintable(QStringLiteral("row %1 column %2: \"%3\", not \"%4\"")
                                .arg(QString::number(row), QString::number(column), cell,
                                     expected[column].toString())));
    }
}

} // namespace

class TestDecoderVectors : public QObject {
    Q_OBJECT

private slots:
    void everyDiveIsThere();
    void messagesAndRecordsAgree_data() { addRows(diveVectors()); }
    void messagesAndRecordsAgree();
    void gasesAgree_data() { addRows(diveVectors()); }
    void gasesAgree();
    void headerBoxesAgree_data() { addRows(diveVectors()); }
    void headerBoxesAgree();
    void enabledBoxesAndHiddenMasksAgree_data() { addRows(diveVectors()); }
    void enabledBoxesAndHiddenMasksAgree();
    void alarmsAndMarksAgree_data() { addRows(diveVectors()); }
    void alarmsAndMarksAgree();
    void sticksAgree_data() { addRows(diveVectors()); }
    void sticksAgree();
    void everyGridRowAgrees_data() { addRows(diveVectors()); }
    void everyGridRowAgrees();
    void aLargeDiveAgreesInSumsCountsAndRows_data() { addRows(largeDiveVectors()); }
    void aLargeDiveAgreesInSumsCountsAndRows();

private:
    static const DiveVector& current(const std::vector<DiveVector>& vectors = diveVectors()) {
        QFETCH(int, index);
        return vectors[static_cast<size_t>(index)];
    }
    static void compareAlarmsAndMarks(const DiveVector& dive);
    static void compareBoxes(const DiveVector& dive);
};

void TestDecoderVectors::everyDiveIsThere() {
    QVERIFY(diveVectors().size() >= 150);
    QCOMPARE(largeDiveVectors().size(), static_cast<size_t>(2));
}

void TestDecoderVectors::messagesAndRecordsAgree() {
    const DiveVector& dive = current();
    const Opened result = opened(dive);
    QCOMPARE(result.messages, texts(dive.expected["messages"]));
    QCOMPARE(recordsOf(result.profile), dive.expected["records"].toInt());
}

void TestDecoderVectors::gasesAgree() {
    const DiveVector& dive = current();
    const Opened result = opened(dive);
    if (!dive.expected["gas_names"].isNull()) {
        QCOMPARE(QStringList(result.names.begin(), result.names.begin() + kNamedGases),
                 texts(dive.expected["gas_names"]));
    }
    if (!dive.expected["gas_list"].isNull()) {
        QCOMPARE(gasListText(result.gases, dive.feet),
                 texts(dive.expected["gas_list"]).join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
    }
}

void TestDecoderVectors::headerBoxesAgree() {
    const DiveVector& dive = current();
    const HeaderBoxes shown =
        headerBoxes(dive.stored["main"]["DiveID"].toString(), diveRow(dive.stored), dive.feet);
    const QMap<QString, QString> boxes{
        {"txtdiveid", shown.txtdiveid},     {"txtduration", shown.txtduration},
        {"txtinterval", shown.txtinterval}, {"txtversion", shown.txtversion},
        {"txtotu", shown.txtotu},           {"txtatmos", shown.txtatmos},
        {"txtdusageh", shown.txtdusageh},   {"txtmaxdepth", shown.txtmaxdepth},
        {"lblmaxdepth", shown.lblmaxdepth}, {"txttimedown", shown.txttimedown}};
    const QJsonObject expected = dive.expected["boxes"].toObject();
    QCOMPARE(expected.keys(), boxes.keys());
    for (auto box = expected.begin(); box != expected.end(); ++box) {
        if (!box.value().isNull()) {
            QCOMPARE(box.key() + ": " + boxes[box.key()], box.key() + ": " + box.value().toString());
        }
    }
    QCOMPARE(shown.caption, dive.expected["caption"].toString());
}

void TestDecoderVectors::compareBoxes(const DiveVector& dive) {
    const DiveProfile profile = opened(dive).profile;
    const QJsonObject enabled = dive.expected["series_enabled"].toObject();
    QCOMPARE(enabled.size(), 14);
    for (auto box = enabled.begin(); box != enabled.end(); ++box) {
        if (!box.value().isNull()) {
            const bool isEnabled = profile.enabled.test(box.key().mid(5).toUInt());
            QVERIFY2(isEnabled == box.value().toBool(), qPrintable(box.key()));
        }
    }
    QStringList hidden;
    for (size_t mask = 0; mask < profile.maskshidden.size(); ++mask) {
        if (profile.maskshidden.test(mask)) {
            hidden += QString::number(mask);
        }
    }
    QCOMPARE(hidden, numbers(dive.expected["masks_hidden"]));
}

void TestDecoderVectors::enabledBoxesAndHiddenMasksAgree() {
    compareBoxes(current());
}

void TestDecoderVectors::compareAlarmsAndMarks(const DiveVector& dive) {
    const DiveProfile profile = opened(dive).profile;
    QStringList points;
    QStringList marks;
    QJsonObject alarmTexts;
    for (int n = 1; n < profile.lastsample; ++n) {
        if (profile.alarmpoint(n)) {
            points += QString::number(n);
        }
        if (sampleOf(profile.mark, n) > 0.0F) {
            marks += QString::number(n);
        }
        if (const QString text = profile.alarmtext(n); !text.isEmpty()) {
            alarmTexts[QString::number(n)] = text;
        }
    }
    QCOMPARE(points, numbers(dive.expected["alarm_points"]));
    QCOMPARE(marks, numbers(dive.expected["marks"]));
    QCOMPARE(alarmTexts, dive.expected["alarm_text"].toObject());
}

void TestDecoderVectors::alarmsAndMarksAgree() {
    compareAlarmsAndMarks(current());
}

void TestDecoderVectors::sticksAgree() {
    const DiveVector& dive = current();
    QCOMPARE(sticksOf(opened(dive).profile), sticksOf(dive.expected["sticks"].toObject()));
}

void TestDecoderVectors::everyGridRowAgrees() {
    const DiveVector& dive = current();
    const Opened result = opened(dive);
    const QJsonArray grid = dive.expected["grid"].toArray();
    QVERIFY(grid.isEmpty() || grid.size() == result.profile.lastsample - 1);
    for (int row = 1; row <= grid.size(); ++row) {
        compareRow(result, row, grid[row - 1].toArray());
    }
}

void TestDecoderVectors::aLargeDiveAgreesInSumsCountsAndRows() {
    const DiveVector& dive = current(largeDiveVectors());
    const Opened result = opened(dive);
    const int rows = result.profile.lastsample - 1;
    QCOMPARE(rows, dive.expected["records"].toInt() + 3);

    const QJsonArray sums = dive.expected["column_sums"].toArray();
    QCOMPARE(sums.size(), static_cast<qsizetype>(kSampleColumns));
    for (int column = 0; column < kSampleColumns; ++column) {
        if (sums[column].isNull()) {
            continue;
        }
        double sum = 0.0;
        for (int row = 1; row <= rows; ++row) {
            sum += cellText(result.profile, result.names, result.interval, row, column).toDouble();
        }
        const double expected = sums[column].toDouble();
        QVERIFY2(std::abs(sum - expected) <= 1e-6 * std::abs(expected),
                 qPrintable(QStringLiteral("column %1: %2, not %3").arg(column).arg(sum).arg(expected)));
    }

    QJsonObject counts;
    for (int row = 1; row <= rows; ++row) {
        const QString name = gasNameAt(result.profile, result.names, row);
        counts[name] = counts[name].toInt() + 1;
    }
    QCOMPARE(counts, dive.expected["gas_name_counts"].toObject());

    const QJsonObject someRows = dive.expected["some_rows"].toObject();
    QVERIFY(!someRows.isEmpty());
    for (auto row = someRows.begin(); row != someRows.end(); ++row) {
        compareRow(result, row.key().toInt(), row.value().toArray());
    }
    QCOMPARE(result.messages, texts(dive.expected["messages"]));
    compareAlarmsAndMarks(dive);
    compareBoxes(dive);
}

QTEST_GUILESS_MAIN(TestDecoderVectors)
#include "test_decoder_vectors.moc"
