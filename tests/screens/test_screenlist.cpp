#include "platform/look/look.h"
#include "tests/screens/screenlist.h"

#include <QApplication>
#include <QFile>
#include <QtTest>

class TestScreenList : public QObject {
    Q_OBJECT

private slots:
    void thePageTellsTheControlsThatAreThere();
};

void TestScreenList::thePageTellsTheControlsThatAreThere() {
    QFile page(QStringLiteral(BENTHOR_TEST_DATA "/../../docs/screens.md"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QStringList written = QString::fromUtf8(page.readAll()).split(u'\n');
    const QStringList there = benthor::tests::screenList().split(u'\n');
    for (const QString& line : there) {
        QVERIFY2(written.contains(line), qPrintable(QStringLiteral("docs/screens.md lacks: ") + line));
    }
    for (const QString& line : written) {
        QVERIFY2(there.contains(line),
                 qPrintable(QStringLiteral("docs/screens.md tells what is not there: ") + line));
    }
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benthor::look::apply(application);
    TestScreenList test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_screenlist.moc"
