#include "tests/locale/mainroad.h"

#include "platform/clock.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/screen.h"
#include "tests/support/ranprogram.h"
#include "tests/walk/world.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTabBar>
#include <QtTest>

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace benthor::tests {

namespace {

constexpr int kBeats = 60;
const QDateTime kNow(QDate(2026, 4, 9), QTime(14, 5, 6), Qt::UTC);

void require(bool holds, const char* what) {
    if (!holds) {
        qFatal("the road cannot be walked: %s", what);
    }
}

/// The words of one control, as they stand before the user.
QString wordsOf(const QWidget& one) {
    if (const auto* label = qobject_cast<const QLabel*>(&one)) {
        return label->text();
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(&one)) {
        return edit->text();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&one)) {
        return button->text();
    }
    if (const auto* box = qobject_cast<const QComboBox*>(&one)) {
        return box->currentText();
    }
    if (const auto* text = qobject_cast<const QPlainTextEdit*>(&one)) {
        return text->toPlainText();
    }
    if (const auto* bar = qobject_cast<const QProgressBar*>(&one)) {
        return bar->isTextVisible() ? bar->text() : QString();
    }
    QStringList parts;
    if (const auto* tabs = qobject_cast<const QTabBar*>(&one)) {
        for (int i = 0; i < tabs->count(); ++i) {
            parts += tabs->tabText(i);
        }
    } else if (const auto* grid = qobject_cast<const platform::FlexGrid*>(&one)) {
        for (int row = 0; row < grid->rows(); ++row) {
            for (int column = 0; column < grid->cols(); ++column) {
                parts += grid->text(row, column);
            }
        }
    }
    return parts.join(u'|');
}

class Road {
public:
    explicit Road(const QString& ctl)
        : ctl_(ctl)
        , world_(2026) {}

    Traces walk() {
        const platform::FixedClock clock(kNow);
        world_.putFirstDives();
        // Letters whose other case is another one in Turkish, in upper case as in lower.
        for (const auto& [name, dive] : {std::pair("new/DIVING IN IZMIR.TXT", "typical.txt"),
                                         std::pair("new/iris inlet.txt", "pressures.txt"),
                                         std::pair("new/units.txt", "temperatures.txt"),
                                         std::pair("new/unreadable.txt", "gas-type3.txt")}) {
            world_.folder.put(QLatin1String(name), TestFolder::dive(QLatin1String(dive)));
        }
        world_.start();
        pass(8);
        look("import");
        studyADive();
        writeTheList();
        fetchDives();
        sendTheGases();
        traces_[QStringLiteral("sent")] = world_.bench.takeSent();
        world_.leave();
        ctl();
        collect();
        return traces_;
    }

private:
    void pass(int beats) {
        for (int beat = 0; beat < beats; ++beat) {
            world_.pass();
        }
        world_.settle();
    }

    /// What all screens show just now.
    void look(const char* step) {
        QByteArray shown;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            const auto parts = window->isVisible() ? window->findChildren<QWidget*>() : QList<QWidget*>();
            for (const QWidget* one : parts) {
                if (const QString words = wordsOf(*one); !words.isEmpty()) {
                    shown += QStringLiteral("%1 %2: %3\n")
                                 .arg(window->objectName(), one->objectName(), words)
                                 .toUtf8();
                }
            }
        }
        // Windows stand in no order.
        QByteArrayList lines = shown.split('\n');
        std::sort(lines.begin(), lines.end());
        traces_[QStringLiteral("shown ") + QLatin1String(step)] = named(lines.join('\n'));
        require(lines.size() > 10, step);
    }

    void save(const char* screen, const char* entry, const QString& name) {
        const QString path = world_.folder.path(name);
        world_.dialogs.answerFile(path);
        require(World::trigger(screen, entry), entry);
        world_.settle();
        require(QFile::exists(path), qPrintable(name));
    }

    /// Every export of the dive screen, in metres and in feet; the details stored between.
    void studyADive() {
        World::click("main", "lblodl(0)");
        world_.settle();
        int row = 0;
        while (++row < World::list()->rows() &&
               World::list()->text(row, 4) != QLatin1String("DIVING IN IZMIR.TXT")) {
        }
        require(World::clickRow(row, {}, true), "a row of the list");
        world_.settle();
        require(World::isShown("rbinterface"), "the dive screen");
        look("dive");
        for (const char* unit : {"mnuunitsmeters", "mnuunitsfeet"}) {
            World::trigger("rbinterface", unit);
            world_.settle();
            for (const auto& [entry, ending] :
                 {std::pair("mnudivesavecsv", "gases.csv"), std::pair("mnudivedan", "dan.zxu"),
                  std::pair("mnufullzxu", "full.zxu"), std::pair("mnufullcsv", "full.csv"),
                  std::pair("mnusavechart", "chart.svg"), std::pair("mnusavechart", "chart.png"),
                  std::pair("mnuexportopen", "dive.uddf"), std::pair("mnuexportopen", "dive.json"),
                  std::pair("mnuexportopen", "open.csv"), std::pair("mnuexportopen", "open.zxu")}) {
                save("rbinterface", entry, QLatin1String(unit) + u'-' + QLatin1String(ending));
            }
            World::click("rbinterface", "Command2(0)");
            look(unit);
        }
        World::trigger("rbinterface", "mnuunitsmeters");
        require(World::trigger("rbinterface", "mnudiveinfo"), "the details");
        World::reach<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Işıl İnci"));
        World::reach<QComboBox>("rbdetails", "Cbosite")
            ->setEditText(QStringLiteral("Iris Inlet, 1,5 km off"));
        World::reach<QPlainTextEdit>("rbdetails", "txtcomments")
            ->setPlainText(QStringLiteral("١٫٥ bar; 1.5; 1,5"));
        World::reach<QComboBox>("rbdetails", "cbobuddy")->setEditText(QStringLiteral("İREM IŞIK"));
        World::click("rbdetails", "cmdadd");
        look("details");
        require(World::click("rbdetails", "cmdclose"), "the end of the details");
        require(World::trigger("rbinterface", "mnudiveexit"), "the end of the dive");
        world_.settle();
    }

    void writeTheList() {
        require(World::isShown("rbmain"), "the list");
        for (const char* order : {"mnussite", "mnuslocation", "mnusmd", "mnusdate", "mnusdiveid"}) {
            World::trigger("rbmain", order);
            look(order);
        }
        save("rbmain", "mnuSaveSpread", QStringLiteral("list.csv"));
        for (const char* ending : {"uddf", "json", "csv", "zxu"}) {
            save("rbmain", "mnuexportall", QStringLiteral("all.") + QLatin1String(ending));
        }
    }

    void type(const char* box, const char* text) {
        auto* edit = World::reach<QLineEdit>("GasBlend", box);
        require(edit != nullptr, box);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QLatin1String(text));
        QTest::keyClick(edit, Qt::Key_Tab);
    }

    /// The line is open from here on; all that goes out of it is kept.
    void sendTheGases() {
        require(World::trigger("main", "mnuSetupGas"), "the gas screen");
        pass(kBeats);
        type("Text1(7)", "16");
        type("Text4(6)", "1.35");
        type("sptext", "1.25");
        look("gas");
        save("GasBlend", "mnuSave", QStringLiteral("plan.mit"));
        for (int question = 0; question < 4; ++question) {
            world_.dialogs.answer(true);
        }
        require(World::click("GasBlend", "Command1"), "Update");
        pass(kBeats);
        world_.dialogs.dropAnswers();
        traces_[QStringLiteral("device setup")] = world_.bench.device().memory.setup;
        World::screen("GasBlend")->close();
        world_.settle();
    }

    void fetchDives() {
        World::click("main", "lbllo");
        pass(kBeats);
        World::click("PC_Link_1", "cmdstore"); // where the directory has not come by itself
        pass(kBeats);
        look("link");
        world_.dialogs.answer(true);
        require(World::isShown("PC_Link_1"), "the link");
        require(World::click("PC_Link_1", "cmddownloadall"), "the download");
        pass(2 * kBeats);
        look("downloaded");
    }

    /// The same logbook from a shell, in the same locale.
    void ctl() {
        const QStringList folder{QStringLiteral("--folder"), world_.folder.root()};
        for (const char* words : {"list --all", "show 1", "samples 1", "check --all", "stats", "verify",
                                  "--json list --all", "--json stats", "dataset set --all"}) {
            const Ended ended =
                runProgram(ctl_, folder + QString::fromLatin1(words).split(u' '), world_.folder.root());
            require(ended.status == 0 || ended.status == 1, words);
            traces_[QStringLiteral("said to ") + QLatin1String(words)] = named(ended.out + ended.err);
        }
    }

    QByteArray named(QByteArray bytes) const {
        return bytes.replace(world_.folder.root().toUtf8(), "FOLDER");
    }

    /// The settings without the places of windows, which their frames change in their own time.
    static QByteArray withoutPlaces(const QByteArray& settings) {
        QByteArrayList lines = settings.split('\n');
        lines.removeIf([](const QByteArray& line) { return line.contains("=@Rect("); });
        return lines.join('\n');
    }

    void collect() {
        int number = 0;
        for (const ScriptedDialogs::Asked& one : world_.dialogs.asked()) {
            traces_[QStringLiteral("told %1").arg(++number, 3, 10, QLatin1Char('0'))] =
                named(QStringList{one.kind, one.text, one.title, one.filter, one.below}.join(u'|').toUtf8());
        }
        collectRows();
        for (const QString& root : {world_.folder.root(), world_.settings.folder()}) {
            QDirIterator files(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString path = files.next();
                // The pages of a store are where its history put them; its rows are looked at one by one.
                if (!path.contains(QLatin1String("rb.mdb"))) {
                    const QByteArray bytes = platform::readFile(path).value();
                    traces_[QStringLiteral("file ") + path.mid(root.size() + 1)] =
                        named(path.endsWith(QLatin1String(".ini")) ? withoutPlaces(bytes) : bytes);
                }
            }
        }
    }

    void collectRows() {
        SQLite::Database store(world_.folder.path(QStringLiteral("rb.mdb")).toStdString());
        std::vector<std::string> tables;
        SQLite::Statement names(store, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name");
        while (names.executeStep()) {
            tables.push_back(names.getColumn(0).getString());
        }
        for (const std::string& table : tables) {
            SQLite::Statement rows(store, "SELECT * FROM \"" + table + "\" ORDER BY rowid");
            for (int number = 1; rows.executeStep(); ++number) {
                QByteArray line;
                for (int i = 0; i < rows.getColumnCount(); ++i) {
                    const SQLite::Column field = rows.getColumn(i);
                    line += QByteArray(field.getName()) + '=' + QByteArray::number(field.getType()) + ':' +
                            QByteArray::fromStdString(field.getString()) + '\n';
                }
                traces_[QStringLiteral("row %1 %2").arg(QString::fromStdString(table)).arg(number)] =
                    named(line);
            }
        }
    }

    QString ctl_;
    World world_;
    Traces traces_;
};

} // namespace

Traces walkMainRoad(const QString& ctl) {
    Road road(ctl);
    return road.walk();
}

QString localeSeen() {
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "%.1f", 1.5);
    return QStringLiteral("%1 %2 %3 %4 %5")
        .arg(QLatin1String(number.data()), QLocale::system().toString(1.5),
             QLatin1String(std::tolower('I') == 'i' ? "one" : "two"),
             QGuiApplication::isLeftToRight() ? QStringLiteral("ltr") : QStringLiteral("rtl"),
             QString::fromLocal8Bit(std::strerror(ENOENT)));
}

} // namespace benthor::tests
