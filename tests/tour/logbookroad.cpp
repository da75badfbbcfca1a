#include "tests/tour/logbookroad.h"

#include "platform/files.h"
#include "platform/programfolder.h"
#include "tests/tour/lookup.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace benthor::tour {

namespace {

QString path(const char* name) {
    return platform::ProgramFolder::current().path(QString::fromLatin1(name));
}

void trigger(Actor& actor, QWidget* screen, const char* entry) {
    auto* action = actor.control<QAction>(screen, QLatin1String(entry));
    actor.look([action] { QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection); });
}

} // namespace

void keepALog(Actor& actor, QWidget* dive) {
    actor.step(QStringLiteral("Site, notes, buddies and a picture are added; leaving stores them"));
    trigger(actor, dive, "mnudiveinfo");
    QWidget* details = actor.screen(QStringLiteral("rbdetails"));
    auto* picture = actor.control<QLabel>(details, QStringLiteral("Image1(0)"));
    actor.look([&] {
        details->findChild<QLineEdit*>(QStringLiteral("Txtdiver"))->setText(QStringLiteral("Anna Haverkamp"));
        details->findChild<QComboBox*>(QStringLiteral("Cbosite"))
            ->setEditText(QStringLiteral("Blue Lake, north wall"));
        details->findChild<QComboBox*>(QStringLiteral("cbowhether"))
            ->setEditText(QStringLiteral("Clear, calm"));
        details->findChild<QComboBox*>(QStringLiteral("Cbodepartment"))
            ->setEditText(QStringLiteral("Expedition"));
        details->findChild<QPlainTextEdit*>(QStringLiteral("txtcomments"))
            ->setPlainText(QStringLiteral("Good light down to 40 m.\nThe winch is still there."));
    });
    for (const char* const name : {"Bo Lindqvist", "Cy Marron"}) {
        actor.look([&] {
            details->findChild<QComboBox*>(QStringLiteral("cbobuddy"))->setEditText(QLatin1String(name));
        });
        actor.click(actor.control<QWidget>(details, QStringLiteral("cmdadd")));
    }
    actor.click(picture, QPoint(8, 8));
    actor.chooseFile(path("chart.png"));
    actor.waitFor(QStringLiteral("the picture"),
                  [&] { return !picture->pixmap(Qt::ReturnByValue).isNull(); });
    actor.picture(details, QStringLiteral("details"));
    actor.click(actor.control<QWidget>(details, QStringLiteral("cmdclose")));
    actor.screen(QStringLiteral("rbinterface"));
}

void publishADive(Actor& actor, QWidget* list) {
    actor.step(QStringLiteral("The list becomes a spreadsheet; a dive becomes a message with its file"));
    trigger(actor, list, "mnuSaveSpread");
    actor.chooseFile(path("divelist.csv"));
    actor.answerBox(QStringLiteral("Data saved to CSV file....!!"), QStringLiteral("OK"));
    actor.click(actor.control<QWidget>(list, QStringLiteral("Picture5(0)")));
    auto* address = actor.control<QLineEdit>(list, QStringLiteral("Text2"));
    actor.waitFor(QStringLiteral("the publish panel"), [&] { return address->isVisible(); });
    actor.look([&] {
        address->setText(QStringLiteral("anna@example.org"));
        list->findChild<QPlainTextEdit*>(QStringLiteral("Text3"))
            ->setPlainText(QStringLiteral("Have a look at the second cell."));
    });
    actor.picture(list, QStringLiteral("publish"));
    actor.click(actor.control<QWidget>(list, QStringLiteral("Picture5(2)")));
    actor.answerBox(
        QStringLiteral("No mail program takes the message. Save it with its attachments as a file "
                       "that mail programs open?"),
        QStringLiteral("Yes"));
    actor.chooseFile(path("dive.eml"));
    actor.waitFor(QStringLiteral("the message's file"), [] {
        return platform::readFile(path("dive.eml")).value_or("").contains("Subject: Publish My Dive");
    });
    actor.click(actor.control<QWidget>(list, QStringLiteral("Picture5(1)")));
}

void readTheGuides(Actor& actor) {
    QWidget* main = actor.screen(QStringLiteral("main"));
    actor.step(QStringLiteral("Connection tips, in their panel and on a screen of their own"));
    trigger(actor, main, "mnuTips");
    QWidget* tips = actor.screen(QStringLiteral("frmTip"));
    actor.look([main, tips] { tips->move(main->geometry().bottomLeft()); });
    actor.picture(tips, QStringLiteral("tips"));
    actor.picture(main, QStringLiteral("main-with-tips"));
    actor.click(actor.control<QWidget>(tips, QStringLiteral("cmdOK")));

    actor.step(QStringLiteral("The guide, step by step"));
    trigger(actor, main, "mnuGets");
    QWidget* guide = actor.screen(QStringLiteral("frmGetS"));
    auto* count = actor.control<QLabel>(guide, QStringLiteral("Label4"));
    actor.picture(guide, QStringLiteral("guide"));
    for (int step = 2; step <= 4; ++step) {
        actor.click(actor.control<QWidget>(guide, QStringLiteral("Command1(1)")));
        actor.waitFor(QStringLiteral("step %1").arg(step),
                      [&] { return count->text() == QStringLiteral("Tip %1 of 4").arg(step); });
    }
    actor.picture(guide, QStringLiteral("guide-last"));
    actor.look([guide] { QMetaObject::invokeMethod(guide, &QWidget::close, Qt::QueuedConnection); });

    actor.step(QStringLiteral("The about box"));
    trigger(actor, main, "mnuAbout");
    QWidget* about = actor.screen(QStringLiteral("frmAbout"));
    actor.picture(about, QStringLiteral("about"));
    actor.click(actor.control<QWidget>(about, QStringLiteral("cmdOK")));
}

} // namespace benthor::tour
