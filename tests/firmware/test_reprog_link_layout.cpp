// What the firmware screen shows at each size: nothing that a decision hangs on is cut or covered.

#include "firmware/session.h"
#include "platform/look/look.h"
#include "platform/look/widgets/status.h"
#include "tests/firmware/reprogstage.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QtTest>

using namespace benthor;
using namespace benthor::firmware;
using namespace benthor::tests;

namespace {

constexpr QSize kLeast(1024, 700);
const QByteArray kPage = "Status check complete, press R, Enter to begin or Q to quit.......";
const QByteArray kProgrammed = "MEMORY A Programmed MEMORY B Programmed MEMORY C Programmed ";

struct Stage : ReprogStage {
    // 3 more than a record, and a list that says otherwise: each notice is at its longest.
    Stage()
        : ReprogStage(QByteArray(138 * 51 + 2, 'x')) {}
    void trigger(const char* action) { control<QAction>(action)->trigger(); }
    void resize(QSize size) {
        screen->resize(size);
        QCoreApplication::processEvents();
    }
};

/// The faces that the screen has, each as a step from its opening.
void layFace(Stage& stage, const QString& face) {
    if (face.contains("keyboard")) {
        stage.trigger("mnuAdvanced");
        stage.hear(kPage);
    }
    if (face.contains("rehearsal")) {
        stage.trigger("mnuRehearse");
    }
    if (face.contains("wait")) {
        stage.line->onOutput = [&stage](const QByteArray&) {
            if (stage.screen->state().sentmark && stage.line->waiting.isEmpty()) {
                stage.line->waiting =
                    QByteArray::number(stage.screen->state().sum + 38, 16).rightJustified(8, '0') +
                    "  Prog\r\n";
            }
        };
        stage.hear("REPROG MODE");
        stage.control<QAbstractButton>("Command2")->click();
        stage.hear("programming");
    }
    if (face.contains("again")) {
        for (int tick = 0; tick < 70; ++tick) {
            stage.hear(kProgrammed + "shell:" + QByteArray(23, '.') + "BEEF");
        }
    }
    if (face.contains("prompt")) {
        stage.hear(kPage);
    }
}

/// Whole: inside of all that it stands in, and as large as its text wants it.
QString flawOf(const QWidget* widget) {
    const QRect own = widget->rect();
    for (const QWidget* around = widget->parentWidget(); around != nullptr; around = around->parentWidget()) {
        const QRect there(widget->mapTo(around, QPoint()), own.size());
        if (!around->rect().contains(there)) {
            return QStringLiteral("sticks out of a %1").arg(QLatin1String(around->metaObject()->className()));
        }
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        const int needed =
            label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
        if (label->height() < needed) {
            return QStringLiteral("%1 high, needs %2").arg(label->height()).arg(needed);
        }
    } else if (own.height() < widget->minimumSizeHint().height()) {
        return QStringLiteral("%1 high").arg(own.height());
    }
    return {};
}

/// What is seen of it lies under no sibling of anything that it stands in.
QString coverOf(const QWidget* widget) {
    const QWidget* top = widget->window();
    const QRect there(widget->mapTo(top, QPoint()), widget->size());
    for (const QWidget* one = widget; one != top; one = one->parentWidget()) {
        for (const QWidget* sibling :
             one->parentWidget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (sibling == one || !sibling->isVisible()) {
                continue;
            }
            const QRect other(sibling->mapTo(top, QPoint()), sibling->size());
            if (other.intersects(there)) {
                return QStringLiteral("lies over a %1")
                    .arg(QLatin1String(sibling->metaObject()->className()));
            }
        }
    }
    return {};
}

} // namespace

class TestReprogLinkLayout : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { look::apply(*qApp); }

    void eachFaceFitsAndShowsWhatIsComparedAndTheWarningWhole_data() { faces(); }
    void eachFaceFitsAndShowsWhatIsComparedAndTheWarningWhole() {
        QFETCH(QString, face);
        Stage stage;
        layFace(stage, face);
        QStringList flaws;
        for (const QSize size : {kLeast, QSize(1120, 744), QSize(1366, 768), QSize(1920, 1080)}) {
            stage.resize(size);
            if (stage.screen->size() != size) {
                flaws += QStringLiteral("needs %1x%2").arg(stage.screen->width()).arg(stage.screen->height());
            }
            QList<QWidget*> whole{stage.control("Text13"), stage.control("Text14"), stage.control("Text15")};
            for (const auto* band : stage.screen->findChildren<look::NoticeBand*>()) {
                whole.append(band->label());
            }
            for (const char* const frame : {"Frame5", "Frame6"}) {
                for (QLabel* words : stage.control(frame)->findChildren<QLabel*>()) {
                    whole.append(words);
                }
            }
            for (const char* const name : {"next", "valueorigin", "imagewords"}) {
                whole.append(stage.control(name));
            }
            for (const QWidget* one : whole) {
                if (!one->isVisible()) {
                    continue;
                }
                for (const QString& flaw : {flawOf(one), coverOf(one)}) {
                    if (!flaw.isEmpty()) {
                        flaws += QStringLiteral("%1x%2 %3 \"%4\": %5")
                                     .arg(stage.screen->width())
                                     .arg(stage.screen->height())
                                     .arg(one->objectName(), one->property("text").toString().left(30), flaw);
                    }
                }
            }
        }
        QVERIFY2(flaws.isEmpty(), qPrintable(flaws.join('\n')));
    }

private:
    static void faces() {
        QTest::addColumn<QString>("face");
        for (const char* const face :
             {"plain", "prompt", "keyboard", "rehearsal", "rehearsal keyboard", "wait", "wait keyboard",
              "wait again", "wait again keyboard", "rehearsal wait", "rehearsal wait again"}) {
            QTest::newRow(face) << QString::fromLatin1(face);
        }
    }
};

QTEST_MAIN(TestReprogLinkLayout)
#include "test_reprog_link_layout.moc"
