#pragma once

#include "firmware/screens/runprog.h"
#include "session/process.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

namespace benthor::tests {

/// The screen over processes of the test's making.
struct RunProgStage {
    RunProgStage() {
        firmware::ProcessSource source;
        source.list = [this] { return running; };
        source.end = [this](const platform::RunningProcess& process) {
            asked.push_back(process);
            if (answer == platform::Ending::Asked) {
                std::erase_if(running,
                              [&](const platform::RunningProcess& one) { return one.id == process.id; });
            }
            return answer;
        };
        screen = new firmware::RunProg(std::move(source));
    }
    ~RunProgStage() { delete screen.data(); }
    RunProgStage(const RunProgStage&) = delete;
    RunProgStage& operator=(const RunProgStage&) = delete;

    /// As many processes as a display does not hold; ids from 101 in the order of the names.
    void runMany() {
        running.clear();
        for (int i = 101; i <= 300; ++i) {
            running.push_back({i, static_cast<quint64>(i), QStringLiteral("program %1").arg(i)});
        }
    }

    template <class T> T* control(const char* name) {
        T* found = screen->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no control %s", name);
        }
        return found;
    }
    QListWidget* list() { return control<QListWidget>("List1"); }
    QLineEdit* filter() { return control<QLineEdit>("filter"); }
    QString count() { return control<QLabel>("count")->text(); }
    bool canClose() { return control<QPushButton>("Command2")->isEnabled(); }
    void click(const char* name) { QTest::mouseClick(control<QWidget>(name), Qt::LeftButton); }
    void clickRow(int row) {
        list()->scrollToItem(list()->item(row));
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          list()->visualItemRect(list()->item(row)).center());
    }
    QStringList names() {
        QStringList all;
        for (int row = 0; row < list()->count(); ++row) {
            all += list()->item(row)->text();
        }
        return all;
    }
    QList<int> ids() {
        QList<int> all;
        for (int row = 0; row < list()->count(); ++row) {
            all += list()->item(row)->data(Qt::UserRole).toInt();
        }
        return all;
    }
    /// The id of the chosen process, 0 for none.
    int chosen() {
        const QList<QListWidgetItem*> items = list()->selectedItems();
        return items.isEmpty() ? 0 : items.first()->data(Qt::UserRole).toInt();
    }
    int topmost() { return list()->itemAt(list()->viewport()->rect().topLeft())->data(Qt::UserRole).toInt(); }

    TestSettings settings;
    TestFolder folder{TestFolder::Store::Missing};
    ScriptedDialogs dialogs;
    std::vector<platform::RunningProcess> running{{7, 70, "zip"}, {12, 120, "Editor"}, {9, 90, "editor"}};
    std::vector<platform::RunningProcess> asked; ///< ones that were to be ended
    platform::Ending answer = platform::Ending::Asked;
    QPointer<firmware::RunProg> screen;
};

} // namespace benthor::tests
