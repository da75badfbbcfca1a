#include "logbook/details.h"
#include "tests/support/killed.h"
#include "tests/support/programfixture.h"

using namespace benthor;
using namespace benthor::logbook;
using platform::StoreError;
using tests::ProgramFixture;

namespace {

QString dive() {
    return QStringLiteral("D0000007");
}

void addDive(const std::vector<std::pair<QString, platform::Value>>& fields = {}) {
    platform::Recordset rows = process().database.openForAdding("main");
    rows.addNew();
    rows.set(u"DiveID", dive());
    for (const auto& [field, value] : fields) {
        rows.set(field, value);
    }
    rows.update();
}

/// A dive with a value in every field.
void addFullDive() {
    addDive({{QStringLiteral("UserName"), "KD00123"},
             {QStringLiteral("Department"), "Club"},
             {QStringLiteral("site"), "Harbour mole"},
             {QStringLiteral("Location"), "Wreck1.txt"},
             {QStringLiteral("weather"), "Sunny"},
             {QStringLiteral("startdate"), "2017-09-27 01:21:18"},
             {QStringLiteral("finisheddate"), "2017-09-27 02:02:25"},
             {QStringLiteral("Duration"), "41:7"},
             {QStringLiteral("MaxDepth"), "12.300"},
             {QStringLiteral("Suit"), "KD00123"},
             {QStringLiteral("divenote"), "one\r\ntwo"},
             {QStringLiteral("sitenote"), "calm\r\nImageplz1/home/anna/b.jpg\r\n"},
             {QStringLiteral("Coments"), "none"},
             {QStringLiteral("Version"), "V3.12"},
             {QStringLiteral("Interval"), "10"},
             {QStringLiteral("otu"), "148"},
             {QStringLiteral("datmos"), "1013"},
             {QStringLiteral("dusage"), "5400"}});
}

DiveDetails load(QStringView unit = u"metre") {
    return loaddetails(process().database, dive(), unit);
}

QStringList save(const DiverAdds& diver) {
    return savedetails(process().database, store::identifydive(process().database, dive()), diver).refused;
}

DiverAdds edits() {
    return {QStringLiteral("Anna"), QStringLiteral("Expedition"),
            QStringLiteral("Reef"), QStringLiteral("North wall"),
            QStringLiteral("Fog"),  QStringLiteral("dry"),
            QStringLiteral("a\nb"), QStringLiteral("deep"),
            QStringLiteral("good"), {QStringLiteral("Bo"), QStringLiteral("Cy")}};
}

} // namespace

class TestDetails : public QObject {
    Q_OBJECT

private slots:
    void theDiveIsShownAsTheDeviceSaidIt();
    void inFeetTheDepthIsInFeet_data();
    void inFeetTheDepthIsInFeet();
    void nullsAreBlank();
    void aDiveThatIsNotThereIsAnError();
    void anEmptyNoteComesWithItsHeadings();
    void picksAreReadFromTheirTables();

    void allOfItIsSaved();
    void newValuesJoinThePickListsOnce();
    void emptyValuesJoinNoList();
    void buddiesAreWrittenAnewInTheirOrder();
    void theSameBuddyTwiceHasTwoRowsAndIsOfferedOnce();
    void aSingleQuoteIsKeptInTheDivesOwnRows();
    void whatTheStoreRefusesLeavesAllAsItWas();
    void aDiskThatFailsAtAnyStepLeavesAllAsItWas();
    void killedAtAnyStepTheDiveIsAsBeforeOrAsSaved();

    void picturesAreFoundBehindTheirMarkers();
    void aPictureIsAppendedInItsLine();
    void anOlderPicturesLineIsCutOut();
};

void TestDetails::theDiveIsShownAsTheDeviceSaidIt() {
    const ProgramFixture program;
    addFullDive();
    const DiveDetails details = load();
    QCOMPARE(details.device.diveid, "D0000007");
    QCOMPARE(details.device.divedate, "27/09/2017 01:21:18");
    QCOMPARE(details.device.timeup, "27/09/2017 02:02:25");
    QCOMPARE(details.device.duration, "41:7");
    QCOMPARE(details.device.maxdepth, "12.300");
    QCOMPARE(details.device.depthcaption, "metres");
    QCOMPARE(details.device.interval, "10");
    QCOMPARE(details.device.version, "V3.12");
    QCOMPARE(details.device.otu, "148");
    QCOMPARE(details.device.atmos, "1013");
    QCOMPARE(details.device.dusage, "5400");
    QCOMPARE(details.diver.username, "KD00123");
    QCOMPARE(details.diver.department, "Club");
    QCOMPARE(details.diver.site, "Harbour mole");
    QCOMPARE(details.diver.location, "Wreck1.txt");
    QCOMPARE(details.diver.weather, "Sunny");
    QCOMPARE(details.diver.suit, "KD00123");
    QCOMPARE(details.diver.divenote, "one\ntwo");
    QCOMPARE(details.diver.sitenote, "calm\nImageplz1/home/anna/b.jpg\n");
    QCOMPARE(details.diver.comments, "none");
}

void TestDetails::inFeetTheDepthIsInFeet_data() {
    QTest::addColumn<QString>("metres");
    QTest::addColumn<QString>("feet");
    QTest::newRow("12.3 m") << "12.300"
                            << "40.35"; // 40.354332
    QTest::newRow("0.1 m") << "0.1"
                           << ".33"; // 0.328084: no digit before the point is called for
    QTest::newRow("nothing") << ""
                             << ".00";
}

void TestDetails::inFeetTheDepthIsInFeet() {
    QFETCH(QString, metres);
    QFETCH(QString, feet);
    const ProgramFixture program;
    addDive({{QStringLiteral("MaxDepth"), metres}});
    QCOMPARE(load(u"Feet").device.maxdepth, feet);
    QCOMPARE(load(u"Feet").device.depthcaption, "Feet");
}

void TestDetails::nullsAreBlank() {
    const ProgramFixture program;
    addDive();
    const DiveDetails details = load();
    QCOMPARE(details.device.divedate, "");
    QCOMPARE(details.device.maxdepth, "");
    QCOMPARE(details.device.dusage, "");
    QCOMPARE(details.diver.site, "");
    QCOMPARE(details.diver.buddies, QStringList());
}

void TestDetails::aDiveThatIsNotThereIsAnError() {
    const ProgramFixture program;
    QVERIFY_EXCEPTION_THROWN(load(), StoreError);
    QVERIFY_EXCEPTION_THROWN(save(edits()), StoreError);
    QCOMPARE(ProgramFixture::rows("SELECT * FROM site"), QStringList());
}

void TestDetails::anEmptyNoteComesWithItsHeadings() {
    const ProgramFixture program;
    addDive();
    QCOMPARE(load().diver.divenote,
             "Dive Type:\n\nSea "
             "condition:\n\nSuit:\n\nWeight:\n\nLatititude:\n\nLongitude:\n\nBottomType:\n\nRescue "
             "Diver:\n\nDive Marshall/Supervisor:\n\n  ");
}

void TestDetails::picksAreReadFromTheirTables() {
    const ProgramFixture program;
    for (const char* const sql :
         {"INSERT INTO department VALUES ('Club'), ('Expedition')", "INSERT INTO site VALUES ('Reef')",
          "INSERT INTO weather VALUES ('Fog'), ('Sun')", "INSERT INTO buddy VALUES ('Bo')"}) {
        process().database.execute(sql);
    }
    const PickLists lists = loadpicklists(process().database);
    QCOMPARE(lists.departments, QStringList({"Club", "Expedition"}));
    QCOMPARE(lists.sites, QStringList{"Reef"});
    QCOMPARE(lists.weathers, QStringList({"Fog", "Sun"}));
    QCOMPARE(lists.buddies, QStringList{"Bo"});
}

void TestDetails::allOfItIsSaved() {
    const ProgramFixture program;
    addFullDive();
    QCOMPARE(save(edits()), QStringList());
    QCOMPARE(load().diver, edits());
    QCOMPARE(ProgramFixture::rows(
                 "SELECT UserName, department, site, Location, weather, Suit, divenote, sitenote, "
                 "Coments, MaxDepth FROM main"),
             QStringList{"Anna|Expedition|Reef|North wall|Fog|dry|a\r\nb|deep|good|12.300"});
}

void TestDetails::newValuesJoinThePickListsOnce() {
    const ProgramFixture program;
    addDive();
    process().database.execute("INSERT INTO weather VALUES ('FOG')");
    save(edits());
    save(edits());
    QCOMPARE(ProgramFixture::rows("SELECT * FROM department"), QStringList{"Expedition"});
    QCOMPARE(ProgramFixture::rows("SELECT * FROM site"), QStringList{"Reef"});
    QCOMPARE(ProgramFixture::rows("SELECT * FROM weather"), QStringList{"FOG"});
    QCOMPARE(ProgramFixture::rows("SELECT * FROM buddy"), QStringList({"Bo", "Cy"}));
}

void TestDetails::emptyValuesJoinNoList() {
    const ProgramFixture program;
    addDive();
    save({});
    for (const char* const query : {"SELECT * FROM department", "SELECT * FROM site", "SELECT * FROM weather",
                                    "SELECT * FROM buddy", "SELECT * FROM buddylist"}) {
        QCOMPARE(ProgramFixture::rows(query), QStringList());
    }
}

void TestDetails::buddiesAreWrittenAnewInTheirOrder() {
    const ProgramFixture program;
    addDive();
    process().database.execute("INSERT INTO buddylist VALUES ('D0000008', 'Eve')");
    DiverAdds diver = edits();
    save(diver);
    diver.buddies = {QStringLiteral("Cy"), QStringLiteral("Ann"), QStringLiteral("Bo")};
    save(diver);
    QCOMPARE(load().diver.buddies, diver.buddies);
    QCOMPARE(ProgramFixture::rows("SELECT * FROM buddylist ORDER BY rowid"),
             QStringList({"D0000008|Eve", "D0000007|Cy", "D0000007|Ann", "D0000007|Bo"}));
    diver.buddies.clear();
    save(diver);
    QCOMPARE(ProgramFixture::rows("SELECT * FROM buddylist"), QStringList{"D0000008|Eve"});
    QCOMPARE(ProgramFixture::rows("SELECT * FROM buddy"), QStringList({"Bo", "Cy", "Ann"})); // never emptied
}

void TestDetails::theSameBuddyTwiceHasTwoRowsAndIsOfferedOnce() {
    const ProgramFixture program;
    addDive();
    DiverAdds diver;
    diver.buddies = {QStringLiteral("Bo"), QStringLiteral("Bo")};
    save(diver);
    QCOMPARE(ProgramFixture::rows("SELECT * FROM buddylist"), QStringList({"D0000007|Bo", "D0000007|Bo"}));
    QCOMPARE(ProgramFixture::rows("SELECT * FROM buddy"), QStringList{"Bo"});
}

void TestDetails::aSingleQuoteIsKeptInTheDivesOwnRows() {
    const ProgramFixture program;
    addDive();
    DiverAdds diver = edits();
    diver.department = QStringLiteral("O'Hara's");
    diver.buddies = {QStringLiteral("D'Arcy"), QStringLiteral("Bo"), QStringLiteral("D'Arcy")};
    QCOMPARE(save(diver), QStringList({"O'Hara's", "D'Arcy"}));
    QCOMPARE(load().diver, diver);
    QCOMPARE(ProgramFixture::rows("SELECT * FROM department"), QStringList());
    QCOMPARE(ProgramFixture::rows("SELECT * FROM site"), QStringList{"Reef"}); // the steps behind go on
    QCOMPARE(ProgramFixture::rows("SELECT * FROM buddy"), QStringList{"Bo"});
}

void TestDetails::whatTheStoreRefusesLeavesAllAsItWas() {
    const ProgramFixture program;
    addFullDive();
    const DiverAdds before = load().diver;
    DiverAdds diver = edits();
    diver.suit = QString(51, QLatin1Char('s'));
    QVERIFY_EXCEPTION_THROWN(save(diver), StoreError);
    QCOMPARE(load().diver, before);
    QCOMPARE(ProgramFixture::rows("SELECT * FROM site"), QStringList());
}

void TestDetails::aDiskThatFailsAtAnyStepLeavesAllAsItWas() {
    int failures = 0;
    bool reached = true;
    for (int step = 1; reached; ++step) {
        const ProgramFixture program;
        addFullDive();
        const DiverAdds before = load().diver;
        int count = 0;
        bool failed = false;
        {
            const platform::FaultInjection fault([&](std::string_view) { return ++count == step ? EIO : 0; });
            try {
                save(edits());
            } catch (const StoreError&) {
                failed = true;
                ++failures;
            }
        }
        reached = count >= step;
        QCOMPARE(load().diver, failed ? before : edits());
        QCOMPARE(ProgramFixture::rows("SELECT * FROM buddylist").size(), failed ? 0 : 2);
    }
    QVERIFY(failures >= 2);
}

void TestDetails::killedAtAnyStepTheDiveIsAsBeforeOrAsSaved() {
    int step = 1;
    int asBefore = 0;
    for (;; ++step) {
        const ProgramFixture program;
        addFullDive();
        const DiverAdds before = load().diver;
        process().database.close();
        const bool killed = tests::isKilledAt(step, [&] {
            program.openStore();
            save(edits());
        });
        program.openStore();
        const DiverAdds now = load().diver;
        QVERIFY(now == before || now == edits());
        asBefore += now == before ? 1 : 0;
        QCOMPARE(ProgramFixture::rows("SELECT * FROM buddylist").size(), now == before ? 0 : 2);
        QCOMPARE(ProgramFixture::rows("SELECT DiveID FROM main"), QStringList{"D0000007"});
        save(edits());
        QCOMPARE(load().diver, edits());
        if (!killed) {
            QCOMPARE(now, edits());
            break;
        }
    }
    QVERIFY(step > 2);
    QVERIFY(asBefore > 0);
}

void TestDetails::picturesAreFoundBehindTheirMarkers() {
    const auto paths = picturepaths(
        QStringLiteral("calm water\nImageplz2C:\\dives\\c.jpg\r\nImageplz0/home/a b.jpg\nand more"));
    QCOMPARE(paths[0], "/home/a b.jpg");
    QCOMPARE(paths[1], "");
    QCOMPARE(paths[2], "C:\\dives\\c.jpg");
    QCOMPARE(picturepaths(QStringLiteral("Imageplz1/at/the/end.jpg"))[1], "/at/the/end.jpg");
    QCOMPARE(picturepaths(QString())[0], "");
}

void TestDetails::aPictureIsAppendedInItsLine() {
    QCOMPARE(withpicture(QString(), 0, QStringLiteral("/a.jpg")), "Imageplz0/a.jpg\n");
    QCOMPARE(withpicture(QStringLiteral("calm\n"), 1, QStringLiteral("/b.jpg")), "calm\nImageplz1/b.jpg\n");
    QCOMPARE(withpicture(QStringLiteral("calm"), 1, QStringLiteral("/b.jpg")), "calm\nImageplz1/b.jpg\n");
}

void TestDetails::anOlderPicturesLineIsCutOut() {
    QCOMPARE(withpicture(QStringLiteral("calm\nImageplz0/old.jpg\nfish\n"), 0, QStringLiteral("/new.jpg")),
             "calm\nfish\nImageplz0/new.jpg\n");
    QCOMPARE(withpicture(QStringLiteral("Imageplz0/old.jpg"), 0, QStringLiteral("/new.jpg")),
             "Imageplz0/new.jpg\n");
    QCOMPARE(withpicture(QStringLiteral("Imageplz0/a.jpg\nImageplz1/b.jpg\n"), 0, QStringLiteral("/c.jpg")),
             "Imageplz1/b.jpg\nImageplz0/c.jpg\n");
}

QTEST_GUILESS_MAIN(TestDetails)
#include "test_details.moc"
