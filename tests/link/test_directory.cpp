#include "link/console.h"
#include "link/directory.h"
#include "session/process.h"
#include "tests/link/fakehost.h"
#include "tests/link/vectors.h"
#include "tests/support/testfolder.h"

#include <QJsonArray>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;

namespace {

const QString kExpected = QStringLiteral("directory/expected.json");

/// A cell as the vectors have it: without the carriage return that an unfiltered value ends in.
QString shown(const QString& cell) {
    return cell.endsWith(QLatin1Char('\r')) ? cell.chopped(1) : cell;
}

struct Stage {
    Stage() {
        host.line.open = true;
        resetgridheader(link);
    }
    void receive(const QByteArray& bytes) { link.rxbuf.append(bytes); }
    void walk(const QByteArray& text) {
        link.Mgrid.rows.resize(1);
        link.Text4.assign(text);
        parsedirectory(link);
    }
    QString cell(std::size_t row, std::size_t col) { return shown(link.Mgrid.rows.at(row).cells.at(col)); }

    LinkState link;
    FakeHost host;
};

void putIntoStore(const QString& code, int number) {
    process().database.execute(platform::sqlWith("INSERT INTO main (DiveID, Startcode) VALUES ('",
                                                 QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0')),
                                                 "', '", code, "')"));
}

RowMark markOf(const QJsonValue& colour) {
    const QString word = colour.toString();
    return word == QLatin1String("yellow") ? RowMark::Stored
           : word == QLatin1String("blue") ? RowMark::Selected
                                           : RowMark::None;
}

} // namespace

class TestDirectory : public QObject {
    Q_OBJECT

private slots:
    void init() { process() = Process(); }

    void theWalkAgreesWithTheVectors_data() {
        QTest::addColumn<QJsonArray>("walks");
        for (const auto& each : vectors(kExpected)[QLatin1String("cases")].toArray()) {
            QTest::newRow(each[QLatin1String("about")].toString().toUtf8())
                << each[QLatin1String("walks")].toArray();
        }
    }

    void theWalkAgreesWithTheVectors() {
        QFETCH(QJsonArray, walks);
        Stage stage;
        for (const auto& each : walks) {
            const QByteArray text =
                testData(QStringLiteral("directory/") + each[QLatin1String("file")].toString());
            QCOMPARE(text.contains("End"), each[QLatin1String("holds_end")].toBool());
            if (!text.contains("End")) {
                continue;
            }
            stage.walk(text);
            const QJsonArray rows = each[QLatin1String("rows")].toArray();
            QCOMPARE(stage.link.Mgrid.rowCount() - 1, static_cast<int>(rows.size()));
            for (qsizetype row = 0; row < rows.size(); ++row) {
                for (qsizetype col = 0; col < DirectoryRow::columns; ++col) {
                    const QJsonValue expected = rows[row][col];
                    if (!expected.isNull()) {
                        QCOMPARE(stage.cell(static_cast<std::size_t>(row) + 1, static_cast<std::size_t>(col)),
                                 expected.toString());
                    }
                }
            }
        }
    }

    void theTickAgreesWithTheVectorsOnWhatIsAskedNext_data() { theWalkAgreesWithTheVectors_data(); }

    void theTickAgreesWithTheVectorsOnWhatIsAskedNext() {
        QFETCH(QJsonArray, walks);
        const auto first = walks.first();
        const TestFolder folder;
        process().database.open(folder.path("rb.mdb"));
        Stage stage;
        stage.receive(testData(QStringLiteral("directory/") + first[QLatin1String("file")].toString()));
        Timer2_tick(stage.link, stage.host);
        const bool read = first[QLatin1String("holds_end")].toBool();
        const bool third = first[QLatin1String("third_version")].toBool();
        QCOMPARE(stage.host.line.sent, read && !third ? QByteArray("H") : QByteArray());
        QCOMPARE(stage.link.Timer2, !read || !third);
        QCOMPARE(stage.link.Mgrid.rowCount() - 1,
                 read ? static_cast<int>(first[QLatin1String("rows")].toArray().size()) : 0);
        process().database.close();
    }

    void unfilteredCellsKeepTheirCarriageReturn() {
        Stage stage;
        stage.walk("verMaxD ......034.20\r\nHPCylinder ......0200  \r\nEnd");
        QCOMPARE(stage.link.Mgrid.rows[1].cells[6], "034.20\r");
        QCOMPARE(stage.link.Mgrid.rows[1].cells[10], "0200  \r");
    }

    void aWalkThatEndsInTheMiddleOfAValueStops() {
        Stage stage;
        for (const char* text : {"verStart", "verStart ......4", "verRecint=", "verMaxD ......1\r"}) {
            stage.walk(text);
            QCOMPARE(stage.link.Mgrid.rowCount(), 2);
        }
        QCOMPARE(stage.cell(1, 6), "1");
    }

    void theHeadersStandAsTold() {
        Stage stage;
        const QJsonArray headers = vectors(kExpected)[QLatin1String("headers")].toArray();
        for (std::size_t col = 0; col < DirectoryRow::columns; ++col) {
            QCOMPARE(stage.link.Mgrid.rows[0].cells[col], headers[static_cast<qsizetype>(col)].toString());
        }
        stage.walk("MaxD ......034.20\r\nEnd");
        QCOMPARE(stage.link.Mgrid.rows[0].cells[6], "MaxDepth");
    }

    void endThatArrivesInTwoChunksIsSeenAtTheNextTick() {
        const TestFolder folder;
        process().database.open(folder.path("rb.mdb"));
        Stage stage;
        stage.receive("ver=V2.31\r\nE");
        Timer2_tick(stage.link, stage.host);
        QCOMPARE(stage.link.Mgrid.rowCount(), 1);
        stage.receive("nd");
        Timer2_tick(stage.link, stage.host);
        QCOMPARE(stage.link.Mgrid.rowCount(), 2);
        QVERIFY(stage.link.rxbuf.isEmpty());
        QVERIFY(stage.link.Text4.isEmpty());
        QVERIFY(!stage.host.hourglass);
        process().database.close();
    }

    void silenceChangesNothing() {
        Stage stage;
        for (int tick = 0; tick < 500; ++tick) {
            Timer2_tick(stage.link, stage.host);
        }
        QVERIFY(stage.link.Timer2);
        QCOMPARE(stage.link.Mgrid.rowCount(), 1);
        QVERIFY(stage.host.line.sent.isEmpty());
    }

    void aVersionMarkAtTheVeryBeginningDoesNotCount() {
        const TestFolder folder;
        process().database.open(folder.path("rb.mdb"));
        Stage stage;
        stage.receive("V3.12End");
        Timer2_tick(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("H"));
        process().database.close();
    }

    void theSetupGoesToItsReceiversAndTheIntervalIsAskedFor() {
        Stage stage;
        stage.link.AFLabel3.text = QStringLiteral("Command Sent..");
        stage.receive("A079 000 0660 1 ... X");
        Timer2_tick(stage.link, stage.host);
        QVERIFY(stage.link.Timer2);
        stage.receive("1 Y1 Z");
        Timer2_tick(stage.link, stage.host);
        QVERIFY(!stage.link.Timer2);
        QCOMPARE(stage.host.setups, QByteArrayList{"A079 000 0660 1 ... X1 Y1 Z"});
        QCOMPARE(stage.link.console.Text7, "A079 000 0660 1 ... X1 Y1 Z");
        QCOMPARE(stage.host.line.sent, QByteArray("R"));
        QCOMPARE(stage.link.console.option, kChoiceIntervalGet);
        QVERIFY(stage.link.rxbuf.isEmpty());
        QVERIFY(stage.link.Text4.isEmpty());
    }

    void aRequestForTheSetupThatTheLineDoesNotTakeIsTold() {
        Stage stage;
        stage.host.line.takes = 0;
        stage.link.rxbuf.append("ver=V2.31\rEnd");
        Timer2_tick(stage.link, stage.host);
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(stage.host.messages[0].startsWith("The request for the setup was not sent whole: "));
        QVERIFY(stage.link.owessetup);
    }

    void fromADirectoryOnTheSetupIsOwedUntilItComes() {
        for (const char* const version : {"V2.31", "V3.10"}) {
            Stage stage;
            QVERIFY(!stage.link.owessetup);
            stage.link.rxbuf.append(QByteArray("ver=") + version + "\rEnd");
            Timer2_tick(stage.link, stage.host);
            QVERIFY(stage.link.owessetup);
            QCOMPARE(stage.link.hidessetup, version == QByteArray("V3.10"));
            if (!stage.link.hidessetup) {
                stage.link.rxbuf.append("A079 000 0400 1 Y");
                Timer2_tick(stage.link, stage.host);
                QVERIFY(!stage.link.owessetup);
            }
        }
    }

    void aSetupWithoutAirInGasNullIsNotRecognised() {
        Stage stage;
        stage.receive("A068 000 0660 1 Y1 Z");
        Timer2_tick(stage.link, stage.host);
        QVERIFY(stage.link.Timer2);
        QVERIFY(stage.host.setups.isEmpty());
    }

    void refreshClearsTheDirectoryAndAsksWithASingleLetter() {
        Stage stage;
        stage.walk("verver");
        stage.link.console.option = kChoiceUserId;
        preparecommand(stage.link); // its prefix and trailer must not travel along
        stage.link.Timer2 = false;
        stage.link.console.filenameshown = QStringLiteral("a.bmt");
        cmdstore_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("M"));
        QCOMPARE(stage.host.line.polls, 0);
        QCOMPARE(stage.link.Mgrid.rowCount(), 1);
        QCOMPARE(stage.link.Mgrid.cols, 12);
        QCOMPARE(stage.link.Mgrid.rows[0].cells[0], "Dive No");
        QCOMPARE(stage.link.console.option, 3);
        QVERIFY(!stage.link.console.Command2.visible);
        QVERIFY(!stage.link.console.Text5.visible);
        QCOMPARE(stage.link.console.filenameshown, "");
        QVERIFY(stage.link.Timer2);
        QCOMPARE(stage.link.AFLabel3.text, "Checking..");
    }

    void theStacksValueOutlivesARefresh() {
        Stage stage;
        stage.walk("verDStack ......12\r\nEnd");
        cmdstore_click(stage.link, stage.host);
        stage.walk("verDStack ......7\r\nEnd");
        QCOMPARE(stage.cell(1, 10), "12\r7");
    }

    void storedDivesAreYellowAsTheVectorsSay_data() {
        QTest::addColumn<QJsonObject>("vector");
        int number = 0;
        for (const auto& each : vectors(kExpected)[QLatin1String("yellow_marks")].toArray()) {
            QTest::addRow("%d", number++) << each.toObject();
        }
    }

    void storedDivesAreYellowAsTheVectorsSay() {
        QFETCH(QJsonObject, vector);
        const TestFolder folder;
        process().database.open(folder.path("rb.mdb"));
        int number = 0;
        for (const auto& code : vector[QLatin1String("in_store")].toArray()) {
            putIntoStore(code.toString(), ++number);
        }
        Stage stage;
        for (const auto& code : vector[QLatin1String("start_codes")].toArray()) {
            stage.link.Mgrid.rows.emplace_back().cells[1] = code.toString();
        }
        markstoreddives(stage.link);
        QJsonArray yellow;
        for (int row = 1; row < stage.link.Mgrid.rowCount(); ++row) {
            if (stage.link.Mgrid.rows[static_cast<std::size_t>(row)].mark == RowMark::Stored) {
                yellow.append(row);
            }
        }
        QCOMPARE(yellow, vector[QLatin1String("yellow_rows")].toArray());
        process().database.close();
    }

    void anUnreachableStoreEndsTheMarkingWithoutAMessage() {
        Stage stage;
        stage.link.Mgrid.rows.resize(3);
        markstoreddives(stage.link);
        QCOMPARE(stage.link.Mgrid.rows[1].mark, RowMark::None);
        QVERIFY(stage.host.messages.isEmpty());
    }

    void theMouseAgreesWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("vector");
        for (const auto& each : vectors(kExpected)[QLatin1String("mouse")].toArray()) {
            QTest::newRow(each[QLatin1String("about")].toString().toUtf8()) << each.toObject();
        }
    }

    void theMouseAgreesWithTheVectors() {
        QFETCH(QJsonObject, vector);
        Stage stage;
        const QJsonArray before = vector[QLatin1String("before")].toArray();
        stage.link.Mgrid.rows.resize(static_cast<std::size_t>(before.size()));
        for (qsizetype row = 0; row < before.size(); ++row) {
            stage.link.Mgrid.rows[static_cast<std::size_t>(row)].mark = markOf(before[row]);
        }
        process().servedrow = vector[QLatin1String("servedrow")].toInt();
        Mgrid_mouseup(stage.link, vector[QLatin1String("Row")].toInt(),
                      vector[QLatin1String("RowSel")].toInt(), vector[QLatin1String("shift")].toInt());
        const QJsonArray after = vector[QLatin1String("after")].toArray();
        for (qsizetype row = 0; row < after.size(); ++row) {
            QCOMPARE(stage.link.Mgrid.rows[static_cast<std::size_t>(row)].mark, markOf(after[row]));
        }
    }

    void aShiftClickPaintsTheSameRowsInBothDirections() {
        for (const auto& [row, rowsel] : {std::pair(2, 4), std::pair(4, 2)}) {
            Stage stage;
            stage.link.Mgrid.rows.resize(6);
            process().servedrow = row;
            Mgrid_mouseup(stage.link, row, rowsel, 1);
            for (int at = 1; at < 6; ++at) {
                QCOMPARE(stage.link.Mgrid.rows[static_cast<std::size_t>(at)].mark,
                         at >= 2 && at <= 4 ? RowMark::Selected : RowMark::None);
            }
        }
    }

    void aRowCanBeAddedByControlOnlyAndAPlainClickMovesTheCell() {
        Stage stage;
        stage.link.Mgrid.rows.resize(4);
        process().servedrow = 2;
        Mgrid_mouseup(stage.link, 2, 2, 0);
        QCOMPARE(stage.link.Mgrid.row, 2);
        QCOMPARE(stage.link.Mgrid.col, 1);
        Mgrid_mouseup(stage.link, 3, 3, 8 | 2); // bits beyond the low three do not count
        QCOMPARE(stage.link.Mgrid.rows[2].mark, RowMark::Selected);
        QCOMPARE(stage.link.Mgrid.rows[3].mark, RowMark::Selected);
    }
};

QTEST_APPLESS_MAIN(TestDirectory)
#include "test_directory.moc"
