// Every text of every face stands out from what is painted behind it: light, dark, and in the high contrast
// of either. Each set of faces is a process of its own.

#include "platform/look/look.h"
#include "platform/screen/application.h"
#include "tests/fit/contrastcheck.h"
#include "tests/pictures/checkedfaces.h"

#include <QLoggingCategory>
#include <QtTest>

using namespace benthor;

namespace {

const QString kPale = QStringLiteral("pale");
const QString kPaleInHighContrast = QStringLiteral("pale in high contrast");

class ContrastAlbum final : public tests::FaultAlbum {
protected:
    QList<QSize> sizesFor(const QList<QSize>& sizes) const override { return {sizes.first()}; }

    void lookAt(QWidget* window, const QString& name, const QSize& size) override {
        Q_UNUSED(size)
        for (const look::Contrast contrast : {look::Contrast::Usual, look::Contrast::High}) {
            look::setContrast(contrast);
            for (const look::Theme theme : {look::Theme::Light, look::Theme::Dark}) {
                look::setTheme(theme);
                tests::settle();
                const bool high = contrast == look::Contrast::High;
                const QString face = name + (theme == look::Theme::Dark ? QStringLiteral(", dark")
                                                                        : QStringLiteral(", light"));
                const QList<QRgb> exempt = high ? QList<QRgb>() : QList<QRgb>{look::tokens().faint.rgb()};
                note(high ? kPaleInHighContrast : kPale, face,
                     tests::paleTexts(window, look::leastContrast(), exempt));
            }
        }
        look::setContrast(look::Contrast::Usual);
        look::setTheme(look::Theme::Light);
        tests::settle();
    }
};

} // namespace

class TestContrast : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFaceWasLookedAt();
    void textsStandOut();
    void textsStandOutFullyInHighContrast();

private:
    QTemporaryDir folder_;
    ContrastAlbum album_;
};

void TestContrast::initTestCase() {
    QCOMPARE(tests::takeFaces(album_, BENTHOR_FACES, folder_.path(), QStringLiteral(BENTHOR_FOLDER_FILES),
                              QStringLiteral(BENTHOR_MAKEDEMO)),
             QString());
}

/// The numbers are those of the album: a face that is left out would be proved by nothing.
void TestContrast::everyFaceWasLookedAt() {
    QVERIFY2(album_.faces() >= BENTHOR_LEAST_FACES, qPrintable(QString::number(album_.faces())));
}

void TestContrast::textsStandOut() {
    QVERIFY(album_.isFaultless(kPale));
}

void TestContrast::textsStandOutFullyInHighContrast() {
    QVERIFY(album_.isFaultless(kPaleInHighContrast));
}

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false"));
    look::apply(application);
    TestContrast test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_contrast.moc"
