// Every screen in every face has room for what it shows: at the smallest size, on larger displays, with a
// large font and on dense displays. Each set of faces is a process of its own.

#include "platform/look/look.h"
#include "platform/screen/application.h"
#include "tests/fit/fitcheck.h"
#include "tests/pictures/asked.h"
#include "tests/pictures/checkedfaces.h"

#include <QLoggingCategory>
#include <QMenu>
#include <QtTest>

using namespace benthor;

namespace {

const QString kCut = QStringLiteral("cut");
const QString kOutside = QStringLiteral("outside");
const QString kOverlapping = QStringLiteral("overlapping");
const QString kLarger = QStringLiteral("larger");
const QString kRestless = QStringLiteral("restless");

/// Counts who asks for a layout.
class LayoutWatch : public QObject {
public:
    LayoutWatch() { qApp->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest && watched->isWidgetType()) {
            ++requests_[QStringLiteral("%1 %2").arg(QLatin1String(watched->metaObject()->className()),
                                                    watched->objectName())];
        }
        return false;
    }
    /// Those that do so again and again while nothing happens: they keep the machine busy for ever.
    QStringList restless() {
        constexpr int kOften = 8; // of the ten rounds of settle()
        requests_.clear();
        tests::settle();
        QStringList found;
        for (auto at = requests_.constBegin(); at != requests_.constEnd(); ++at) {
            if (at.value() >= kOften) {
                found += QStringLiteral("%1 asks for a layout for ever").arg(at.key());
            }
        }
        return found;
    }

private:
    QMap<QString, int> requests_;
};

class FittingAlbum final : public tests::FaultAlbum {
protected:
    QList<QSize> sizesFor(const QList<QSize>& sizes) const override {
        QList<QSize> all = sizes;
        if (all.contains(QSize(1024, 700))) {
            all += QSize(1366, 728); // a low and wide display, less its bars
        }
        return all;
    }

    void lookAt(QWidget* window, const QString& name, const QSize& size) override {
        if (qobject_cast<QMenu*>(window) != nullptr) {
            return; // the system gives it its room
        }
        const QString face =
            QStringLiteral("%1 at %2x%3").arg(name).arg(window->width()).arg(window->height());
        if (size.isValid() && (window->width() > size.width() || window->height() > size.height())) {
            note(kLarger, face,
                 {QStringLiteral("%1 takes more than %2x%3")
                      .arg(window->objectName())
                      .arg(size.width())
                      .arg(size.height())});
        }
        note(kCut, face, tests::cutTexts(window));
        note(kOutside, face, tests::controlsOutside(window));
        note(kOverlapping, face, tests::overlaps(window));
        note(kRestless, face, LayoutWatch().restless());
    }
};

} // namespace

class TestFit : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFaceWasLookedAt();
    void noScreenTakesMoreThanItsSize();
    void noTextIsCut();
    void noControlLiesOutside();
    void nothingOverlaps();
    void everyFaceComesToRest();

private:
    QTemporaryDir folder_;
    FittingAlbum album_;
};

void TestFit::initTestCase() {
    QCOMPARE(tests::takeFaces(album_, BENTHOR_FACES, folder_.path(), QStringLiteral(BENTHOR_FOLDER_FILES),
                              QStringLiteral(BENTHOR_MAKEDEMO)),
             QString());
}

/// The numbers are those of the album: a face that is left out would be proved by nothing.
void TestFit::everyFaceWasLookedAt() {
    QVERIFY2(album_.faces() >= BENTHOR_LEAST_FACES, qPrintable(QString::number(album_.faces())));
}

void TestFit::noScreenTakesMoreThanItsSize() {
    QVERIFY(album_.isFaultless(kLarger));
}

void TestFit::noTextIsCut() {
    QVERIFY(album_.isFaultless(kCut));
}

void TestFit::noControlLiesOutside() {
    QVERIFY(album_.isFaultless(kOutside));
}

void TestFit::nothingOverlaps() {
    QVERIFY(album_.isFaultless(kOverlapping));
}

void TestFit::everyFaceComesToRest() {
    QVERIFY(album_.isFaultless(kRestless));
}

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.*=false"));
    tests::takeAskedFont();
    look::apply(application);
    TestFit test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_fit.moc"
