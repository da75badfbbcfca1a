// Words from outside (of a store, a file, a device) stand as they are, on every screen: a name that looks
// like markup is no markup, and no file that it speaks of is opened.

#include "firmware/screens/blinkform.h"
#include "firmware/screens/runprog.h"
#include "guides/screens/scrsavform1.h"
#include "link/screens/pc_link_1.h"
#include "tests/shell/housestage.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QToolTip>

#include <atomic>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// A pipe that notes whether anyone opens it for reading, and lets who does so go again.
class WatchedPipe {
public:
    explicit WatchedPipe(const QString& path)
        : path_(QFile::encodeName(path)) {
        if (::mkfifo(path_.constData(), 0600) != 0) {
            qFatal("no pipe");
        }
        watch_ = std::thread([this] {
            while (!stop_) {
                const int writer = ::open(path_.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
                if (writer >= 0) {
                    read_ = true;
                    ::close(writer);
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
        });
    }
    ~WatchedPipe() {
        stop_ = true;
        watch_.join();
    }
    WatchedPipe(const WatchedPipe&) = delete;
    WatchedPipe& operator=(const WatchedPipe&) = delete;

    bool wasRead() const { return read_; }

private:
    QByteArray path_;
    std::atomic<bool> stop_ = false;
    std::atomic<bool> read_ = false;
    std::thread watch_;
};

/// The program on a store whose one dive has markup in every text of its row.
struct HostileProgram : Program {
    HostileProgram()
        : pipe(folder.path("p")) {
        passSplash();
        folder.put("new/a.txt", TestFolder::dive("typical.txt"));
        expire("main", "Timer1");
        for (const char* field : {"Location", "dbtxtname", "UserName", "Department", "site", "weather",
                                  "Suit", "divenote", "sitenote", "Coments"}) {
            platform::Recordset row = process().database.openRecordset("SELECT * FROM main");
            row.edit();
            row.set(QString::fromLatin1(field), words());
            row.update();
        }
        expire("main", "Timer1");
        loaded("rbmain")->unload();
    }
    QString words() const { return QStringLiteral("<img src=\"%1\">").arg(folder.path("p")); }

    WatchedPipe pipe;
};

QList<platform::Screen*> screens() {
    QList<platform::Screen*> found;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* screen = qobject_cast<platform::Screen*>(window); screen != nullptr && screen->isLoaded()) {
            found += screen;
        }
    }
    return found;
}

QString nameOf(const QWidget* widget) {
    return widget->window()->objectName() + u' ' + QLatin1String(widget->metaObject()->className()) + u' ' +
           widget->objectName();
}

/// Gives every label of a window the words and has it painted. Returns the labels that take them as markup.
QStringList labelsThatInterpret(QWidget& window, const QString& words) {
    QStringList names;
    window.ensurePolished();
    for (QLabel* label : window.findChildren<QLabel*>()) {
        label->ensurePolished();
        label->setText(words);
        label->grab();
        if (label->textFormat() != Qt::PlainText) {
            names += nameOf(label);
        }
    }
    window.grab();
    return names;
}

QLabel* openTip() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->inherits("QTipLabel") && window->isVisible()) {
            return qobject_cast<QLabel*>(window);
        }
    }
    return nullptr;
}

/// The same for the tool tips.
QStringList tipsThatInterpret(QWidget& window, const QString& words) {
    QStringList names;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->toolTip().isEmpty() || !widget->isVisible()) {
            continue;
        }
        widget->setToolTip(words);
        QHelpEvent ask(QEvent::ToolTip, widget->rect().center(), widget->mapToGlobal(QPoint(3, 3)));
        QCoreApplication::sendEvent(widget, &ask);
        if (QLabel* tip = openTip()) {
            tip->grab();
            if (tip->textFormat() != Qt::PlainText) {
                names += nameOf(widget);
            }
        }
        QToolTip::hideText();
    }
    return names;
}

/// Presses Escape on the box that comes up next; notes which of its labels would take markup.
void lookAtTheNextBox(QStringList& names, int& boxes) {
    QTimer::singleShot(0, qApp, [&names, &boxes] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) {
            return;
        }
        ++boxes;
        for (QLabel* label : box->findChildren<QLabel*>()) {
            label->grab();
            if (label->textFormat() != Qt::PlainText && label->objectName() != "qt_msgboxex_icon_label") {
                names += label->objectName();
            }
        }
        box->grab();
        box->reject();
    });
}

} // namespace

class TestHousePlainText : public QObject {
    Q_OBJECT

private slots:
    void aDiveNamedLikeMarkupOpensNoFile();
    void everyLabelAndTipOfEveryScreenShowsWordsAsTheyStand();
    void everyBoxShowsWordsAsTheyStand();
};

void TestHousePlainText::aDiveNamedLikeMarkupOpensNoFile() {
    HostileProgram program;
    control<QAction>("main", "mnucurrentmain")->trigger();
    QVERIFY(shown("rbmain"));
    loaded("rbmain")->grab();
    control<QPushButton>("rbmain", "cmdgo")->click();
    QVERIFY(shown("rbinterface"));
    loaded("rbinterface")->grab();
    const QList<QLabel*> labels = loaded("rbinterface")->findChildren<QLabel*>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [&](QLabel* label) {
        return label->isVisible() && label->text().contains(program.words());
    }));
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    QVERIFY(shown("rbdetails"));
    loaded("rbdetails")->grab();
    loaded("rbdetails")->unload();
    QVERIFY(!program.pipe.wasRead());
    QVERIFY(program.dialogs.messages().contains(QStringLiteral("bad file - delete record and try another")));
}

void TestHousePlainText::everyLabelAndTipOfEveryScreenShowsWordsAsTheyStand() {
    HostileProgram program;
    for (const char* entry :
         {"mnucurrentmain", "cmdcommandsend", "mnuSetupGas", "mnuTips", "mnuAbout", "mnuGets"}) {
        control<QAction>("main", entry)->trigger();
    }
    control<QPushButton>("rbmain", "cmdgo")->click();
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    guides::ScrSavForm1 capture;
    firmware::RunProg programs;
    firmware::BlinkForm blink;
    for (platform::Screen* screen : std::initializer_list<platform::Screen*>{&capture, &programs, &blink}) {
        screen->showScreen();
    }
    QStringList walked;
    QStringList wrong;
    const auto walk = [&] {
        for (platform::Screen* screen : screens()) {
            if (!walked.contains(screen->objectName())) {
                walked += screen->objectName();
                wrong += labelsThatInterpret(*screen, program.words());
                wrong += tipsThatInterpret(*screen, program.words());
            }
        }
    };
    walk();
    control<QAction>("main", "mnucurrentmain")->trigger();
    walk();
    control<QAction>("main", "mnuReprogIR")->trigger();
    walk();
    walked.sort();
    QCOMPARE(walked,
             QStringList({"BlinkForm", "GasBlend", "PC_Link_1", "ReProg_Link", "RunProg", "ScrSavForm1",
                          "frmAbout", "frmGetS", "frmTip", "main", "rbdetails", "rbinterface", "rbmain"}));
    QCOMPARE(wrong, QStringList());
    QVERIFY(!program.pipe.wasRead());
}

void TestHousePlainText::everyBoxShowsWordsAsTheyStand() {
    HostileProgram program;
    platform::setDialogs(nullptr);
    QStringList wrong;
    int boxes = 0;
    lookAtTheNextBox(wrong, boxes);
    platform::dialogs().message(nullptr, program.words(), platform::BoxKind::Warning, program.words(),
                                program.words());
    lookAtTheNextBox(wrong, boxes);
    platform::dialogs().confirm(nullptr, program.words(), program.words(), platform::BoxKind::Question, true,
                                program.words());
    // What the toolkit asks by itself, as before a file is replaced.
    lookAtTheNextBox(wrong, boxes);
    QMessageBox::warning(nullptr, program.words(), program.words());
    QCOMPARE(boxes, 3);
    QCOMPARE(wrong, QStringList());
    QVERIFY(!program.pipe.wasRead());
}

int main(int argc, char** argv) {
    return runAsProgram<TestHousePlainText>(argc, argv);
}
#include "test_house_plaintext.moc"
