#include "tests/logbook/listworld.h"

#include "platform/look/look.h"
#include "platform/look/widgets/segmentedchoice.h"

#include <QAction>
#include <QHeaderView>
#include <QMenuBar>
#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

class TestRbmainFill : public QObject {
    Q_OBJECT

private slots:
    void columnsStandInTheToldOrderWithTheirHeaders();
    void columnsHaveTheirToldWidths();
    void gridFontHas8Points();
    void cellsShowUnits();
    void nullIsAnEmptyCell();
    void feetGiveWholeFeet();
    void nonNumericDepthInFeetIsShownAsItStands();
    void bothDatesAreShownWithTheNameOfTheMonth();
    void stripShowsTheFirstDive();
    void faultyRowIsRedAndItsFileGoesToCorrupt();
    void faultyDiveStaysRedAtEachFillAndItsFileLandsInCorruptAgain();
    void faultyDiveDownloadedAgainIsPlain();
    void failingCopyIsIgnored();
    void lastFaultOfTheFillStandsInTheFrame();
    void firstRowIsBlueEvenWhenItIsFaulty();
    void signsTellChosenAndFaultyRows();
    void sortByDepthGoesByTheText();
    void paddedDepthsOfLikeLengthSortRight();
    void sortEntriesSetTheKeyAndFillAfresh_data();
    void sortEntriesSetTheKeyAndFillAfresh();
    void clickOnASortableHeaderSorts_data();
    void clickOnASortableHeaderSorts();
    void clickOnAnotherHeaderChangesNothing();
    void segmentsShowAndSetTheOrder();
    void fillKeepsTheDiveInHand();
    void quoteInAnIdentifierIsAFaultOfThatDive();
    void fillThatFindsNoDivesLeavesAnEmptyGrid();
    void longListIsPaintedWhileItIsChecked();
    void fillEndsWhenTheListIsUnloaded();
    void theGridTellsWhenItIsFilled();
    void cellsGrowWithTheDesktopsFont();
    void theFirstRowsCanBeSeenBeforeTheRestIsRead();
    void aWindowThatIsClosedEndsTheFill();
    void aListThatIsLoadedHiddenShowsNothing();
    void textsOfASavedDiveAreTakenAndTheChoiceStays();
    void aSavedTextThatIsLongerFindsItsRoom();
};

namespace {

const QString kGasFault = QStringLiteral("\rGas Profile - Error in Gas Type2 format !");

void addFaultyDive(int number, const Fields& fields = {}) {
    ListWorld::addDive(diveNumber(number), fields);
    ListWorld::addGas(diveNumber(number), QStringLiteral("7900"));
}

} // namespace

void TestRbmainFill::columnsStandInTheToldOrderWithTheirHeaders() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QStringList headers;
    for (int col = 0; col < world.grid().cols(); ++col) {
        headers += world.grid().text(0, col);
    }
    // Field positions 0, 8, 9, 6, 4, 3, 22, 1, 2, 5, 7, 10 and on without 22.
    QCOMPARE(headers,
             QStringLiteral("DiveID,Duration,MaxDepth,startdate,Dive Name,site,Usage hours,User Name,"
                            "Department,weather,finisheddate,S\\N,Startcode,Dive Notes,Site Notes,"
                            "Comments,Version,Interval,OTU,systemid,reserve1,reserve2,Atmospheric,"
                            "Stack Use,descend,HPCylinder,dbtxtname")
                 .split(u','));
}

void TestRbmainFill::columnsHaveTheirToldWidths() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QList<int> widths;
    for (int col = 0; col < world.grid().cols(); ++col) {
        widths += world.grid().columnWidthTwips(col);
    }
    QCOMPARE(widths,
             (QList<int>{900,  900,  900,  2000, 2500, 2000, 900, 2000, 2000, 2000, 2000, 2000, 0,   1100,
                         1100, 1100, 1100, 1100, 1100, 0,    0,   0,    1100, 1100, 1100, 1100, 1100}));
    QVERIFY(world.grid().isColumnHidden(12));
    QVERIFY(world.grid().isColumnHidden(19));
}

void TestRbmainFill::gridFontHas8Points() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QCOMPARE(world.grid().font().pointSizeF(), 8.0);
}

void TestRbmainFill::cellsShowUnits() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QCOMPARE(world.grid().text(1, 1), QStringLiteral("41mins"));
    QCOMPARE(world.grid().text(1, 2), QStringLiteral("22m"));
    QCOMPARE(world.grid().text(1, 4), QStringLiteral("Dive01.txt"));
    QCOMPARE(world.grid().text(1, 6), QStringLiteral("5mins")); // 4.5 goes away from zero
    QCOMPARE(world.grid().text(1, 17), QStringLiteral("10secs"));
    QCOMPARE(world.grid().text(1, 18), QStringLiteral("148"));
    QCOMPARE(world.grid().text(1, 22), QStringLiteral("1013mBar"));
}

void TestRbmainFill::nullIsAnEmptyCell() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("datmos"), QStringLiteral("(null)")},
                                       {QStringLiteral("site"), QStringLiteral("(null)")}});
    QCOMPARE(world.grid().text(1, 22), QString());
    QCOMPARE(world.grid().text(1, 5), QString());
}

void TestRbmainFill::feetGiveWholeFeet() {
    ListWorld world;
    process().depthunit = QStringLiteral("Feet");
    ListWorld::addDive(diveNumber(1)); // 22.300 m are 73.16 ft
    QCOMPARE(world.grid().text(1, 2), QStringLiteral("73ft"));
    QCOMPARE(world.labelText("txtmaxdepth"), QStringLiteral("73ft"));
}

void TestRbmainFill::nonNumericDepthInFeetIsShownAsItStands() {
    ListWorld world;
    process().depthunit = QStringLiteral("Feet");
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("MaxDepth"), QStringLiteral("deep")}});
    QCOMPARE(world.grid().text(1, 2), QStringLiteral("deep"));
}

void TestRbmainFill::bothDatesAreShownWithTheNameOfTheMonth() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QCOMPARE(world.grid().text(1, 3), QStringLiteral("Jul/27/2017 09:50:02"));
    QCOMPARE(world.grid().text(1, 10), QStringLiteral("Jul/27/2017 10:31:09"));
}

void TestRbmainFill::stripShowsTheFirstDive() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(1));
    QCOMPARE(world.labelText("txtduration"), QStringLiteral("41mins"));
    QCOMPARE(world.labelText("txtmaxdepth"), QStringLiteral("22m"));
    QCOMPARE(world.labelText("txttimedown"), QStringLiteral("Jul/27/2017 09:50:02"));
    QCOMPARE(world.labelText("txtlocation"), QStringLiteral("Dive01.txt"));
    QCOMPARE(world.labelText("txtstackhour"), QStringLiteral("5mins"));
    QCOMPARE(world.labelText("txtinterval"), QStringLiteral("10secs"));
    QCOMPARE(world.labelText("txtotu"), QStringLiteral("148"));
    QCOMPARE(world.labelText("txtatmospheric"), QStringLiteral("1013mBar"));
}

void TestRbmainFill::faultyRowIsRedAndItsFileGoesToCorrupt() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    addFaultyDive(2);
    world.put(u"old", QStringLiteral("Dive02.txt"), "what came in");
    QVERIFY(world.isRow(2, platform::kToldRed));
    QVERIFY(!world.grid().foreColour(2, 0).isValid());
    QCOMPARE(world.bytesOf(u"corrupt", QStringLiteral("Dive02.txt")), QByteArray("what came in"));
    QCOMPARE(world.bytesOf(u"old", QStringLiteral("Dive02.txt")), QByteArray("what came in"));
    QVERIFY(!world.control<QWidget>("Frame2")->isHidden());
    QCOMPARE(world.labelText("Label16"), kGasFault);
}

void TestRbmainFill::faultyDiveStaysRedAtEachFillAndItsFileLandsInCorruptAgain() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    addFaultyDive(2);
    world.put(u"old", QStringLiteral("Dive02.txt"), "what came in");
    for (int round = 0; round < 2; ++round) {
        world.list.get().filldivelist();
        QVERIFY(world.isRow(2, platform::kToldRed));
        QVERIFY(QFile::remove(world.folder.path(u"corrupt", u"Dive02.txt")));
    }
}

void TestRbmainFill::faultyDiveDownloadedAgainIsPlain() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    addFaultyDive(2);
    QVERIFY(world.isRow(2, platform::kToldRed));
    process().database.execute("DELETE FROM gas WHERE GasN2 = '7900'");
    world.list.get().filldivelist();
    QVERIFY(!world.grid().backColour(2, 0).isValid());
}

void TestRbmainFill::failingCopyIsIgnored() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    addFaultyDive(2); // no file of its name in old
    addFaultyDive(3, {{QStringLiteral("Location"), QStringLiteral("../rb.mdb")}});
    addFaultyDive(4, {{QStringLiteral("Location"), QStringLiteral("(null)")}});
    for (int row = 2; row <= 4; ++row) {
        QVERIFY(world.isRow(row, platform::kToldRed));
    }
    QCOMPARE(world.folder.listFiles(QStringLiteral("corrupt"), QStringLiteral("*")), QStringList());
    QVERIFY(world.dialogs.messages().isEmpty());
}

void TestRbmainFill::lastFaultOfTheFillStandsInTheFrame() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    addFaultyDive(2);
    ListWorld::addDive(diveNumber(3), {{QStringLiteral("Interval"), QStringLiteral("x")}});
    QCOMPARE(world.labelText("Label16"),
             QStringLiteral("\rMain Profile - Error in interval number format !"));
    QVERIFY(world.control<QWidget>("Frame2")->findChild<QLabel*>()->text().contains(
        QStringLiteral("D0000003 and 1 more cannot be read whole")));
}

void TestRbmainFill::firstRowIsBlueEvenWhenItIsFaulty() {
    ListWorld world;
    addFaultyDive(1);
    ListWorld::addDive(diveNumber(2));
    QCOMPARE(world.blueRows(), QList<int>{1});
    QVERIFY(!world.control<QWidget>("Frame2")->isHidden());
}

void TestRbmainFill::signsTellChosenAndFaultyRows() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    addFaultyDive(2);
    ListWorld::addDive(diveNumber(3));
    const auto& cells = world.grid().cells();
    QCOMPARE(cells.sign(1).name, QStringLiteral("Chosen dive"));
    QVERIFY(!cells.sign(1).icon.isNull());
    QCOMPARE(cells.sign(2).name, QStringLiteral("Cannot be read whole: download it again"));
    QVERIFY(!cells.sign(2).icon.isNull());
    QVERIFY(cells.sign(3).icon.isNull());
}

void TestRbmainFill::sortByDepthGoesByTheText() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("MaxDepth"), QStringLiteral("9.500")}});
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("MaxDepth"), QStringLiteral("12.300")}});
    world.trigger("mnusmd");
    QCOMPARE(world.column(0), (QStringList{diveNumber(2), diveNumber(1)}));
}

void TestRbmainFill::paddedDepthsOfLikeLengthSortRight() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("MaxDepth"), QStringLiteral("45.100")}});
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("MaxDepth"), QStringLiteral("12.300")}});
    ListWorld::addDive(diveNumber(3), {{QStringLiteral("MaxDepth"), QStringLiteral("30.000")}});
    world.trigger("mnusmd");
    QCOMPARE(world.column(2),
             (QStringList{QStringLiteral("12m"), QStringLiteral("30m"), QStringLiteral("45m")}));
}

void TestRbmainFill::sortEntriesSetTheKeyAndFillAfresh_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<int>("column");
    QTest::newRow("date") << "mnusdate" << QByteArray("d\r\n") << 3;
    QTest::newRow("name") << "mnuslocation" << QByteArray("l\r\n") << 4;
    QTest::newRow("depth") << "mnusmd" << QByteArray("m\r\n") << 2;
    QTest::newRow("site") << "mnussite" << QByteArray("s\r\n") << 5;
}

void TestRbmainFill::sortEntriesSetTheKeyAndFillAfresh() {
    QFETCH(QString, entry);
    QFETCH(QByteArray, key);
    QFETCH(int, column);
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QCOMPARE(world.grid().rows(), 2);
    ListWorld::addDive(diveNumber(2));
    world.trigger(entry.toLatin1().constData());
    QCOMPARE(world.grid().rows(), 3);
    QCOMPARE(world.grid().sortColumn(), column);
    QVERIFY(world.grid().sortAscending());
    world.list.unload();
    QCOMPARE(world.bytesOf(u"", QStringLiteral("dsort.txt")), key);
}

void TestRbmainFill::clickOnASortableHeaderSorts_data() {
    sortEntriesSetTheKeyAndFillAfresh_data();
}

void TestRbmainFill::clickOnASortableHeaderSorts() {
    QFETCH(QByteArray, key);
    QFETCH(int, column);
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    world.show();
    auto* headings = world.grid().horizontalHeader();
    QTest::mouseClick(headings->viewport(), Qt::LeftButton, {},
                      QPoint(headings->sectionViewportPosition(column) + 20, 10));
    QCOMPARE(world.grid().sortColumn(), column);
    world.list.unload();
    QCOMPARE(world.bytesOf(u"", QStringLiteral("dsort.txt")), key);
}

void TestRbmainFill::clickOnAnotherHeaderChangesNothing() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    world.trigger("mnusdate");
    world.show();
    auto* headings = world.grid().horizontalHeader();
    QTest::mouseClick(headings->viewport(), Qt::LeftButton, {},
                      QPoint(headings->sectionViewportPosition(1) + 20, 10));
    QCOMPARE(world.grid().sortColumn(), 3);
}

void TestRbmainFill::segmentsShowAndSetTheOrder() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("site"), QStringLiteral("B")}});
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("site"), QStringLiteral("A")}});
    world.show();
    auto* choice = world.list.get().findChild<look::SegmentedChoice*>();
    world.trigger("mnusdate");
    QCOMPARE(choice->current(), 3);
    QTest::mouseClick(choice->button(4), Qt::LeftButton);
    QCOMPARE(choice->current(), 4);
    QVERIFY(world.control<QAction>("mnussite")->isChecked());
    QVERIFY(!world.control<QAction>("mnusdate")->isChecked());
    QCOMPARE(world.column(0), (QStringList{diveNumber(2), diveNumber(1)}));
}

void TestRbmainFill::fillKeepsTheDiveInHand() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addDive(diveNumber(2));
    process().currentdiveid = diveNumber(1);
    world.list.get().filldivelist();
    QCOMPARE(process().currentdiveid, diveNumber(1));
}

void TestRbmainFill::quoteInAnIdentifierIsAFaultOfThatDive() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addRow(process().database, "main", {{QStringLiteral("DiveID"), QStringLiteral("Dx'00002")}});
    ListWorld::addDive(diveNumber(3));
    QCOMPARE(world.grid().text(3, 0), QStringLiteral("Dx'00002"));
    QVERIFY(world.isRow(3, platform::kToldRed));
    QVERIFY(!world.isRow(2, platform::kToldRed));
    QVERIFY(!world.control<QWidget>("Frame2")->isHidden());
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 3);
}

void TestRbmainFill::fillThatFindsNoDivesLeavesAnEmptyGrid() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QCOMPARE(world.grid().rows(), 2);
    process().database.execute("DELETE FROM main");
    world.list.get().filldivelist();
    QCOMPARE(world.grid().rows(), 1);
    QCOMPARE(world.labelText("txtdiveid"), QString());
    QVERIFY(world.control<platform::TickTimer>("Timer3")->isEnabled());
}

namespace {

/// So many good dives that checking them takes long enough to be painted in between.
void addManyDives(int count) {
    platform::Transaction together(process().database);
    for (int number = 1; number <= count; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    together.commit();
}

QLabel* quietLine(ListWorld& world) {
    return world.control<QLabel>("quietline");
}

/// Notes what the quiet line says when it is painted.
class PaintWatch : public QObject {
public:
    QStringList said;
    std::function<void()> act;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            const QString text = static_cast<QLabel*>(watched)->text();
            if (!text.isEmpty()) {
                said += text;
                if (act) {
                    std::exchange(act, {})();
                }
            }
        }
        return false;
    }
};

constexpr int kManyDives = 10000;

} // namespace

void TestRbmainFill::longListIsPaintedWhileItIsChecked() {
    ListWorld world;
    addManyDives(kManyDives);
    world.show();
    PaintWatch watch;
    quietLine(world)->installEventFilter(&watch);
    bool ticked = false;
    platform::TickTimer tick(QStringLiteral("tick"), 1, platform::TickTimer::Start::Enabled, nullptr);
    connect(&tick, &platform::TickTimer::tick, this, [&] { ticked = true; });
    world.list.get().filldivelist();
    QVERIFY(!watch.said.isEmpty());
    QVERIFY(watch.said.constFirst().startsWith(QStringLiteral("Checking dive ")));
    QVERIFY(watch.said.constFirst().endsWith(QStringLiteral(" of %1").arg(kManyDives)));
    QVERIFY(!ticked);
    QCOMPARE(quietLine(world)->text(), QString());
    QCOMPARE(world.blueRows(), QList<int>{1});
}

void TestRbmainFill::fillEndsWhenTheListIsUnloaded() {
    ListWorld world;
    addManyDives(kManyDives);
    world.show();
    PaintWatch watch;
    watch.act = [&world] { world.list.unload(); };
    quietLine(world)->installEventFilter(&watch);
    QPointer<logbook::rbmain> list = &world.list.get();
    list->filldivelist();
    QCOMPARE(watch.said.size(), 1);
    QVERIFY(!world.list.isLoaded());
    QTRY_VERIFY(list.isNull());
}

namespace {

/// Does something at each painting of the list's rows while the list comes up.
class RowsWatch : public QObject {
public:
    explicit RowsWatch(std::function<void(platform::FlexGrid& grid)> painted)
        : painted_(std::move(painted)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* grid = qobject_cast<platform::FlexGrid*>(watched->parent());
        if (event->type() == QEvent::Paint && grid != nullptr && watched == grid->viewport()) {
            painted_(*grid);
        }
        return false;
    }

private:
    std::function<void(platform::FlexGrid& grid)> painted_;
};

} // namespace

void TestRbmainFill::theGridTellsWhenItIsFilled() {
    ListWorld world;
    addManyDives(kManyDives);
    QList<bool> told;
    const RowsWatch watch([&told](platform::FlexGrid& grid) { told += grid.property("filled").toBool(); });
    world.list.show();
    QVERIFY(world.grid().property("filled").toBool());
    QVERIFY(!told.isEmpty());
    QVERIFY(!told.first());
    QVERIFY(std::is_sorted(told.begin(), told.end())); // once filled it stays so
    process().database.execute("DELETE FROM main");
    world.list.get().filldivelist();
    QVERIFY(world.grid().property("filled").toBool());
}

void TestRbmainFill::cellsGrowWithTheDesktopsFont() {
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(14);
    QApplication::setFont(large);
    look::apply(*qApp);
    const auto back = qScopeGuard([&before] {
        QApplication::setFont(before);
        look::apply(*qApp);
    });
    QVERIFY(look::fontScale() > 1.2);
    ListWorld world;
    addManyDives(3);
    world.list.show();
    QCOMPARE(world.grid().font().pointSizeF(), 8 * look::fontScale());
    QVERIFY(world.grid().rowHeight(1) > 28);
}

void TestRbmainFill::theFirstRowsCanBeSeenBeforeTheRestIsRead() {
    ListWorld world;
    addManyDives(kManyDives);
    QStringList first;
    QStringList last;
    const RowsWatch watch([&](platform::FlexGrid& grid) {
        first += grid.text(1, 0);
        last += grid.text(kManyDives, 0);
        QCOMPARE(grid.rows(), kManyDives + 1);
    });
    world.list.show();
    QVERIFY(!first.isEmpty());
    QVERIFY(!first.contains(QString()));
    QCOMPARE(last.first(), QString());
    QCOMPARE(world.grid().text(kManyDives, 0), diveNumber(kManyDives));
}

void TestRbmainFill::aWindowThatIsClosedEndsTheFill() {
    ListWorld world;
    addManyDives(kManyDives);
    int painted = 0;
    bool filled = false;
    const RowsWatch watch([&](platform::FlexGrid& grid) {
        filled = filled || grid.property("filled").toBool();
        if (++painted == 1) { // as a window manager asks for it
            QMetaObject::invokeMethod(
                grid.window(), [window = grid.window()] { window->close(); }, Qt::QueuedConnection);
        }
    });
    world.list.show();
    QVERIFY(!world.list.isLoaded());
    QVERIFY(!filled);
    QVERIFY(painted <= 2);
    QVERIFY(!platform::Screen::anyAtWork());
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), kManyDives);
    process().database.execute("DELETE FROM main WHERE DiveID = 'D0000001'"); // nothing holds the store
}

void TestRbmainFill::aListThatIsLoadedHiddenShowsNothing() {
    ListWorld world;
    addManyDives(200);
    int painted = 0;
    const RowsWatch watch([&painted](platform::FlexGrid&) { ++painted; });
    QCOMPARE(world.grid().rows(), 201);
    QVERIFY(!world.list.isVisible());
    QCOMPARE(painted, 0);
}

void TestRbmainFill::textsOfASavedDiveAreTakenAndTheChoiceStays() {
    ListWorld world;
    addManyDives(3);
    world.list.get().chooseDive(diveNumber(2));
    process().database.execute("UPDATE main SET Location = 'Wreck ' || rowid");
    world.list.get().takeTextsOf(diveNumber(2));
    QCOMPARE(world.column(4), (QStringList{QStringLiteral("Dive01.txt"), QStringLiteral("Wreck 2"),
                                           QStringLiteral("Dive03.txt")}));
    QCOMPARE(world.labelText("txtlocation"), QStringLiteral("Wreck 2"));
    QCOMPARE(world.blueRows(), QList<int>{2});
}

void TestRbmainFill::aSavedTextThatIsLongerFindsItsRoom() {
    ListWorld world;
    addManyDives(3);
    world.show();
    QCoreApplication::processEvents();
    const int before = world.grid().columnWidth(4);
    process().database.execute("UPDATE main SET Location = 'A wreck with quite a name' WHERE rowid = 2");
    world.list.get().takeTextsOf(diveNumber(2));
    QTRY_VERIFY(world.grid().columnWidth(4) > before);
    const QFontMetrics metrics(world.grid().cellFont(4));
    QVERIFY(world.grid().columnWidth(4) >= metrics.horizontalAdvance("A wreck with quite a name"));
}

QTEST_MAIN(TestRbmainFill)
#include "test_rbmain_fill.moc"
