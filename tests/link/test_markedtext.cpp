#include "link/markedtext.h"

#include <QtTest>

using benthor::link::MarkedText;

class TestMarkedText : public QObject {
    Q_OBJECT

private slots:
    void aMarkThatArrivesInPiecesIsFoundWhereItBegins() {
        MarkedText text;
        for (const char* piece : {"xxE", "n", "d"}) {
            QCOMPARE(text.find("End"), -1);
            text.append(piece);
        }
        QCOMPARE(text.find("End"), 2);
        text.append("End");
        QCOMPARE(text.find("End"), 2);
    }

    void aMarkAskedForLateIsFoundAtItsFirstPlace() {
        MarkedText text;
        text.append("PPPEnd");
        QVERIFY(text.holds("End"));
        QCOMPARE(text.find("PPP"), 0);
        QCOMPARE(text.find("ppp"), -1);
    }

    void aNewTextForgetsWhatWasFound() {
        MarkedText text;
        text.append("End");
        QVERIFY(text.holds("End"));
        const auto before = text.generation();
        text.clear();
        QVERIFY(!text.holds("End"));
        QVERIFY(text.generation() != before);
        text.append("nd");
        QVERIFY(!text.holds("End"));
    }

    void aFollowerIsTheTextOfItsSourceAtEachTime() {
        MarkedText source;
        MarkedText follower;
        source.append("PP");
        follower.follow(source);
        const auto generation = follower.generation();
        QVERIFY(!follower.holds("PPP"));
        source.append("P");
        follower.follow(source);
        QCOMPARE(follower.bytes(), QByteArray("PPP"));
        QVERIFY(follower.holds("PPP"));
        QCOMPARE(follower.generation(), generation);
        source.clear();
        source.append("Wait..");
        follower.follow(source);
        QCOMPARE(follower.bytes(), QByteArray("Wait.."));
        QVERIFY(!follower.holds("PPP"));
    }

    void aFollowerThatWasWrittenToBeginsAnew() {
        MarkedText source;
        MarkedText follower;
        source.append("abc");
        follower.follow(source);
        follower.append("x");
        source.append("d");
        follower.follow(source);
        QCOMPARE(follower.bytes(), QByteArray("abcd"));
        follower.assign("M");
        follower.follow(source);
        QCOMPARE(follower.bytes(), QByteArray("abcd"));
    }
};

QTEST_APPLESS_MAIN(TestMarkedText)
#include "test_markedtext.moc"
