// The locale of the desktop changes nothing: files, rows of the store, what is sent and what is shown are, to
// the byte, those of a desktop without one. Each walk is a process of its own, for the locale is the
// process's.
//   test_locales --walk FILE     one walk in the locale of the environment; its traces go to the file

#include "platform/look/look.h"
#include "platform/screen/application.h"
#include "tests/locale/mainroad.h"
#include "tests/store/jet/jetfolder.h"

#include <QDataStream>
#include <QHashSeed>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTranslator>
#include <QtTest>

using namespace benthor;
using namespace benthor::tests;

namespace {

constexpr int kPatience = 120000;

struct Walked {
    QString seen;
    Traces traces;
};

QString clipped(const QByteArray& bytes, qsizetype around) {
    const qsizetype from = std::max<qsizetype>(0, around - 60);
    return QString::fromUtf8(bytes.mid(from, 160)).replace(u'\n', u'~');
}

/// One line for each difference, at most a few.
QString difference(const Traces& expected, const Traces& found) {
    constexpr int kMost = 12;
    QStringList lines;
    const QSet<QString> all = QSet<QString>(expected.keyBegin(), expected.keyEnd()) +
                              QSet<QString>(found.keyBegin(), found.keyEnd());
    QStringList names(all.begin(), all.end());
    names.sort();
    for (const QString& name : names) {
        const QByteArray one = expected.value(name, "(nothing)");
        const QByteArray other = found.value(name, "(nothing)");
        if (one != other && lines.size() < kMost) {
            const auto at =
                std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first - one.begin();
            lines += QStringLiteral("%1:\n  %2\n  %3").arg(name, clipped(one, at), clipped(other, at));
        }
    }
    return lines.join(u'\n');
}

} // namespace

/// What a desktop that is written from right to left has its programs load.
class Mirroring : public QTranslator {
public:
    QString translate(const char* context, const char* text, const char* comment, int number) const override {
        Q_UNUSED(context)
        Q_UNUSED(comment)
        Q_UNUSED(number)
        return qstrcmp(text, "QT_LAYOUT_DIRECTION") == 0 ? QStringLiteral("RTL") : QString();
    }
    bool isEmpty() const override { return false; }
};

class TestLocales : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void allOfTheRoadLeavesTraces();
    void theLocaleChangesNothing_data();
    void theLocaleChangesNothing();
    void whatIsProvedElsewhereHoldsInIt_data();
    void whatIsProvedElsewhereHoldsInIt();

private:
    /// Makes the locale in a folder of the test's own; false where the machine has not what it is made of.
    bool make(const QString& name) const {
        if (QFile::exists(folder_.filePath(name + QLatin1String(".UTF-8")))) {
            return true;
        }
        return !QStandardPaths::findExecutable(QStringLiteral("localedef")).isEmpty() &&
               QProcess::execute(QStringLiteral("localedef"),
                                 {QStringLiteral("-i"), name, QStringLiteral("-f"), QStringLiteral("UTF-8"),
                                  folder_.filePath(name + QLatin1String(".UTF-8"))}) == 0;
    }
    /// Runs a program in that locale, made here; false where it ends with anything but 0.
    bool run(const QString& program, const QStringList& words, const QString& locale) const;
    Walked walk(const QString& locale) const;

    QTemporaryDir folder_;
    Walked plain_;
};

bool TestLocales::run(const QString& program, const QStringList& words, const QString& locale) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString& name : environment.keys()) {
        if (name.startsWith(QLatin1String("LC_")) || name.startsWith(QLatin1String("LANG"))) {
            environment.remove(name);
        }
    }
    environment.insert(QStringLiteral("LC_ALL"), locale);
    environment.insert(QStringLiteral("LOCPATH"), folder_.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(program, words);
    return process.waitForFinished(kPatience) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

Walked TestLocales::walk(const QString& locale) const {
    const QString file = folder_.filePath(QStringLiteral("traces"));
    Walked walked;
    if (!run(QCoreApplication::applicationFilePath(), {QStringLiteral("--walk"), file}, locale)) {
        return walked;
    }
    QFile traces(file);
    if (traces.open(QIODevice::ReadOnly)) {
        QDataStream stream(&traces);
        stream >> walked.seen >> walked.traces;
    }
    traces.remove();
    return walked;
}

void TestLocales::initTestCase() {
    plain_ = walk(QStringLiteral("C.UTF-8"));
    QCOMPARE(plain_.seen, QStringLiteral("1.5 1.5 one ltr No such file or directory"));
}

/// What is not there cannot differ.
void TestLocales::allOfTheRoadLeavesTraces() {
    const auto count = [this](const char* lead) {
        return std::count_if(plain_.traces.keyBegin(), plain_.traces.keyEnd(),
                             [lead](const QString& name) { return name.startsWith(QLatin1String(lead)); });
    };
    QVERIFY(count("file ") > 40);
    QVERIFY(count("row main ") >= 9);
    QVERIFY(count("row gas ") > 20);
    QVERIFY(count("shown ") >= 12);
    QVERIFY(count("said to ") == 9);
    QVERIFY(plain_.traces.value(QStringLiteral("sent")).contains("P125"));
    QVERIFY(plain_.traces.value(QStringLiteral("device setup")).contains("P125"));
    QVERIFY(plain_.traces.value(QStringLiteral("file all.uddf")).contains("1.5"));
}

void TestLocales::theLocaleChangesNothing_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("seen");
    QTest::newRow("German") << "de_DE"
                            << "1,5 1,5 one ltr Datei oder Verzeichnis nicht gefunden";
    QTest::newRow("Arabic") << "ar_EG" << QStringLiteral("1.5 ١٫٥ one ltr No such file or directory");
    QTest::newRow("Turkish") << "tr_TR" << QStringLiteral("1,5 1,5 two ltr Böyle bir dosya ya da dizin yok");
}

void TestLocales::theLocaleChangesNothing() {
    QFETCH(QString, locale);
    QFETCH(QString, seen);
    if (!make(locale)) {
        QSKIP("the machine has no sources of locales (Debian: locales)");
    }
    const Walked walked = walk(locale + QLatin1String(".UTF-8"));
    QCOMPARE(walked.seen, seen);
    const QString differs = difference(plain_.traces, walked.traces);
    QVERIFY2(differs.isEmpty(), qPrintable(differs));
}

void TestLocales::whatIsProvedElsewhereHoldsInIt_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("program");
    const QDir folder(QCoreApplication::applicationDirPath());
    for (const char* const locale : {"de_DE", "ar_EG", "tr_TR"}) {
        for (const QString& name : QStringLiteral(BENTHOR_LOCALE_TESTS).split(u',')) {
            QTest::addRow("%s %s", locale, qPrintable(name)) << locale << folder.filePath(name);
        }
    }
}

void TestLocales::whatIsProvedElsewhereHoldsInIt() {
    QFETCH(QString, locale);
    QFETCH(QString, program);
    if (!make(locale)) {
        QSKIP("the machine has no sources of locales (Debian: locales)");
    }
    QVERIFY(run(program, {QStringLiteral("-silent")}, locale + QLatin1String(".UTF-8")));
}

namespace {

int leaveTraces(const QString& path) {
    const OurReader reader;
    Mirroring mirroring;
    if (QLocale::system().textDirection() == Qt::RightToLeft) {
        QCoreApplication::installTranslator(&mirroring);
        QCoreApplication::processEvents();
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        return 1;
    }
    QDataStream stream(&file);
    stream << localeSeen() << walkMainRoad(QStringLiteral(BENTHORCTL));
    return file.error() == QFileDevice::NoError ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    QHashSeed::setDeterministicGlobalSeed();
    platform::Application application(argc, argv);
    look::apply(application);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--walk")) {
        return leaveTraces(arguments[2]);
    }
    TestLocales test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_locales.moc"
