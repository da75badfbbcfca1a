#pragma once

#include "divefiles/importer.h"

#include <functional>

namespace benthor::tests {

/// Writes down what an import asks of its screen; `at` gets each step as it comes.
class RecordingScreen : public divefiles::ImportScreen {
public:
    void runbegins() override { step(QStringLiteral("runbegins")); }
    void nofiles() override { step(QStringLiteral("nofiles")); }
    void filelisted(const QString& name) override { step(QStringLiteral("filelisted ") + name); }
    void totals(int files, qint64 bytes) override {
        step(QStringLiteral("totals %1 %2").arg(files).arg(bytes));
    }
    void repaint() override { step(QStringLiteral("repaint")); }
    void filebegins(int number, const QString& text) override {
        step(QStringLiteral("filebegins %1 %2").arg(QString::number(number), text));
    }
    void yield() override { step(QStringLiteral("yield")); }
    void stopenabled() override { step(QStringLiteral("stopenabled")); }
    void message(const QString& text, const QString& below) override {
        messages += text;
        belows += below;
        step(QStringLiteral("message ") + text);
    }
    void lastfiledone() override { step(QStringLiteral("lastfiledone")); }
    void showdives() override { step(QStringLiteral("showdives")); }
    void runbroke() override { step(QStringLiteral("runbroke")); }
    void runends() override { step(QStringLiteral("runends")); }

    void clear() {
        steps.clear();
        messages.clear();
        belows.clear();
    }

    QStringList steps;
    QStringList messages;
    QStringList belows; ///< what stood below each
    std::function<void(const QString& step)> at;

private:
    void step(const QString& text) {
        steps += text;
        if (at) {
            at(text);
        }
    }
};

} // namespace benthor::tests
