#pragma once

#include "logbook/screens/rbmain.h"
#include "platform/programfolder.h"
#include "platform/screen/screenslot.h"
#include "platform/screen/toldqcolor.h"
#include "session/process.h"
#include "store/schema.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testsettings.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

namespace benthor::tests {

using Fields = QMap<QString, QString>;

/// A program folder with a fresh store, dives to put into it, and the dive list over it. Each test has one of
/// its own.
class ListWorld {
public:
    ListWorld()
        : folder(directory_.path())
        , list([] { return new logbook::rbmain; }) {
        Process& values = process();
        for (QString* text : {&values.currentdiveid, &values.problemtext, &values.storepath}) {
            text->clear();
        }
        values.divesystem = QStringLiteral("Rebrether");
        values.depthunit = QStringLiteral("metre");
        for (const char* name : {"new", "old", "corrupt", "dbtxt"}) {
            QDir(directory_.path()).mkdir(QLatin1String(name));
        }
        platform::ProgramFolder::setCurrent(folder);
        store::createStore(folder.path(u"rb.mdb"));
        values.database.open(folder.path(u"rb.mdb"));
    }
    ~ListWorld() {
        list.unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        process().mainrecordset.close();
        process().countrecordset.close();
        process().database.close();
    }
    ListWorld(const ListWorld&) = delete;
    ListWorld& operator=(const ListWorld&) = delete;

    static platform::Value valueOf(const QString& text) {
        return text == QLatin1String("(null)") ? platform::Value() : platform::Value(text);
    }

    static void addRow(platform::Database& store, const char* table, const Fields& fields) {
        platform::Recordset rows = store.openForAdding(table);
        rows.addNew();
        for (auto field = fields.cbegin(); field != fields.cend(); ++field) {
            rows.set(field.key(), valueOf(field.value()));
        }
        rows.update();
    }

    /// A dive that passes every check, but for the fields given; "(null)" is Null.
    static void addDive(const QString& diveid, const Fields& changes = {},
                        platform::Database& store = process().database) {
        Fields fields{{QStringLiteral("UserName"), QStringLiteral("KD00123")},
                      {QStringLiteral("Location"), QStringLiteral("Dive%1.txt").arg(diveid.right(2))},
                      {QStringLiteral("site"), QStringLiteral("Harbour mole")},
                      {QStringLiteral("startdate"), QStringLiteral("2017-07-27 09:50:02")},
                      {QStringLiteral("finisheddate"), QStringLiteral("2017-07-27 10:31:09")},
                      {QStringLiteral("Duration"), QStringLiteral("41:7")},
                      {QStringLiteral("MaxDepth"), QStringLiteral("22.300")},
                      {QStringLiteral("Version"), QStringLiteral("V3.12")},
                      {QStringLiteral("Interval"), QStringLiteral("10")},
                      {QStringLiteral("otu"), QStringLiteral("148")},
                      {QStringLiteral("systemid"), QStringLiteral("KD3")},
                      {QStringLiteral("datmos"), QStringLiteral("1013")},
                      {QStringLiteral("dusage"), QStringLiteral("270")}};
        fields.insert(changes);
        fields.insert(QStringLiteral("DiveID"), diveid);
        addRow(store, "main", fields);
        addGas(diveid, QStringLiteral("79"), store);
        addRow(store, "tissue",
               {{QStringLiteral("diveid"), diveid},
                {QStringLiteral("Tissuetype"), QStringLiteral("0001")},
                {QStringLiteral("TissueN2"), QStringLiteral("79")},
                {QStringLiteral("TissueHe"), QStringLiteral("0\r")}});
    }

    static void addGas(const QString& diveid, const QString& nitrogen,
                       platform::Database& store = process().database) {
        addRow(store, "gas",
               {{QStringLiteral("diveid"), diveid},
                {QStringLiteral("Gastype"), QStringLiteral("0001")},
                {QStringLiteral("GasN2"), nitrogen},
                {QStringLiteral("GasHe"), QStringLiteral("0")},
                {QStringLiteral("gasmod"), QStringLiteral("660")},
                {QStringLiteral("Gasstat"), QStringLiteral("1\r")}});
    }

    static int count(const char* query) {
        return process().database.openRecordset(query).value(0).text().toInt();
    }

    void put(QStringView where, const QString& name, const QByteArray& bytes) const {
        QFile file(folder.path(where, name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }
    QByteArray bytesOf(QStringView where, const QString& name) const {
        return platform::readFile(folder.path(where, name)).value_or("(no file)");
    }
    bool isThere(QStringView where, const QString& name) const {
        return QFile::exists(folder.path(where, name));
    }

    void show() {
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list.get()));
    }

    template <class T> T* control(const char* name) {
        T* found = list.get().findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("The list has no control %s.", name);
        }
        return found;
    }
    platform::FlexGrid& grid() { return *control<platform::FlexGrid>("MSFlexGrid1"); }
    QString labelText(const char* name) { return control<QLabel>(name)->text(); }
    void trigger(const char* entry) { control<QAction>(entry)->trigger(); }

    QStringList column(int col) {
        QStringList texts;
        for (int row = 1; row < grid().rows(); ++row) {
            texts += grid().text(row, col);
        }
        return texts;
    }
    bool isRow(int row, platform::ToldColour colour) {
        for (int col = 0; col < grid().cols(); ++col) {
            if (grid().backColour(row, col) != platform::toQColor(colour)) {
                return false;
            }
        }
        return grid().cols() > 0;
    }
    QList<int> blueRows() {
        QList<int> rows;
        for (int row = 1; row < grid().rows(); ++row) {
            if (isRow(row, platform::kToldBlue)) {
                rows += row;
            }
        }
        return rows;
    }
    QPoint cell(int row, int col = 0) {
        return {grid().columnViewportPosition(col) + 8, grid().rowViewportPosition(row - 1) + 10};
    }
    void click(int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, modifiers, cell(row));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&grid(), key, modifiers); }

private:
    TestSettings settings_;
    QTemporaryDir directory_;

public:
    platform::ProgramFolder folder;
    platform::ScreenSlot<logbook::rbmain> list;
    ScriptedDialogs dialogs;
};

inline QString diveNumber(int number) {
    return QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0'));
}

} // namespace benthor::tests
