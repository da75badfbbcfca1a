// Every screen in every face has room for what it shows: at the smallest size, on larger displays, with a
// large font and on dense displays. Each set of faces is a process of its own, as the house is the process's.

#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/application.h"
#include "shell/house.h"
#include "tests/fit/fitcheck.h"
#include "tests/pictures/faces.h"
#include "tests/support/scripteddialogs.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QMap>
#include <QMenu>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;

namespace {

/// Notes what is wrong with each face; a fault that many faces share is told once, with the first of them.
class FittingAlbum final : public tests::Album {
public:
    using Album::add;

    void add(QWidget* window, const QString& name, const QList<QSize>& sizes) override {
        if (qobject_cast<QMenu*>(window) != nullptr) {
            return;
        }
        ++faces_;
        for (const QSize& size : sizes) {
            QList<QSize> all{size};
            if (size == QSize(1024, 700)) {
                all += QSize(1366, 728);
            }
            for (const QSize& one : all) {
                look(window, name, one);
            }
        }
    }

    QString file(const QString& name) const override { return folder_.filePath(name); }

    int faces() const { return faces_; }
    QStringList cut() const { return cut_.values(); }
    QStringList outside() const { return outside_.values(); }
    QStringList overlapping() const { return overlapping_.values(); }
    QStringList larger() const { return larger_.values(); }

private:
    void look(QWidget* window, const QString& name, const QSize& size) {
        for (int step = 0; size.isValid() && step < 2; ++step) {
            window->resize(size);
            tests::settle();
        }
        tests::settle();
        const QString face =
            QStringLiteral("%1 at %2x%3").arg(name).arg(window->width()).arg(window->height());
        if (size.isValid() && (window->width() > size.width() || window->height() > size.height())) {
            note(larger_, face,
                 {QStringLiteral("%1 takes more than %2x%3")
                      .arg(window->objectName())
                      .arg(size.width())
                      .arg(size.height())});
        }
        note(cut_, face, tests::cutTexts(window));
        note(outside_, face, tests::controlsOutside(window));
        note(overlapping_, face, tests::overlaps(window));
    }

    static void note(QMap<QString, QString>& all, const QString& face, const QStringList& faults) {
        for (const QString& fault : faults) {
            if (!all.contains(fault)) {
                all.insert(fault, QStringLiteral("%1: %2").arg(face, fault));
            }
        }
    }

    QTemporaryDir folder_;
    int faces_ = 0;
    QMap<QString, QString> cut_, outside_, overlapping_, larger_;
};

/// One line each: together they would be more than a message takes.
bool isFaultless(const QStringList& faults) {
    for (const QString& fault : faults) {
        qWarning("%s", qPrintable(fault));
    }
    return faults.isEmpty();
}

} // namespace

class TestFit : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFaceWasLookedAt();
    void noScreenTakesMoreThanTheSmallestDisplay();
    void noTextIsCut();
    void noControlLiesOutside();
    void nothingOverlaps();

private:
    QTemporaryDir folder_;
    FittingAlbum album_;
};

void TestFit::initTestCase() {
    QVERIFY(folder_.isValid());
    const QDir files(QStringLiteral(BENTHOR_FOLDER_FILES));
    for (const QString& name : files.entryList(QDir::Files)) {
        QVERIFY(QFile::copy(files.filePath(name), folder_.filePath(name)));
    }
    for (const char* part : {"new", "old", "corrupt", "dbtxt", "jpg", "Reprog", "ports"}) {
        QVERIFY(QDir(folder_.path()).mkpath(QLatin1String(part)));
    }
    QCOMPARE(QProcess::execute(QStringLiteral(BENTHOR_MAKEDEMO), {folder_.path()}), 0);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       folder_.filePath(QStringLiteral("settings")));
    platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder_.path()));

    tests::ScriptedDialogs dialogs;
    const QByteArray faces = BENTHOR_FACES;
    if (faces == "locked") {
        tests::takeLockedStore(album_);
    } else if (faces == "older") {
        tests::takeOlderStore(album_);
    } else {
        shell::House house;
        house.start();
        tests::settle();
        tests::takeAll(album_, dialogs);
    }
}

/// The numbers are those of the album: a face that is left out would be proved by nothing.
void TestFit::everyFaceWasLookedAt() {
    const QByteArray faces = BENTHOR_FACES;
    QVERIFY2(album_.faces() >= (faces == "all" ? 55 : 2), qPrintable(QString::number(album_.faces())));
}

void TestFit::noScreenTakesMoreThanTheSmallestDisplay() {
    QVERIFY(isFaultless(album_.larger()));
}

void TestFit::noTextIsCut() {
    QVERIFY(isFaultless(album_.cut()));
}

void TestFit::noControlLiesOutside() {
    QVERIFY(isFaultless(album_.outside()));
}

void TestFit::nothingOverlaps() {
    QVERIFY(isFaultless(album_.overlapping()));
}

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false"));
    if (const int points = qEnvironmentVariableIntValue("BENTHOR_TEST_POINTS"); points > 0) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    look::apply(application);
    TestFit test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_fit.moc"
