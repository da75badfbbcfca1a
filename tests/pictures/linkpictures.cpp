#include "tests/pictures/linkpictures.h"

#include "link/screens/pc_link_1.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/widgets/fold.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "tests/link/fakehost.h"

#include <QAbstractButton>
#include <QAction>
#include <QLineEdit>
#include <QtTest/QTest>

namespace benthor::tests {

namespace {

constexpr int kDives = 24;
constexpr int kPort = 3;
constexpr qint64 kFirstStart = 875011337;

QByteArray field(const char* label, const QByteArray& value) {
    return label + QByteArray(".......") + value + "\r\n";
}

/// Start codes of dives in the open store, so that some rows are known.
QByteArrayList storedCodes() {
    QByteArrayList codes;
    platform::Recordset rows = process().database.openRecordset("SELECT startcode FROM main");
    for (; !rows.eof() && codes.size() < kDives - 5; rows.moveNext()) {
        codes += rows.value(0).text().toLatin1();
    }
    return codes;
}

QByteArray directory() {
    const QByteArrayList stored = storedCodes();
    QByteArray text;
    for (int dive = 0; dive < kDives; ++dive) {
        const QByteArray start = dive >= 5
                                     ? stored.value(dive - 5, QByteArray::number(kFirstStart - dive * 90211))
                                     : QByteArray::number(kFirstStart - dive * 70211);
        text += "ver=V3.12\r\nRecint=10\r\n" + field("Start", start) +
                field("Finish", QByteArray::number(start.toLongLong() + 1800 + dive * 137)) +
                field("MaxD", QByteArray::number(12.5 + dive * 1.7, 'f', 2)) + field("Status", "0") +
                field("OTU", QByteArray::number(20 + dive * 5)) + field("Descend prob", "0") +
                field("HPCylinder", QByteArray::number(2480 - dive * 53)) + field("DAtmos", "1013");
    }
    return text + "End\r\n";
}

struct Stage {
    Stage() {
        link::LinkLines lines;
        lines.make = [this](QObject*, std::function<void()> received) {
            auto line = std::make_unique<FakeLine>();
            line->portExists = [](int port) { return port == kPort; };
            if (working == nullptr) {
                working = line.get();
                arrived = std::move(received);
            } else {
                search.push_back(line.get());
            }
            return line;
        };
        screen = std::make_unique<link::PC_Link_1>(std::move(lines));
        screen->showScreen();
    }

    template <class T> T* control(const char* name) { return screen->findChild<T*>(QLatin1String(name)); }
    void tick(const char* timer) { control<platform::TickTimer>(timer)->expire(); }
    void receive(const QByteArray& bytes) {
        working->waiting += bytes;
        arrived();
    }
    void pick(int row, Qt::KeyboardModifiers modifiers = {}) {
        auto* grid = control<platform::FlexGrid>("Mgrid");
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, modifiers,
                          grid->visualRect(grid->model()->index(row - 1, 2)).center());
    }
    void connectDevice() {
        search.at(kPort)->waiting = "PPP";
        tick("Timer8");
        receive("PPPPPPPP");
        tick("Timer1");
        receive(directory());
        tick("Timer2");
        receive("PPPPPPPP");
        for (int i = 0; i < 12; ++i) {
            receive("P");
            tick("Timer1");
        }
        tick("Timer4");
    }

    FakeLine* working = nullptr;
    std::vector<FakeLine*> search;
    std::function<void()> arrived;
    std::unique_ptr<link::PC_Link_1> screen;
};

void takeDownload(const std::function<void(QWidget*, const char*)>& take) {
    process().screenmode = QStringLiteral("Dive");
    Stage stage;
    stage.tick("Timer1");
    take(stage.screen.get(), "PC_Link_1-download-empty");
    stage.connectDevice();
    take(stage.screen.get(), "PC_Link_1-download");
    stage.pick(1, Qt::ControlModifier);
    stage.pick(2, Qt::ControlModifier);
    stage.pick(4, Qt::ControlModifier);
    stage.screen->findChild<look::Fold*>()->setOpen(true);
    take(stage.screen.get(), "PC_Link_1-download-picked");
    stage.control<QAbstractButton>("cmddownload")->click();
    stage.receive(QByteArray(48213, ','));
    for (int i = 0; i < 9; ++i) {
        stage.tick("Timer3");
        stage.tick("Timer1");
    }
    take(stage.screen.get(), "PC_Link_1-wait");
}

void takeSetup(const std::function<void(QWidget*, const char*)>& take) {
    process().screenmode = QStringLiteral("Command");
    Stage stage;
    stage.tick("Timer1");
    take(stage.screen.get(), "PC_Link_1-setup-empty");
    stage.connectDevice();
    stage.control<QAction>("mnuPersSend")->trigger();
    take(stage.screen.get(), "PC_Link_1-setup-name");
    stage.control<QAction>("mnuHud")->trigger();
    stage.control<QAction>("mnuAdvancedOption")->trigger();
    process().deviceconnected = 1;
    QTest::mouseClick(stage.control<QWidget>("Label19(1)"), Qt::LeftButton);
    stage.control<QAction>("mnuIntget")->trigger();
    stage.receive("r,,010 A006 B040 C070 D140 E160 ");
    stage.tick("Timer1");
    take(stage.screen.get(), "PC_Link_1-setup");
}

} // namespace

void takeLinkScreens(const std::function<void(QWidget*, const char*)>& take) {
    takeDownload(take);
    takeSetup(take);
    process().screenmode.clear();
}

} // namespace benthor::tests
