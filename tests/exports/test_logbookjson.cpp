#include "exports/divejson.h"
#include "exports/logbookjson.h"
#include "tests/exports/exportworld.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

using namespace benthor;
using namespace benthor::exports;

namespace {

QByteArray jsonOf(const std::vector<const WholeDive*>& dives) {
    QBuffer buffer;
    return tests::written(LogbookJson(buffer), buffer, dives);
}

QJsonArray divesOf(const QByteArray& json) {
    return QJsonDocument::fromJson(json).object()["dives"].toArray();
}

/// What the schema finds wrong; empty for a document that keeps to it.
QByteArray faultsOf(const QByteArray& json) {
    const auto script =
        QStringLiteral("import json, sys, jsonschema\n"
                       "schema = json.load(open(sys.argv[1], encoding='utf-8'))\n"
                       "jsonschema.Draft202012Validator.check_schema(schema)\n"
                       "document = json.loads(sys.stdin.buffer.read().decode('utf-8'))\n"
                       "for e in jsonschema.Draft202012Validator(schema).iter_errors(document):\n"
                       "    print(list(e.absolute_path), ascii(e.message)[:200])\n");
    QProcess python;
    python.start(QStringLiteral("python3"),
                 {"-c", script, QStringLiteral(BENTHOR_TEST_DATA "/../../docs/benthor-logbook.schema.json")});
    if (!python.waitForStarted()) {
        return "python3 does not start; scripts/setup installs it";
    }
    python.write(json);
    python.closeWriteChannel();
    python.waitForFinished(-1);
    const QByteArray errors = python.readAllStandardError();
    return python.exitCode() == 0 ? python.readAllStandardOutput() : "python3: " + errors;
}

} // namespace

class TestLogbookJson : public QObject {
    Q_OBJECT

private slots:
    void aLogbookHoldsItsDives() {
        const tests::ExportWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "");
        world.set("INSERT INTO buddylist VALUES ('D0000001', 'Anna')");
        const WholeDive one = world.dive();
        const WholeDive other = world.dive("D0000002");
        const QByteArray json = jsonOf({&one, &other});
        QVERIFY(json.startsWith("{\"format\":\"benthor-logbook\",\"version\":1,"));
        const QJsonArray dives = divesOf(json);
        QCOMPARE(dives.size(), 2);
        QCOMPARE(dives[0].toObject()["show"], QJsonValue(showObject(one)));
        QCOMPARE(dives[0].toObject()["samples"],
                 QJsonValue(QJsonDocument::fromJson(samplesJson(one)).object()));
        QCOMPARE(dives[1].toObject()["show"].toObject()["dive"].toObject()["start"], QJsonValue());
        QCOMPARE(json.count('\n'), 4); // a dive a line
        QCOMPARE(faultsOf(json), QByteArray());
    }

    void anEmptyLogbookIsOne() {
        const QByteArray json = jsonOf({});
        QVERIFY(QJsonDocument::fromJson(json).object()["dives"].isArray());
        QCOMPARE(faultsOf(json), QByteArray());
    }

    void theSchemaRefusesWhatIsWrong_data() {
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::newRow("format") << QByteArray("benthor-logbook") << QByteArray("other");
        QTest::newRow("version") << QByteArray("\"version\":1") << QByteArray("\"version\":2");
        QTest::newRow("number as text")
            << QByteArray("\"max_depth_m\":23.4") << QByteArray("\"max_depth_m\":\"23.4\"");
        QTest::newRow("date") << QByteArray("2017-09-27T01") << QByteArray("2017-09-27 01");
        QTest::newRow("unit") << QByteArray("\"unit\":\"bar\"") << QByteArray("\"unit\":\"psi\"");
        QTest::newRow("a row too short") << QByteArray(",[]]]") << QByteArray("]]");
        QTest::newRow("neither text nor base 64")
            << QByteArray("\"base64\":null") << QByteArray("\"base64\":\"\"");
    }
    void theSchemaRefusesWhatIsWrong() {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        const tests::ExportWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        const WholeDive dive = world.dive();
        QByteArray json = jsonOf({&dive});
        QCOMPARE(faultsOf(json), QByteArray());
        QVERIFY(json.contains(from));
        QVERIFY(!faultsOf(json.replace(from, to)).isEmpty());
    }

    void aFileComesBackToTheByte_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isText");
        QTest::newRow("usual") << tests::goodDive() << true;
        QTest::newRow("empty") << QByteArray("") << true;
        QByteArray ascii;
        for (int i = 0; i < 128; ++i) {
            ascii += static_cast<char>(i);
        }
        QTest::newRow("every letter of ASCII") << ascii << true;
        QTest::newRow("mark of the byte order") << QByteArray("\xEF\xBB\xBFver=V3\r\n") << true;
        QTest::newRow("umlaut") << QByteArray("\xC3\xA4\xF0\x9F\x90\xA0") << true;
        QTest::newRow("Latin 1") << QByteArray("Site \xE4\r\n") << false;
        QTest::newRow("half a pair") << QByteArray("\xED\xA0\xBD") << false;
        QTest::newRow("overlong") << QByteArray("\xC0\xAF") << false;
        QTest::newRow("cut") << QByteArray("abc\xE2\x82") << false;
        QByteArray all;
        for (int i = 0; i < 256; ++i) {
            all += static_cast<char>(255 - i);
        }
        QTest::newRow("every byte") << all << false;
    }
    void aFileComesBackToTheByte() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, isText);
        WholeDive dive = tests::looseDive({});
        dive.file = bytes;
        const QByteArray json = jsonOf({&dive});
        const QJsonObject file = divesOf(json)[0].toObject()["file"].toObject();
        QCOMPARE(file["name"], QJsonValue("1.txt"));
        QCOMPARE(file["text"].isString(), isText);
        QCOMPARE(file["base64"].isNull(), isText);
        QCOMPARE(isText ? file["text"].toString().toUtf8()
                        : QByteArray::fromBase64(file["base64"].toString().toLatin1()),
                 bytes);
        QCOMPARE(faultsOf(json), QByteArray());
    }

    void aMissingFileIsNull() {
        WholeDive dive = tests::looseDive({});
        dive.file.reset();
        const QByteArray json = jsonOf({&dive});
        QVERIFY(divesOf(json)[0].toObject()["file"].isNull());
        QCOMPARE(faultsOf(json), QByteArray());
    }

    void thermistorsComeBack() {
        QFile file(QStringLiteral(BENTHOR_TEST_DATA "/dives/thermistors.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        WholeDive dive = tests::looseDive({});
        dive.file = file.readAll();
        dive.profile = profile::decodeProfile(*dive.file, false);
        const QByteArray json = jsonOf({&dive});
        QCOMPARE(faultsOf(json), QByteArray());
        profile::DiveProfile back;
        for (const QJsonValue& value : divesOf(json)[0].toObject()["sticks"].toArray()) {
            const QJsonObject channel = value.toObject();
            const int stick = channel["stick"].toInt();
            auto& sticks = stick == 0 ? back.tpmstick0 : stick == 1 ? back.tpmstick1 : back.tpmstick2;
            const QJsonArray values = channel["values"].toArray();
            for (int i = 0; i < values.size(); ++i) {
                sticks[static_cast<size_t>(channel["channel"].toInt())].set(
                    i, static_cast<float>(values[i].toDouble()));
            }
        }
        int read = 0;
        for (size_t channel = 1; channel <= 8; ++channel) {
            for (int i = 0; i < profile::kMostSamples; ++i) {
                QCOMPARE(back.tpmstick0[channel][i], dive.profile.tpmstick0[channel][i]);
                QCOMPARE(back.tpmstick1[channel][i], dive.profile.tpmstick1[channel][i]);
                QCOMPARE(back.tpmstick2[channel][i], dive.profile.tpmstick2[channel][i]);
                read += back.tpmstick1[channel][i] != 0.0F ? 1 : 0;
            }
        }
        QVERIFY(read > 0);
    }

    void hostileTextsKeepToTheSchema() {
        WholeDive dive = tests::looseDive({"1,0,70,M0,T20,A500,X\"\x01\\"});
        const QString hostile =
            QStringLiteral("\"]}\\\r\n\u2028") + QChar(0) + QChar(0xd83d) + u'x' + QChar(0xdc00);
        dive.figures.id = hostile;
        dive.figures.name = hostile;
        dive.fileName = hostile;
        dive.store = {{hostile, hostile}};
        dive.buddies = QStringList{hostile};
        const QByteArray json = jsonOf({&dive});
        QCOMPARE(faultsOf(json), QByteArray());
        const QJsonObject entry = divesOf(json)[0].toObject();
        QCOMPARE(entry["show"].toObject()["store"].toObject()[hostile], QJsonValue(hostile));
        QCOMPARE(entry["file"].toObject()["name"], QJsonValue(hostile));
    }

    void everyTestDiveKeepsToTheSchema() {
        const QDir folder(QStringLiteral(BENTHOR_TEST_DATA "/dives"));
        std::vector<WholeDive> dives;
        for (const QString& name : folder.entryList({"*.txt"})) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            WholeDive& dive = dives.emplace_back(tests::looseDive({}));
            dive.file = file.readAll();
            dive.profile = profile::decodeProfile(*dive.file, false);
        }
        QVERIFY(dives.size() > 50);
        std::vector<const WholeDive*> all;
        for (const WholeDive& dive : dives) {
            all.push_back(&dive);
        }
        QCOMPARE(faultsOf(jsonOf(all)), QByteArray());
    }

    void noShortWriteIsPassedOver() {
        const WholeDive dive = tests::looseDive({"1,0,70,M0,T20,A500"});
        QCOMPARE(tests::silentLosses(jsonOf({&dive}).size(),
                                     [&](QIODevice& device) {
                                         LogbookJson json(device);
                                         json.begin();
                                         json.add(dive);
                                         json.end();
                                     }),
                 0);
    }
};

QTEST_GUILESS_MAIN(TestLogbookJson)
#include "test_logbookjson.moc"
