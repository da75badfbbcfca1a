// What screen readers are told of the widgets that the house paints itself.

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/commandbutton.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/fold.h"
#include "platform/look/widgets/gauge.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/passingnote.h"
#include "platform/look/widgets/segmentedchoice.h"
#include "platform/look/widgets/status.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

using namespace benthor::look;

namespace {

QAccessibleInterface* met(QWidget* widget) {
    return QAccessible::queryAccessibleInterface(widget);
}

QString nameOf(QWidget* widget) {
    return met(widget)->text(QAccessible::Name);
}

void press(QWidget* widget) {
    met(widget)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
}

} // namespace

class TestReaders : public QObject {
    Q_OBJECT

private slots:
    void aLabelThatActsIsAButton() {
        ClickableLabel label(QStringLiteral("My Dives"));
        QCOMPARE(met(&label)->role(), QAccessible::Button);
        QCOMPARE(nameOf(&label), QStringLiteral("My Dives"));
        QSignalSpy clicked(&label, &ClickableLabel::clicked);
        press(&label);
        QCOMPARE(clicked.size(), 1);
        label.setEnabled(false);
        QVERIFY(met(&label)->state().disabled);
        QVERIFY(!met(&label)->actionInterface()->actionNames().contains(
            QAccessibleActionInterface::pressAction()));
        press(&label);
        QCOMPARE(clicked.size(), 1);
    }

    void ofPictureAndCaptionOneIsMet() {
        EntryRow row(QStringLiteral("dives"), QStringLiteral("My Dives"));
        QCOMPARE(met(&row)->childCount(), 1);
        QCOMPARE(met(&row)->child(0)->object(), row.caption());
        QVERIFY(met(row.picture())->state().invisible);
        QSignalSpy clicked(&row, &EntryRow::clicked);
        press(row.caption());
        QCOMPARE(clicked.size(), 1);
    }

    void aButtonOfPartsIsOneButton() {
        CommandButton button(QStringLiteral("Get New Dives"), QStringLiteral("download"),
                             CommandButton::Kind::Large);
        button.setNames("cmd", "picture", "label");
        button.setQuietLine(QStringLiteral("those not yet here"));
        QCOMPARE(met(&button)->role(), QAccessible::Button);
        QCOMPARE(met(&button)->childCount(), 0);
        QCOMPARE(nameOf(&button), QStringLiteral("Get New Dives"));
        QCOMPARE(met(&button)->text(QAccessible::Description), QStringLiteral("those not yet here"));
    }

    void aFoldSaysWhetherItIsOpen() {
        Fold fold(QStringLiteral("Single dive"));
        QVERIFY(met(fold.header())->state().expandable);
        QVERIFY(!met(fold.header())->state().expanded);
        press(fold.header());
        QVERIFY(fold.isOpen());
        QVERIFY(met(fold.header())->state().expanded);
    }

    void aChoiceSaysWhichHolds() {
        SegmentedChoice choice;
        QAbstractButton* date = choice.addChoice(QStringLiteral("&Date"), 0);
        QAbstractButton* site = choice.addChoice(QStringLiteral("Site"), 1);
        choice.setCurrent(0);
        QCOMPARE(met(date)->role(), QAccessible::RadioButton);
        QCOMPARE(nameOf(date), QStringLiteral("Date"));
        QVERIFY(met(date)->state().checked);
        QVERIFY(!met(site)->state().checked);
    }

    void aValueIsToldWithItsNameAndUnit() {
        NumberLabel number;
        number.setCaption(QStringLiteral("PPO2"));
        number.setText(QStringLiteral("1.31"));
        setReaderUnit(&number, QStringLiteral("bar"));
        QCOMPARE(nameOf(&number), QStringLiteral("PPO2: 1.31 bar"));
        number.clear();
        QCOMPARE(nameOf(&number), QStringLiteral("PPO2"));
        StatusChip chip;
        chip.setAccessibleName(QStringLiteral("Link"));
        chip.setText(QStringLiteral("OK"));
        QCOMPARE(nameOf(&chip), QStringLiteral("Link: OK"));
        LampDot lamp;
        lamp.setText(QStringLiteral("Connected"));
        QCOMPARE(nameOf(&lamp), QStringLiteral("Connected"));
    }

    void aGaugeHasValueRangeAndUnit() {
        Gauge gauge;
        QCOMPARE(met(&gauge)->valueInterface(), nullptr);
        setReading(&gauge,
                   Reading{.value = 1.31, .least = 0, .most = 1.82, .words = QStringLiteral("1.31 bar")});
        QAccessibleValueInterface* value = met(&gauge)->valueInterface();
        QCOMPARE(value->currentValue().toDouble(), 1.31);
        QCOMPARE(value->minimumValue().toDouble(), 0.0);
        QCOMPARE(value->maximumValue().toDouble(), 1.82);
        QCOMPARE(met(&gauge)->text(QAccessible::Value), QStringLiteral("1.31 bar"));
        setReading(&gauge, std::nullopt);
        QCOMPARE(met(&gauge)->valueInterface(), nullptr);
    }

    void whatIsCoveredIsNotMet() {
        QWidget instrument;
        auto* value = new QLabel(QStringLiteral("1.31"), &instrument);
        auto* mask = new QLabel(QStringLiteral("not recorded"), &instrument);
        instrument.show();
        QVERIFY(!met(value)->state().invisible);
        coverForReaders(mask);
        QVERIFY(met(value)->state().invisible);
        QVERIFY(!met(mask)->state().invisible);
        mask->hide();
        QVERIFY(!met(value)->state().invisible);
    }

    void whatHappenedIsSaidAndNothingIsShown() {
        QWidget window;
        auto* part = new QWidget(&window);
        window.resize(200, 100);
        window.show();
        const QImage before = window.grab().toImage();
        announce(part, QStringLiteral("Link status: Connected"));
        QCOMPARE(lastAnnounced(&window), QStringLiteral("Link status: Connected"));
        QCOMPARE(window.grab().toImage(), before);
        announce(part, {});
        QCOMPARE(lastAnnounced(&window), QStringLiteral("Link status: Connected"));
    }

    /// A reader asks for the words later than it hears of them.
    void wordsThatFollowFastDoNotTakeEachOthersPlace() {
        QWidget window;
        window.show();
        QList<QAccessible::Id> notes;
        for (int at = 0; at < 4; ++at) {
            announce(&window, QString::number(at));
            QAccessibleInterface* root = met(&window);
            for (int child = 0; child < root->childCount(); ++child) {
                if (!root->child(child)->state().invisible) {
                    notes += QAccessible::uniqueId(root->child(child));
                }
            }
        }
        QCOMPARE(notes.size(), 4); // one is met at a time
        for (int at = 0; at < 4; ++at) {
            QCOMPARE(QAccessible::accessibleInterface(notes.at(at))->text(QAccessible::Name),
                     QString::number(at));
        }
        for (int at = 0; at < 100; ++at) {
            announce(&window, QStringLiteral("again"));
        }
        QVERIFY(met(&window)->childCount() <= 6);
    }

    void aPassingNoteIsSaid() {
        QWidget window;
        window.show();
        PassingNote::tell(window, QStringLiteral("Two dives deleted"));
        QCOMPARE(lastAnnounced(&window), QStringLiteral("Two dives deleted"));
    }
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    apply(application);
    TestReaders test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_readers.moc"
