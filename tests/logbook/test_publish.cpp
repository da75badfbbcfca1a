#include "logbook/publish.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;
using namespace benthor::logbook;

namespace {

QByteArray sheet(const QStringList& headers, const std::vector<QStringList>& rows) {
    QByteArray text = spreadsheetheader(headers);
    for (const QStringList& row : rows) {
        text += spreadsheetrow(row);
    }
    return text;
}

QString sorry() {
    return QStringLiteral("Sorry, could not find dive file.\nThe location name should be the name of the "
                          "file. However, if this has been "
                          "changed, then the software can not automatically find the file.\nPlease try and "
                          "locate manually if you can "
                          "remember what the file name was originally, and send using your email software.");
}

class Folder {
public:
    Folder()
        : folder(directory_.path()) {
        for (const char* const name : {"old", "corrupt", "jpg"}) {
            QDir(directory_.path()).mkdir(QLatin1String(name));
        }
    }
    QString put(const QString& where, const QString& name) const {
        const QString path = folder.path(where, name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("x") != 1) {
            qFatal("no file %s", qPrintable(path));
        }
        return path;
    }

private:
    QTemporaryDir directory_;

public:
    platform::ProgramFolder folder;
};

PublishedDive wreck() {
    return {QStringLiteral("anna@example.org"),
            QStringLiteral("Look at the cells!"),
            {QStringLiteral("DiveID"), QStringLiteral("Duration")},
            {QStringLiteral("D0000001"), QStringLiteral("41mins")},
            QStringLiteral("Wreck1.txt"),
            QStringLiteral("25D54C45Wreck1.txt")};
}

QStringList texts(const QJsonValue& array) {
    QStringList list;
    for (const QJsonValue& one : array.toArray()) {
        list += one.toString(); // a Null cell is empty
    }
    return list;
}

} // namespace

class TestPublish : public QObject {
    Q_OBJECT

private slots:
    void aFolderIsNoFile() {
        const Folder world;
        PublishedDive dive = wreck();
        QVERIFY(QDir(world.folder.path(u"old")).mkdir(dive.location));
        QCOMPARE(publishdive(world.folder, dive).refusal, sorry());
        const QString kept = world.put(QStringLiteral("corrupt"), dive.location);
        QVERIFY(QDir(world.folder.path(u"jpg")).mkdir(QStringLiteral("25D54C45Wreck1.jpg")));
        QCOMPARE(publishdive(world.folder, dive).message.attachments, QStringList{kept});
    }

    void aNameThatLeadsElsewhereIsNoFile() {
        const Folder world;
        PublishedDive dive = wreck();
        dive.location = QStringLiteral("..");
        QCOMPARE(publishdive(world.folder, dive).refusal, sorry());
        dive.location = QStringLiteral("../jpg/photo.jpg");
        world.put(QStringLiteral("jpg"), QStringLiteral("photo.jpg"));
        QCOMPARE(publishdive(world.folder, dive).refusal, sorry());
    }

    void theTextListsTheSummaryOfTheDive() {
        QCOMPARE(publishtext(wreck()), "    This message contains dive attachments.\nLook at the "
                                       "cells!\nThis dive was sent by Benthor. \n"
                                       "DiveID D0000001\nDuration 41mins\n");
    }

    void theMessageGoesWithTheDivesFile() {
        const Folder folder;
        const QString file = folder.put(QStringLiteral("old"), QStringLiteral("Wreck1.txt"));
        folder.put(QStringLiteral("corrupt"), QStringLiteral("Wreck1.txt"));
        const Publication publication = publishdive(folder.folder, wreck());
        QCOMPARE(publication.refusal, "");
        QCOMPARE(publication.message.subject, "Publish My Dive");
        QCOMPARE(publication.message.recipient, "anna@example.org");
        QCOMPARE(publication.message.body, publishtext(wreck()));
        QCOMPARE(publication.message.attachments, QStringList{file});
    }

    void aFileOfTheFolderCorruptIsTakenWhereOldHasNone() {
        const Folder folder;
        const QString file = folder.put(QStringLiteral("corrupt"), QStringLiteral("Wreck1.txt"));
        QCOMPARE(publishdive(folder.folder, wreck()).message.attachments, QStringList{file});
    }

    void picturesFollowUnderTheNameThatTheyAreSavedBy() {
        const Folder folder;
        const QString file = folder.put(QStringLiteral("old"), QStringLiteral("Wreck1.txt"));
        const QString one = folder.put(QStringLiteral("jpg"), QStringLiteral("25D54C45Wreck1.jpg"));
        const QString two = folder.put(QStringLiteral("jpg"), QStringLiteral("25D54C45Wreck1.d.jpg"));
        folder.put(QStringLiteral("jpg"), QStringLiteral("Wreck1.jpg"));
        QCOMPARE(publishdive(folder.folder, wreck()).message.attachments, QStringList({file, one, two}));
    }

    void picturesOfTheDivesNameFollowWhereTheOtherNameHasNone() {
        const Folder folder;
        const QString file = folder.put(QStringLiteral("old"), QStringLiteral("Wreck1.txt"));
        const QString picture = folder.put(QStringLiteral("jpg"), QStringLiteral("Wreck1.jpg"));
        PublishedDive dive = wreck();
        QCOMPARE(publishdive(folder.folder, dive).message.attachments, QStringList({file, picture}));
        dive.dbtxtname.clear();
        QCOMPARE(publishdive(folder.folder, dive).message.attachments, QStringList({file, picture}));
    }

    void aDiveOfAnotherNameIsNotFound_data() {
        QTest::addColumn<QString>("location");
        QTest::newRow("edited") << QStringLiteral("North wall");
        QTest::newRow("empty") << QString();
        QTest::newRow("leads elsewhere") << QStringLiteral("../old/Wreck1.txt");
    }
    void aDiveOfAnotherNameIsNotFound() {
        QFETCH(QString, location);
        const Folder folder;
        folder.put(QStringLiteral("old"), QStringLiteral("Wreck1.txt"));
        PublishedDive dive = wreck();
        dive.location = location;
        const Publication publication = publishdive(folder.folder, dive);
        QCOMPARE(publication.refusal, sorry());
        QCOMPARE(publication.message.attachments, QStringList());
        QCOMPARE(publication.message.subject, "");
    }

    void theSpreadsheetAgreesWithTheVectors() {
        QFile file(QStringLiteral(BENTHOR_TEST_DATA "/exports.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonArray sheets =
            QJsonDocument::fromJson(file.readAll()).object().value(QStringLiteral("list_sheets")).toArray();
        QCOMPARE(sheets.size(), 2);
        for (const QJsonValue& vector : sheets) {
            std::vector<QStringList> rows;
            for (const QJsonValue& row : vector[QStringLiteral("rows")].toArray()) {
                rows.push_back(texts(row));
            }
            const QByteArray expected =
                (texts(vector[QStringLiteral("lines")]).join(QLatin1String("\r\n")) + QLatin1String("\r\n"))
                    .toUtf8();
            QCOMPARE(sheet(texts(vector[QStringLiteral("header")]), rows), expected);
        }
    }

    void aShortListIsWrittenAsItIs() {
        QCOMPARE(sheet({QStringLiteral("DiveID")}, {{QStringLiteral("D1")}}), "DiveID,\r\nD1,\r\n");
        QCOMPARE(sheet({}, {}), "\r\n");
    }
};

QTEST_GUILESS_MAIN(TestPublish)
#include "test_publish.moc"
