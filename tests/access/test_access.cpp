// Every screen in every face, as those meet it who work by keyboard or by ear. Each set of faces is a process
// of its own, as the house is the process's.

#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/application.h"
#include "shell/house.h"
#include "tests/access/facecheck.h"
#include "tests/pictures/faces.h"
#include "tests/support/scripteddialogs.h"

#include <QAccessible>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QMap>
#include <QMenu>
#include <QProcess>
#include <QSet>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;

namespace {

/// Notes what is wrong with each face; a fault that many faces share is told once, with the first of them.
class CheckingAlbum final : public tests::Album {
public:
    using Album::add;

    void add(QWidget* window, const QString& name, const QList<QSize>& sizes) override {
        ++faces_;
        for (const QSize& size : sizes) {
            for (int step = 0; size.isValid() && step < 2; ++step) {
                window->resize(size);
                tests::settle();
            }
            note(readers_, name, tests::faultsForReaders(window));
            if (window->isVisible() && QApplication::activeModalWidget() == nullptr) {
                note(focus_, name, tests::faultsOfFocus(window));
            }
            if (qobject_cast<QMenu*>(window) == nullptr) {
                note(mnemonics_, name, tests::clashingMnemonics(window));
                note(tabs_, name, tests::faultsOfTabOrder(window));
            }
        }
        const QByteArray shown = qgetenv("BENTHOR_SHOW_FACE");
        if (QString::fromLocal8Bit(shown).split(u',').contains(name)) {
            qInfo("%s", qPrintable(name + u'\n' + tests::readersTree(window)));
            for (const QWidget* stop : tests::tabRound(window)) {
                qInfo("  tab: %s", qPrintable(tests::tell(stop)));
            }
        }
    }

    QString file(const QString& name) const override { return folder_.filePath(name); }

    int faces() const { return faces_; }
    QStringList readers() const { return readers_.values(); }
    QStringList mnemonics() const { return mnemonics_.values(); }
    QStringList tabs() const { return tabs_.values(); }
    QStringList focus() const { return focus_.values(); }

private:
    static void note(QMap<QString, QString>& all, const QString& face, const QStringList& faults) {
        for (const QString& fault : faults) {
            if (!all.contains(fault)) {
                all.insert(fault, QStringLiteral("%1: %2").arg(face, fault));
            }
        }
    }

    QTemporaryDir folder_;
    int faces_ = 0;
    QMap<QString, QString> readers_;
    QMap<QString, QString> mnemonics_;
    QMap<QString, QString> tabs_;
    QMap<QString, QString> focus_;
};

/// One line each: together they would be more than a message takes.
bool isFaultless(const QStringList& faults) {
    for (const QString& fault : faults) {
        qWarning("%s", qPrintable(fault));
    }
    return faults.isEmpty();
}

} // namespace

class TestAccess : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFaceWasLookedAt();
    void whatActsIsMetWithRoleNameAndAct();
    void mnemonicsDoNotClash();
    void tabReachesAllInTheOrderOfReading();
    void theFocusIsSeen();

private:
    QTemporaryDir folder_;
    CheckingAlbum album_;
};

void TestAccess::initTestCase() {
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
void TestAccess::everyFaceWasLookedAt() {
    const QByteArray faces = BENTHOR_FACES;
    QVERIFY2(album_.faces() >= (faces == "all" ? 60 : 2), qPrintable(QString::number(album_.faces())));
}

void TestAccess::whatActsIsMetWithRoleNameAndAct() {
    QVERIFY(isFaultless(album_.readers()));
}

/// Four captions are fixed with their marks; a second press of the key goes on to the other entry.
void TestAccess::mnemonicsDoNotClash() {
    QStringList fixed;
    for (const char* pair :
         {"Alt+D is Connect &Device and &Dive Summary", "Alt+R is &ReProgOLD and &ReProgram"}) {
        fixed += QStringLiteral("main &Connect: ") + QLatin1String(pair);
    }
    QStringList faults = album_.mnemonics();
    faults.removeIf([&fixed](const QString& fault) {
        return std::any_of(fixed.begin(), fixed.end(),
                           [&fault](const QString& one) { return fault.endsWith(one); });
    });
    QVERIFY(isFaultless(faults));
}

void TestAccess::tabReachesAllInTheOrderOfReading() {
    QVERIFY(isFaultless(album_.tabs()));
}

void TestAccess::theFocusIsSeen() {
    QVERIFY(isFaultless(album_.focus()));
}

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false"));
    look::apply(application);
    TestAccess test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_access.moc"
