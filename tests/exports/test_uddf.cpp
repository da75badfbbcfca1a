#include "tests/exports/uddfworld.h"

using namespace benthor;
using namespace benthor::exports;
using tests::Element;
using tests::MadeDive;
using tests::Written;

namespace {

MadeDive plainDive(const QString& id = QStringLiteral("D0000001")) {
    return MadeDive(id).gas("79").gas("68").records({",100,0,70,M0,T20,A500", ",200,0,90,M0,T18,A500"});
}

QStringList refsOf(const Element& element) {
    QStringList refs;
    for (const Element* const link : element.all("link")) {
        refs += link->attributes["ref"];
    }
    return refs;
}

QStringList namesIn(const Element& element) {
    QStringList names;
    for (const Element& child : element.children) {
        names += child.name;
    }
    return names;
}

const Element& waypoint(const Written& written, size_t number) {
    return *written.dive()["samples"].all("waypoint").at(number);
}

} // namespace

class TestUddf : public QObject {
    Q_OBJECT

private slots:
    void theGeneratorTellsTheProgram();
    void aFileWithoutDivesIsAFile();
    void everyWaypointHasDepthAndTime();
    void theZeroLeadIsOnePoint();
    void whatASampleDoesNotRecordIsLeftOut();
    void readingsStandInTheUnitsOfTheFormat();
    void aCellOnAWaypointNamesItsSensor();
    void tanksStandWherePressuresAreRecorded();
    void temperatureOfZeroIsATemperature();
    void gasesAreToldAtTheStartAndAtEachChange();
    void gasesOfTheDiveStandUnderTheGases();
    void aGasWithoutARowIsNamedAndTold();
    void theModeFollowsTheSetpoint();
    void alarmsAndMarks();
    void theDeviceAndItsSoftware();
    void siteBuddiesAndOwner();
    void notesAreLines();
    void whatTheStoreTellsOfTheDive();
    void daysAreGroups();
    void aDayThatComesAgain();
    void divesWithoutAStartStandAlone();
    void mustsThatADiveLacksAreNamed();
    void anIntervalThatIsNoneIsReplaced_data();
    void anIntervalThatIsNoneIsReplaced();
    void aDiveWithoutSamplesGoesOut();
    void whatIsLostIsCounted();
    void aPlainDiveLosesNothing();
};

void TestUddf::theGeneratorTellsTheProgram() {
    const Written written(plainDive());
    QCOMPARE(written.broken(), QString());
    QVERIFY(written.bytes.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    QVERIFY(written.bytes.contains("<uddf xmlns=\"http://www.streit.cc/uddf/3.2/\" version=\"3.2.3\">"));
    const Element& generator = written.root["generator"];
    QCOMPARE(namesIn(generator), (QStringList{"name", "type", "version", "datetime"}));
    QCOMPARE(generator["name"].text, QStringLiteral("Benthor"));
    QCOMPARE(generator["type"].text, QStringLiteral("logbook"));
    QCOMPARE(generator["version"].text, QStringLiteral("2.0"));
    QCOMPARE(generator["datetime"].text, QStringLiteral("2026-01-02T03:04:05"));
}

void TestUddf::aFileWithoutDivesIsAFile() {
    const Written written(std::vector<MadeDive>{});
    QCOMPARE(written.broken(), QString());
    QCOMPARE(namesIn(written.root), QStringList{"generator"});
    QCOMPARE(written.report.dives, 0);
}

void TestUddf::everyWaypointHasDepthAndTime() {
    const Written written(plainDive());
    QCOMPARE(written.dive()["samples"].texts("waypoint").size(), 3);
    for (const Element* const point : written.dive()["samples"].all("waypoint")) {
        QVERIFY(point->has("depth") && point->has("divetime"));
    }
    // The first record is sample 4, labelled with four intervals.
    QCOMPARE(waypoint(written, 1)["divetime"].text, QStringLiteral("40"));
    QCOMPARE(waypoint(written, 1)["depth"].text, QStringLiteral("9.38")); // 100 counts of 0.09375 m
    QCOMPARE(waypoint(written, 2)["divetime"].text, QStringLiteral("50"));
    QCOMPARE(waypoint(written, 2)["depth"].text, QStringLiteral("18.75"));
    const Written half(plainDive().set("Interval", "2.5"));
    QCOMPARE(waypoint(half, 2)["divetime"].text, QStringLiteral("12.5"));
}

void TestUddf::theZeroLeadIsOnePoint() {
    const Element lead = waypoint(Written(plainDive()), 0);
    QCOMPARE(namesIn(lead), (QStringList{"depth", "divetime", "switchmix", "divemode"}));
    QCOMPARE(lead["depth"].text, QStringLiteral("0"));
    QCOMPARE(lead["divetime"].text, QStringLiteral("0"));
}

void TestUddf::whatASampleDoesNotRecordIsLeftOut() {
    const Written written(plainDive());
    QCOMPARE(namesIn(waypoint(written, 1)),
             (QStringList{"calculatedpo2", "depth", "divetime", "temperature"}));
    const Written bare(plainDive().records({",100,0,0", ",100,0,0"}));
    QCOMPARE(namesIn(waypoint(bare, 1)), (QStringList{"depth", "divetime"}));
    QVERIFY(!bare.dive()["informationafterdive"].has("lowesttemperature"));
    QVERIFY(!bare.dive()["informationafterdive"].has("highestpo2"));
}

void TestUddf::readingsStandInTheUnitsOfTheFormat() {
    const Written written(plainDive().records({",100,0,70,M0,T20,C6,I130,F129,D180,E205"}));
    QCOMPARE(written.broken(), QString());
    const Element& point = waypoint(written, 1);
    QCOMPARE(point["calculatedpo2"].text, QStringLiteral("70000"));
    QCOMPARE(point["setpo2"].text, QStringLiteral("130000"));
    QCOMPARE(point["setpo2"].attributes["setby"], QStringLiteral("computer"));
    QCOMPARE(point["temperature"].text, QStringLiteral("293.15"));
    QCOMPARE(point["decostop"].attributes,
             (QMap<QString, QString>{{"kind", "mandatory"}, {"decodepth", "6"}, {"duration", "0"}}));
    QCOMPARE(namesIn(point), (QStringList{"decostop", "calculatedpo2", "depth", "divetime", "setpo2",
                                          "tankpressure", "tankpressure", "temperature", "measuredpo2"}));
    QCOMPARE(written.dive()["informationafterdive"]["highestpo2"].text, QStringLiteral("70000"));
}

void TestUddf::aCellOnAWaypointNamesItsSensor() {
    const Written written(plainDive().records({",100,0,70,M0,T20,A1,F129,G131,H8"}));
    const auto cells = waypoint(written, 1).all("measuredpo2");
    QCOMPARE(cells.size(), size_t{3});
    QCOMPARE(cells[0]->attributes["ref"], QStringLiteral("cell-a"));
    QCOMPARE(cells[0]->text, QStringLiteral("129000"));
    QCOMPARE(cells[1]->attributes["ref"], QStringLiteral("cell-b"));
    QCOMPARE(cells[1]->text, QStringLiteral("131000"));
    QCOMPARE(cells[2]->attributes["ref"], QStringLiteral("cell-c"));
    QCOMPARE(cells[2]->text, QStringLiteral("8000"));
    const Element& rebreather = written.root["diver"]["owner"]["equipment"]["rebreather"];
    QCOMPARE(rebreather.all("o2sensor").size(), size_t{3});
    const Written one(plainDive().records({",100,0,70,M0,T20,A1,G131"}));
    QCOMPARE(one.broken(), QString());
    QCOMPARE(one.root["diver"]["owner"]["equipment"]["rebreather"]["o2sensor"].attributes["id"],
             QStringLiteral("cell-b"));
}

void TestUddf::tanksStandWherePressuresAreRecorded() {
    const Written written(plainDive().records(
        {",1,0,70,M0,T20,A1,D200", ",1,0,70,M0,T20,A1,D150,E180", ",1,0,70,M0,T20,A1,E90"}));
    QCOMPARE(written.broken(), QString());
    const auto tanks = written.dive().all("tankdata");
    QCOMPARE(tanks.size(), size_t{2});
    QCOMPARE(refsOf(*tanks[0]), QStringList{"tank-o2"});
    QCOMPARE((*tanks[0])["tankpressurebegin"].text, QStringLiteral("18000000"));
    QCOMPARE((*tanks[0])["tankpressureend"].text, QStringLiteral("9000000"));
    QCOMPARE(refsOf(*tanks[1]), QStringList{"tank-dil"});
    QCOMPARE((*tanks[1])["tankpressurebegin"].text, QStringLiteral("20000000"));
    QCOMPARE((*tanks[1])["tankpressureend"].text, QStringLiteral("15000000"));
    QVERIFY(!tanks[0]->attributes.contains("id"));
    const Element& before = written.dive()["informationbeforedive"];
    QCOMPARE(refsOf(before["equipmentused"]),
             (QStringList{"computer-1", "rebreather", "tank-o2", "tank-dil"}));
    QVERIFY(!Written(plainDive()).dive().has("tankdata"));
    QVERIFY(!Written(plainDive()).root["diver"]["owner"]["equipment"].has("tank"));
}

void TestUddf::temperatureOfZeroIsATemperature() {
    const Written written(
        plainDive().records({",100,0,70,M0,T2,A1", ",100,0,70,M0,T0,A1", ",1,0,70,M0,T-1,A1"}));
    QCOMPARE(waypoint(written, 2)["temperature"].text, QStringLiteral("273.15"));
    QCOMPARE(waypoint(written, 3)["temperature"].text, QStringLiteral("272.15"));
    QCOMPARE(written.dive()["informationafterdive"]["lowesttemperature"].text, QStringLiteral("272.15"));
}

void TestUddf::gasesAreToldAtTheStartAndAtEachChange() {
    const Written written(plainDive().records({",100,1,70", ",100,1,70", ",100,0,70", ",100,1,70"}));
    QStringList switches;
    for (const Element* const point : written.dive()["samples"].all("waypoint")) {
        switches += (*point)["switchmix"].attributes.value("ref", "-");
    }
    QCOMPARE(switches, (QStringList{"mix-D0000001-1", "-", "-", "mix-D0000001-0", "mix-D0000001-1"}));
}

void TestUddf::gasesOfTheDiveStandUnderTheGases() {
    const MadeDive made = MadeDive().gas("79").gas("35", "45", "705").gas("120").gas("60", "60");
    const Written written({made, plainDive("D0000002")});
    QCOMPARE(written.broken(), QString());
    const auto mixes = written.root["gasdefinitions"].all("mix");
    QCOMPARE(mixes.size(), size_t{6});
    QCOMPARE(mixes[0]->attributes["id"], QStringLiteral("mix-D0000001-0"));
    QCOMPARE((*mixes[0])["name"].text, QStringLiteral("Air"));
    QCOMPARE((*mixes[0])["o2"].text, QStringLiteral("0.21"));
    QCOMPARE((*mixes[0])["n2"].text, QStringLiteral("0.79"));
    QCOMPARE((*mixes[0])["he"].text, QStringLiteral("0"));
    QCOMPARE((*mixes[0])["maximumoperationdepth"].text, QStringLiteral("66"));
    QCOMPARE((*mixes[1])["name"].text, QStringLiteral("TX20/45"));
    QCOMPARE((*mixes[1])["he"].text, QStringLiteral("0.45"));
    QCOMPARE((*mixes[1])["maximumoperationdepth"].text, QStringLiteral("70.5"));
    QCOMPARE((*mixes[2])["n2"].text, QStringLiteral("0.79")); // as the dive screen has a row that cannot be
    QVERIFY(!mixes[3]->has("o2"));                            // -20 per cent
    QCOMPARE((*mixes[3])["he"].text, QStringLiteral("0.6"));
    QCOMPARE(mixes[5]->attributes["id"], QStringLiteral("mix-D0000002-1"));
}

void TestUddf::aGasWithoutARowIsNamedAndTold() {
    const Written written(plainDive().records({",1,0,70", ",1,7,70", ",1,99,70", ",1,2.5,70", ",1,-3,70"}));
    QCOMPARE(written.broken(), QString());
    const auto mixes = written.root["gasdefinitions"].all("mix");
    QCOMPARE(mixes.size(), size_t{4});
    QCOMPARE(mixes[2]->attributes["id"], QStringLiteral("mix-D0000001-7"));
    QCOMPARE(namesIn(*mixes[2]), QStringList{"name"});
    QCOMPARE(mixes[3]->attributes["id"], QStringLiteral("mix-D0000001-unknown"));
    QCOMPARE(waypoint(written, 2)["switchmix"].attributes["ref"], QStringLiteral("mix-D0000001-7"));
    QCOMPARE(waypoint(written, 3)["switchmix"].attributes["ref"], QStringLiteral("mix-D0000001-unknown"));
    QVERIFY(!waypoint(written, 4).has("switchmix"));
    QCOMPARE(written.report.musts,
             (QStringList{"D0000001: no row for gas 7; a mix without shares stands for it",
                          "D0000001: a gas number that no gas has; a mix without a number stands for it"}));
}

void TestUddf::theModeFollowsTheSetpoint() {
    const Written written(plainDive().records(
        {",1,0,70,M0,T2,A1,I70", ",1,0,70,M0,T2,A1,I130", ",1,0,70,M0,T2,A1", ",1,0,70,M0,T2,A1,I70"}));
    QStringList modes;
    for (const Element* const point : written.dive()["samples"].all("waypoint")) {
        modes += (*point)["divemode"].attributes.value("type", "-");
    }
    QCOMPARE(modes, (QStringList{"closedcircuit", "-", "-", "opencircuit", "closedcircuit"}));
    QCOMPARE(waypoint(Written(plainDive()), 0)["divemode"].attributes["type"], QStringLiteral("opencircuit"));
}

void TestUddf::alarmsAndMarks() {
    const Written written(
        plainDive().records({",1,0,70,M1,T2,A1,ASCENT,LOW CELL,DECO,PREDIVE", ",1,0,70,M0,T2,A1,ASCENT SLOW",
                             ",1,0,70,M0,T2,A1,N12,", ",1,0,70,M0,T2,A1,Surface"}));
    QCOMPARE(written.broken(), QString());
    QCOMPARE(waypoint(written, 1).texts("alarm"), (QStringList{"ascent", "deco"}));
    QCOMPARE(waypoint(written, 1)["setmarker"].text, QStringLiteral("mark 1; LOW CELL; PREDIVE"));
    QVERIFY(!waypoint(written, 2).has("alarm"));
    QCOMPARE(waypoint(written, 2)["setmarker"].text, QStringLiteral("ASCENT SLOW"));
    QCOMPARE(waypoint(written, 3)["setmarker"].text, QStringLiteral("mark 12"));
    QCOMPARE(waypoint(written, 4).texts("alarm"), QStringList{"surface"});
    QVERIFY(written.lostKinds().contains("alarms without a text")); // behind the last comma
}

void TestUddf::theDeviceAndItsSoftware() {
    const Written written({plainDive(), plainDive("D0000002").set("Suit", "KD00456"), plainDive("D0000003")});
    QCOMPARE(written.broken(), QString());
    const auto computers = written.root["diver"]["owner"]["equipment"].all("divecomputer");
    QCOMPARE(computers.size(), size_t{2});
    QCOMPARE((*computers[0])["name"].text, QStringLiteral("KD3 V3.12"));
    QCOMPARE((*computers[0])["model"].text, QStringLiteral("KD3"));
    QCOMPARE((*computers[0])["serialnumber"].text, QStringLiteral("KD00123"));
    QCOMPARE((*computers[1])["serialnumber"].text, QStringLiteral("KD00456"));
    for (const size_t dive : {size_t{0}, size_t{2}}) {
        QVERIFY(refsOf(written.dive(dive)["informationbeforedive"]["equipmentused"]).contains("computer-1"));
    }
    const Written unknown(
        plainDive().set("Suit", std::nullopt).set("Version", std::nullopt).set("systemid", QString()));
    QCOMPARE(unknown.broken(), QString());
    QVERIFY(!unknown.root["diver"]["owner"]["equipment"].has("divecomputer"));
}

void TestUddf::siteBuddiesAndOwner() {
    const Written written({plainDive().set("site", "Blue Hole").buddy("Anna").buddy("Ben van Dyk").buddy(" "),
                           plainDive("D0000002").set("site", "Blue Hole").buddy("Anna").buddy("Anna")});
    QCOMPARE(written.broken(), QString());
    QCOMPARE(written.root["divesite"].all("site").size(), size_t{1});
    QCOMPARE(written.root["divesite"]["site"]["name"].text, QStringLiteral("Blue Hole"));
    const auto buddies = written.root["diver"].all("buddy");
    QCOMPARE(buddies.size(), size_t{2});
    QCOMPARE((*buddies[0])["personal"]["firstname"].text, QStringLiteral("Anna"));
    QCOMPARE((*buddies[0])["personal"]["lastname"].text, QStringLiteral("-"));
    QCOMPARE((*buddies[1])["personal"]["firstname"].text, QStringLiteral("Ben van"));
    QCOMPARE((*buddies[1])["personal"]["lastname"].text, QStringLiteral("Dyk"));
    QCOMPARE(refsOf(written.dive(0)["informationbeforedive"]), (QStringList{"site-1", "buddy-1", "buddy-2"}));
    QCOMPARE(refsOf(written.dive(1)["informationbeforedive"]), (QStringList{"site-1", "buddy-1"}));
    const Element& owner = written.root["diver"]["owner"]["personal"];
    QCOMPARE(owner["firstname"].text, QStringLiteral("Unknown"));
    QCOMPARE(owner["lastname"].text, QStringLiteral("diver"));
}

void TestUddf::notesAreLines() {
    const Written written(plainDive()
                              .set("divenote", "Cold.\r\n\r\n  A wall \rand <a> cave & more]]>\n")
                              .set("sitenote", "Imageplz0C:\\a.jpg\r\nBuoy\r\n")
                              .set("Coments", "Good"));
    QCOMPARE(written.broken(), QString());
    QCOMPARE(written.dive()["informationafterdive"]["notes"].texts("para"),
             (QStringList{"Cold.", "  A wall ", "and <a> cave & more]]>", "Buoy", "Good"}));
    QVERIFY(written.lostKinds().contains("pictures"));
    QVERIFY(!Written(plainDive().set("divenote", " \r\n")).dive()["informationafterdive"].has("notes"));
}

void TestUddf::whatTheStoreTellsOfTheDive() {
    const Written written(plainDive("D0000042"));
    const Element& dive = written.dive();
    QCOMPARE(dive.attributes["id"], QStringLiteral("d-D0000042"));
    const Element& before = dive["informationbeforedive"];
    QCOMPARE(before["divenumber"].text, QStringLiteral("42"));
    QCOMPARE(before["datetime"].text, QStringLiteral("2004-09-03T10:20:30"));
    QCOMPARE(before["apparatus"].text, QStringLiteral("rebreather"));
    QCOMPARE(before["surfacepressure"].text, QStringLiteral("101300"));
    const Element& after = dive["informationafterdive"];
    QCOMPARE(after["greatestdepth"].text, QStringLiteral("23.4"));
    QCOMPARE(after["diveduration"].text, QStringLiteral("2467"));
    QCOMPARE(after["lowesttemperature"].text, QStringLiteral("291.15"));
    QVERIFY(!Written(plainDive("D0000000")).dive()["informationbeforedive"].has("divenumber"));
    const Written odd(plainDive().set("datmos", "high"));
    QVERIFY(!odd.dive()["informationbeforedive"].has("surfacepressure"));
    QVERIFY(odd.lostKinds().contains("field datmos"));
}

void TestUddf::daysAreGroups() {
    const Written written({plainDive("D0000001").set("startdate", "2004-09-03 10:00:00"),
                           plainDive("D0000002").set("startdate", "2004-09-03 23:59:59"),
                           plainDive("D0000003").set("startdate", "2004-09-04 00:00:00")});
    QCOMPARE(written.broken(), QString());
    const auto groups = written.root["profiledata"].all("repetitiongroup");
    QCOMPARE(groups.size(), size_t{2});
    QCOMPARE(groups[0]->attributes["id"], QStringLiteral("group-2004-09-03"));
    QCOMPARE(groups[0]->all("dive").size(), size_t{2});
    QCOMPARE(groups[1]->attributes["id"], QStringLiteral("group-2004-09-04"));
}

void TestUddf::aDayThatComesAgain() {
    const Written written({plainDive("D0000001").set("startdate", "2004-09-03 10:00:00"),
                           plainDive("D0000002").set("startdate", "2004-09-04 10:00:00"),
                           plainDive("D0000003").set("startdate", "2004-09-03 11:00:00")});
    QCOMPARE(written.broken(), QString());
    QCOMPARE(written.root["profiledata"].all("repetitiongroup").back()->attributes["id"],
             QStringLiteral("group-2004-09-03-2"));
    QCOMPARE(tests::divesOf(written.root).size(), size_t{3});
}

void TestUddf::divesWithoutAStartStandAlone() {
    const Written written({plainDive("D0000001").set("startdate", std::nullopt),
                           plainDive("D0000002").set("startdate", "soon"),
                           plainDive("D0000003").set("startdate", "1991-12-31 10:00:00")});
    QCOMPARE(written.broken(), QString());
    const auto groups = written.root["profiledata"].all("repetitiongroup");
    QCOMPARE(groups.size(), size_t{3});
    for (const size_t group : {size_t{0}, size_t{1}}) {
        QCOMPARE((*groups[group])["dive"]["informationbeforedive"]["datetime"].text,
                 QStringLiteral("1991-12-31T00:00:00"));
    }
    QCOMPARE(written.report.musts, (QStringList{"D0000001: no start; 1991-12-31T00:00:00 stands for it",
                                                "D0000002: no start; 1991-12-31T00:00:00 stands for it"}));
}

void TestUddf::mustsThatADiveLacksAreNamed() {
    const Written written(plainDive().set("MaxDepth", "deep").set("Duration", std::nullopt));
    QCOMPARE(written.broken(), QString());
    QCOMPARE(written.dive()["informationafterdive"]["greatestdepth"].text, QStringLiteral("0"));
    QCOMPARE(written.dive()["informationafterdive"]["diveduration"].text, QStringLiteral("0"));
    QCOMPARE(written.report.musts,
             (QStringList{"D0000001: no depth; 0 stands for it", "D0000001: no duration; 0 stands for it"}));
    const Written below(plainDive().set("MaxDepth", "-3"));
    QCOMPARE(below.broken(), QString());
    QCOMPARE(below.report.musts, QStringList{"D0000001: no depth; 0 stands for it"});
}

void TestUddf::anIntervalThatIsNoneIsReplaced_data() {
    QTest::addColumn<QString>("interval");
    for (const char* const none : {"", "0", "-10", "fast", "1e300", "1e-300", "1e5"}) {
        QTest::newRow(none) << QString::fromLatin1(none);
    }
}

void TestUddf::anIntervalThatIsNoneIsReplaced() {
    QFETCH(QString, interval);
    const Written written(
        plainDive().set("Interval", interval.isEmpty() ? std::nullopt : std::optional(interval)));
    QCOMPARE(written.broken(), QString());
    QCOMPARE(waypoint(written, 2)["divetime"].text, QStringLiteral("50"));
    QCOMPARE(written.report.musts, QStringList{"D0000001: no interval; 10 seconds stand for it"});
}

void TestUddf::aDiveWithoutSamplesGoesOut() {
    const Written written({MadeDive().gas("79"), plainDive("D0000002")});
    QCOMPARE(written.broken(), QString());
    QCOMPARE(namesIn(written.dive(0)), (QStringList{"informationbeforedive", "informationafterdive"}));
    QVERIFY(written.dive(1).has("samples"));
    QCOMPARE(written.report.dives, 2);
    QCOMPARE(written.report.withoutSamples, QStringList{"D0000001: Its file holds no sample."});
    QCOMPARE(Written(MadeDive()).broken(), QString()); // without a gas either
}

void TestUddf::whatIsLostIsCounted() {
    const QByteArrayList records{",1,0,70,M0,T2,A500,B300,C600,O1,P2,Q3,R4,S1,T2,x3,z200,v1,t2,f3",
                                 ",1,0,70,M0,T2,A1"};
    const MadeDive full = plainDive()
                              .records(records)
                              .set("Location", "A name")
                              .set("weather", "Sun")
                              .set("UserName", "another")
                              .set("otu", "12")
                              .set("finisheddate", "2004-09-03 12:00:00");
    const Written written({full, plainDive("D0000002").set("weather", "Rain")});
    QCOMPARE(written.report.lost, (std::map<QString, int>{{"CO2", 1},
                                                          {"battery volts", 1},
                                                          {"extra columns", 1},
                                                          {"field Location", 1},
                                                          {"field UserName", 1},
                                                          {"field finisheddate", 1},
                                                          {"field otu", 1},
                                                          {"field weather", 2},
                                                          {"filter", 2},
                                                          {"gases on or off", 2},
                                                          {"thermistors", 1}}));
}

void TestUddf::aPlainDiveLosesNothing() {
    const Written written(MadeDive().set("Startcode", "400069230").records({",100,0,70,M0,T20,C6,I70,F70"}));
    QCOMPARE(written.lostKinds(), QStringList());
    QCOMPARE(written.report.musts,
             QStringList{"D0000001: no row for gas 0; a mix without shares stands for it"});
}

QTEST_GUILESS_MAIN(TestUddf)
#include "test_uddf.moc"
