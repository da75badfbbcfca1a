// What was typed and could not be stored: the text of it beside the store.

#include "logbook/unsaveddetails.h"
#include "platform/files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;
using namespace benthor::logbook;

namespace {

store::DiveIdentity dive(const QString& diveid) {
    return {diveid, platform::Value(QStringLiteral("812345678")),
            platform::Value(QStringLiteral("11A2B3Ca.txt")), 7};
}

DiverAdds typed() {
    return {QStringLiteral("Anna"),
            QStringLiteral("Club"),
            QStringLiteral("Reef"),
            QStringLiteral("a.txt"),
            QStringLiteral("Fog"),
            QStringLiteral("KD1"),
            QStringLiteral("two\nlines"),
            QStringLiteral("Imageplz0/home/anna/one.jpg"),
            QString::fromUtf8("Gro\xc3\x9f"),
            {QStringLiteral("Bo"), QStringLiteral("Eve")}};
}

} // namespace

class TestUnsavedDetails : public QObject {
    Q_OBJECT

private slots:
    void theTextHoldsAllThatWasTyped();
    void aTextNeverTakesTheNameOfAnother();
    void anIdentifierThatIsNoNameLeadsNowhereElse();
    void whereNothingCanBeWrittenThereIsNoName();
    void theLineNamesTheFirst();
};

void TestUnsavedDetails::theTextHoldsAllThatWasTyped() {
    const QTemporaryDir directory;
    const platform::ProgramFolder folder(directory.path());
    const QString name =
        writeunsaved(folder, dive(QStringLiteral("D0000001")), typed(), QStringLiteral("It is locked."));
    QCOMPARE(name, "unsaved-D0000001.txt");
    const QString text = QString::fromUtf8(platform::readFile(folder.path(name)).value_or(""));
    for (const char* const words :
         {"D0000001", "It is locked.", "812345678", "11A2B3Ca.txt", "Dive name:\na.txt\n",
          "User Name:\nAnna\n", "Department:\nClub\n", "Site:\nReef\n", "Weather:\nFog\n", "S\\N:\nKD1\n",
          "Buddies:\nBo\nEve\n", "Dive Notes:\ntwo\nlines\n", "Site Notes:\nImageplz0/home/anna/one.jpg\n",
          "Comments:\nGro\xc3\x9f\n"}) {
        QVERIFY2(text.contains(QString::fromUtf8(words)), words);
    }
}

void TestUnsavedDetails::aTextNeverTakesTheNameOfAnother() {
    const QTemporaryDir directory;
    const platform::ProgramFolder folder(directory.path());
    QVERIFY(platform::writeFileWhole(folder.path(u"unsaved-D0000001.txt"), "of an earlier session"));
    QVERIFY(QFile::link(folder.path(u"nowhere"), folder.path(u"unsaved-D0000001-2.txt")));
    QCOMPARE(writeunsaved(folder, dive(QStringLiteral("D0000001")), typed(), QString()),
             "unsaved-D0000001-3.txt");
    QCOMPARE(platform::readFile(folder.path(u"unsaved-D0000001.txt")).value_or(""), "of an earlier session");
    QVERIFY(!QFile::exists(folder.path(u"nowhere")));
    QCOMPARE(unsavednames(folder), QStringList({"unsaved-D0000001-3.txt", "unsaved-D0000001.txt"}));
}

void TestUnsavedDetails::anIdentifierThatIsNoNameLeadsNowhereElse() {
    const QTemporaryDir directory;
    QVERIFY(QDir().mkpath(directory.path() + QStringLiteral("/in/unsaved-..")));
    const platform::ProgramFolder folder(directory.path() + QStringLiteral("/in"));
    QCOMPARE(writeunsaved(folder, dive(QStringLiteral("../../D1")), typed(), QString()), "unsaved-dive.txt");
    QCOMPARE(unsavednames(folder), QStringList("unsaved-dive.txt"));
}

void TestUnsavedDetails::whereNothingCanBeWrittenThereIsNoName() {
    const QTemporaryDir directory;
    const platform::ProgramFolder folder(directory.path() + QStringLiteral("/missing"));
    QCOMPARE(writeunsaved(folder, dive(QStringLiteral("D0000001")), typed(), QString()), QString());
    QCOMPARE(unsavednames(folder), QStringList());
}

void TestUnsavedDetails::theLineNamesTheFirst() {
    QCOMPARE(unsavedline({}), QString());
    QVERIFY(unsavedline({QStringLiteral("one.txt")}).contains(QLatin1String("\"one.txt\"")));
    QVERIFY(unsavedline({QStringLiteral("one.txt"), QStringLiteral("two.txt"), QStringLiteral("3.txt")})
                .endsWith(QLatin1String(", others in 2 more.")));
}

QTEST_GUILESS_MAIN(TestUnsavedDetails)
#include "test_unsaveddetails.moc"
