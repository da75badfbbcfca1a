#pragma once

#include "platform/grid/flexgrid.h"
#include "tests/shell/housestage.h"

#include <QLabel>

namespace benthor::tests {

constexpr int kNameColumn = 4; ///< display column of a dive's name

inline QString diveid(int number) {
    return QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0'));
}

/// The program with so many dives in its store, on the dive list, or without any on the main screen. Dive n
/// came from the file "dive<n>.txt" and began n days after the first.
struct DivesProgram : Program {
    explicit DivesProgram(int dives) {
        passSplash();
        for (int number = 1; number <= dives; ++number) {
            wait(number);
        }
        expire("main", "Timer1");
        if (dives > 0 && list().rows() != dives + 1) {
            qFatal("the dives are not in the list");
        }
    }

    /// Text of dive n.
    static QByteArray diveText(int number) {
        const QByteArray start("382352313");
        const QByteArray code = QByteArray::number(start.toLongLong() + 86400LL * number);
        return TestFolder::dive(QStringLiteral("typical.txt")).replace(start, code);
    }

    void wait(int number) const {
        folder.put(QStringLiteral("new/dive%1.txt").arg(number), diveText(number));
    }

    /// Dive n comes into the folder of waiting ones and is imported.
    void import(int number) const {
        wait(number);
        expire("main", "Timer1");
    }

    static platform::FlexGrid& list() { return *control<platform::FlexGrid>("rbmain", "MSFlexGrid1"); }

    static QPoint cell(int row) {
        return {list().columnViewportPosition(0) + 8, list().rowViewportPosition(row - 1) + 10};
    }
    static void choose(int row) { QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, cell(row)); }
    /// A double click on a row of the list.
    static void open(int row) {
        choose(row);
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, cell(row));
    }
    static void openDetails() { control<QAction>("rbinterface", "mnudiveinfo")->trigger(); }

    /// Deletes the dive of a row, with Yes to the question.
    void remove(int row) {
        choose(row);
        dialogs.answer(true);
        control<QAction>("rbmain", "mnuDeleteDive")->trigger();
    }

    /// What the dive screen says in its head; empty where there is none.
    static QString shownDive() {
        return shown("rbinterface")
                   ? control<QWidget>("rbinterface", "txtdiveid")->property("text").toString()
                   : QString();
    }

    static QString field(int number, const char16_t* name) {
        return process()
            .database
            .openRecordset(platform::sqlWith("SELECT * FROM main WHERE DiveID = '", diveid(number), "'"))
            .value(name)
            .text();
    }
    static QString text(const char* query) { return process().database.openRecordset(query).value(0).text(); }
};

/// Whether a line of the list holds the words.
inline bool listSays(const QString& words) {
    const QList<QLabel*> labels = loaded("rbmain")->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [&words](QLabel* label) {
        return label->text().contains(words) && label->text() != words;
    });
}

} // namespace benthor::tests
