// How the samples of a dive go on paper.

#include "viewer/samplepages.h"

#include <QtTest>

using namespace benthor::profile;
using namespace benthor::viewer;

class TestSamplePages : public QObject {
    Q_OBJECT

private slots:
    void columnsWithoutANumberAreLeftOut() {
        DiveProfile profile;
        profile.cellb.set(9, 1.3F);
        profile.depthpos.set(9, 12); // has no heading
        profile.co2.set(30, 2);      // behind the last sample
        QCOMPARE(printedColumns(profile, 20), std::vector<int>({0, 1, 2, 13}));
        QCOMPARE(printedColumns(profile, 31), std::vector<int>({0, 1, 2, 13, 16}));
        QCOMPARE(printedColumns(profile, 0), std::vector<int>({0, 1, 2}));
    }

    void sheetsBeginWithTheTimeAndHoldEachColumnOnce() {
        const std::vector<int> columns{0, 1, 2, 3, 5, 7, 8};
        const auto width = [](int column) { return column == 0 ? 50.0 : 30.0; };
        const SamplePages pages = samplePages(columns, width, 10, {120, 100}, 17);
        QCOMPARE(pages.sheets, std::vector<std::vector<int>>({{0, 1, 2}, {0, 3, 5}, {0, 7, 8}}));
        QCOMPARE(pages.rowsOfPage, 8); // ten lines, of which headings and foot take two
        QCOMPARE(pages.blocks(), 3);
        QCOMPARE(pages.pages(), 9);
        QCOMPARE(samplePages(columns, width, 10, {230, 100}, 16).pages(), 2); // all of them fit
    }

    void aColumnWiderThanThePaperHasASheetOfItsOwn() {
        const auto width = [](int column) { return column == 1 ? 500.0 : 30.0; };
        const SamplePages pages = samplePages({0, 1, 2}, width, 10, {100, 100}, 1);
        QCOMPARE(pages.sheets, std::vector<std::vector<int>>({{0, 1}, {0, 2}}));
    }
};

QTEST_APPLESS_MAIN(TestSamplePages)
#include "test_samplepages.moc"
