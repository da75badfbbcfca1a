#include "platform/usersettings.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using benthor::platform::UserSettings;

class TestUserSettings : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path()); }

    void valuesComeBack() {
        UserSettings settings;
        QCOMPARE(settings.number("Options", "count", 7), 7);
        settings.setNumber("Options", "count", -3);
        settings.setText("Options", "word", QStringLiteral("a; \"b\" = c"));
        settings.setRectangle("Windows", "main", QRect(-5, 6, 700, 800));
        QCOMPARE(settings.number("Options", "count", 7), -3);
        QCOMPARE(settings.text("Options", "word"), QStringLiteral("a; \"b\" = c"));
        QCOMPARE(settings.rectangle("Windows", "main"), QRect(-5, 6, 700, 800));
        QVERIFY(settings.rectangle("Windows", "other").isNull());
    }

    /// Every window keeps its place when it closes: that is not to wait for the disk each time.
    void whatStandsThereIsNotWrittenAgain() {
        UserSettings settings;
        settings.setNumber("Options", "zero", 0);
        settings.setText("Options", "nothing", QString());
        settings.setRectangle("Windows", "main", QRect(1, 2, 30, 40));
        QFile file(folder_.filePath("Benthor/Benthor.ini"));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QByteArray written = file.readAll();
        QVERIFY(written.contains("zero=0") && written.contains("nothing="));
        QVERIFY(file.seek(0));
        file.write("; the file that was\n" + written); // a comment does not outlive a writing
        file.close();
        const auto isSame = [&] {
            return file.open(QIODevice::ReadOnly) && takeAll(file).startsWith("; the");
        };
        settings.setNumber("Options", "zero", 0);
        settings.setText("Options", "nothing", QString());
        settings.setRectangle("Windows", "main", QRect(1, 2, 30, 40));
        QVERIFY(isSame());
        settings.setRectangle("Windows", "main", QRect(1, 2, 30, 41));
        QVERIFY(!isSame());
        QCOMPARE(settings.rectangle("Windows", "main"), QRect(1, 2, 30, 41));
    }

    /// What another copy of the program wrote meanwhile counts.
    void anothersValueIsReplaced() {
        UserSettings settings;
        settings.setNumber("Options", "shared", 1);
        {
            QSettings other(folder_.filePath("Benthor/Benthor.ini"), QSettings::IniFormat);
            other.setValue("Options/shared", 2);
        }
        settings.setNumber("Options", "shared", 1);
        QCOMPARE(settings.number("Options", "shared", 0), 1);
    }

    /// A value of another kind is no reason to leave ours out.
    void aDamagedValueIsReplaced() {
        UserSettings settings;
        settings.setText("Options", "mixed", QStringLiteral("no number"));
        QCOMPARE(settings.number("Options", "mixed", 5), 0);
        settings.setNumber("Options", "mixed", 4);
        QCOMPARE(settings.number("Options", "mixed", 5), 4);
    }

private:
    static QByteArray takeAll(QFile& file) {
        const QByteArray all = file.readAll();
        file.close();
        return all;
    }

    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(TestUserSettings)
#include "test_usersettings.moc"
