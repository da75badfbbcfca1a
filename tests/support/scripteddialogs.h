#pragma once

#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"

#include <QHash>
#include <QPrinter>
#include <QStringList>
#include <deque>
#include <functional>

namespace benthor::tests {

/// Stands in for the modal boxes: notes what was asked and answers from a list. A question without an answer
/// waiting is answered by No, a file without one by a cancelled dialog. Lives as long as the test wants its
/// answers used.
class ScriptedDialogs {
public:
    struct Asked {
        QString kind; ///< "message", "confirm", "open", "save" or "print"
        QString text;
        QString title;
        QString folder;
        QString filter;
        platform::BoxKind box = platform::BoxKind::Plain;
        bool noIsDefault = false;
        QString below; ///< informative text
    };

    ScriptedDialogs()
        : script_(std::make_shared<Script>()) {
        platform::setDialogs(script_);
    }
    ~ScriptedDialogs() { platform::setDialogs(nullptr); }
    ScriptedDialogs(const ScriptedDialogs&) = delete;
    ScriptedDialogs& operator=(const ScriptedDialogs&) = delete;

    void answer(bool yes) { script_->confirms.push_back(yes); }
    void answerFile(const QString& path) { script_->files.push_back(path); }
    /// The same with a type picked in the dialog: its place in the filter, from 0.
    void answerFile(const QString& path, int type) {
        answerFile(path);
        script_->types[path] = type;
    }
    /// Takes back the file answers that no dialog has asked for.
    void dropFiles() { script_->files.clear(); }
    void dropAnswers() { script_->confirms.clear(); }
    /// A printer that prints into the file, as PDF; without one waiting the dialog is cancelled.
    void answerPrinter(const QString& path) { script_->printers.push_back(path); }
    /// Runs while the next box is up, with ticks held off as they are under a real one.
    void during(std::function<void()> act) { script_->during.push_back(std::move(act)); }

    /// Lets the real boxes come up for as long as `act` takes.
    void stepAside(const std::function<void()>& act) {
        platform::setDialogs(nullptr);
        act();
        platform::setDialogs(script_);
    }

    /// Takes back every answer that waits.
    void forgetAnswers() {
        script_->confirms.clear();
        script_->files.clear();
        script_->printers.clear();
        script_->during.clear();
    }

    const QList<Asked>& asked() const { return script_->asked; }
    QStringList messages() const {
        QStringList result;
        for (const Asked& one : script_->asked) {
            if (one.kind == QLatin1String("message")) {
                result += one.text;
            }
        }
        return result;
    }
    void clear() { script_->asked.clear(); }

private:
    struct Script : platform::Dialogs {
        QList<Asked> asked;
        std::deque<bool> confirms;
        std::deque<QString> files;
        QHash<QString, int> types; ///< by the path that is answered
        std::deque<QString> printers;
        std::deque<std::function<void()>> during;

        void up() {
            if (!during.empty()) {
                const platform::TickHold hold;
                const auto act = std::move(during.front());
                during.pop_front();
                act();
            }
        }
        void message(QWidget*, const QString& text, platform::BoxKind kind, const QString& title,
                     const QString& below) override {
            asked.append({QStringLiteral("message"), text, title, {}, {}, kind, false, below});
            up();
        }
        bool confirm(QWidget*, const QString& text, const QString& title, platform::BoxKind kind,
                     bool noIsDefault, const QString& below) override {
            asked.append({QStringLiteral("confirm"), text, title, {}, {}, kind, noIsDefault, below});
            up();
            if (confirms.empty()) {
                return false;
            }
            const bool yes = confirms.front();
            confirms.pop_front();
            return yes;
        }
        QString file(const QString& kind, const QString& title, const QString& folder,
                     const QString& filter) {
            asked.append({kind, {}, title, folder, filter, platform::BoxKind::Plain, false, {}});
            up();
            if (files.empty()) {
                return {};
            }
            QString path = files.front();
            files.pop_front();
            return path;
        }
        QString openFile(QWidget*, const QString& title, const QString& folder,
                         const QString& filter) override {
            return file(QStringLiteral("open"), title, folder, filter);
        }
        QString openFolder(QWidget*, const QString& title, const QString& folder) override {
            return file(QStringLiteral("folder"), title, folder, {});
        }
        QString saveFile(QWidget*, const QString& title, const QString& folder,
                         const QString& filter) override {
            return file(QStringLiteral("save"), title, folder, filter);
        }
        platform::SaveAnswer saveFileAs(QWidget* parent, const QString& title, const QString& folder,
                                        const QString& filter) override {
            const QString path = saveFile(parent, title, folder, filter);
            return {path, types.value(path, -1)};
        }
        std::shared_ptr<QPrinter> printer(QWidget*, QPageLayout::Orientation orientation) override {
            asked.append({QStringLiteral("print"), {}, {}, {}, {}, platform::BoxKind::Plain, false, {}});
            up();
            if (printers.empty()) {
                return nullptr;
            }
            const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
            printer->setPageOrientation(orientation);
            printer->setOutputFormat(QPrinter::PdfFormat);
            printer->setOutputFileName(printers.front());
            printers.pop_front();
            return printer;
        }
    };

    std::shared_ptr<Script> script_;
};

} // namespace benthor::tests
