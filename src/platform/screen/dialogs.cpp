#include "platform/screen/dialogs.h"

#include "platform/screen/ticktimer.h"

#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>

namespace benthor::platform {

namespace {

QMessageBox::Icon iconOf(BoxKind kind) {
    switch (kind) {
    case BoxKind::Information:
        return QMessageBox::Information;
    case BoxKind::Warning:
        return QMessageBox::Warning;
    case BoxKind::Critical:
        return QMessageBox::Critical;
    case BoxKind::Question:
        return QMessageBox::Question;
    case BoxKind::Plain:
        break;
    }
    return QMessageBox::NoIcon;
}

/// Lines as a label shows them, whichever way they end.
QString shownLines(QString text) {
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

/// A box hangs on a window that can be seen; on a hidden one it would stand behind everything.
QWidget* visibleWindow(QWidget* parent) {
    return (parent != nullptr && parent->window()->isVisible()) ? parent->window() : nullptr;
}

/// Texts as they stand: names of files and dives come from outside and may look like markup. The label of the
/// informative text comes with the first such text; it is told to be plain before it gets the real one.
void setTexts(QMessageBox& box, const QString& below) {
    box.setTextFormat(Qt::PlainText);
    if (below.isEmpty()) {
        return;
    }
    box.setInformativeText(QStringLiteral(" "));
    for (QLabel* label : box.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
    box.setInformativeText(shownLines(below));
}

class RealDialogs : public Dialogs {
public:
    void message(QWidget* parent, const QString& text, BoxKind kind, const QString& title,
                 const QString& below) override {
        const TickHold hold;
        QMessageBox box(iconOf(kind), title.isEmpty() ? QStringLiteral("Benthor") : title, shownLines(text),
                        QMessageBox::Ok, visibleWindow(parent));
        setTexts(box, below);
        box.exec();
    }

    bool confirm(QWidget* parent, const QString& text, const QString& title, BoxKind kind, bool noIsDefault,
                 const QString& below) override {
        const TickHold hold;
        QMessageBox box(iconOf(kind), title, text, QMessageBox::Yes | QMessageBox::No, visibleWindow(parent));
        setTexts(box, below);
        box.setDefaultButton(noIsDefault ? QMessageBox::No : QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        return box.exec() == QMessageBox::Yes;
    }

    QString openFile(QWidget* parent, const QString& title, const QString& folder,
                     const QString& filter) override {
        const TickHold hold;
        return QFileDialog::getOpenFileName(visibleWindow(parent), title, folder, toolkitFilter(filter),
                                            nullptr, QFileDialog::HideNameFilterDetails);
    }

    QString openFolder(QWidget* parent, const QString& title, const QString& folder) override {
        const TickHold hold;
        return QFileDialog::getExistingDirectory(visibleWindow(parent), title, folder);
    }

    QString saveFile(QWidget* parent, const QString& title, const QString& folder,
                     const QString& filter) override {
        const TickHold hold;
        return QFileDialog::getSaveFileName(visibleWindow(parent), title, folder, toolkitFilter(filter),
                                            nullptr, QFileDialog::HideNameFilterDetails);
    }

    SaveAnswer saveFileAs(QWidget* parent, const QString& title, const QString& folder,
                          const QString& filter) override {
        const TickHold hold;
        const QString types = toolkitFilter(filter);
        QString picked;
        const QString path = QFileDialog::getSaveFileName(visibleWindow(parent), title, folder, types,
                                                          &picked, QFileDialog::HideNameFilterDetails);
        return {path, static_cast<int>(types.split(QLatin1String(";;")).indexOf(picked))};
    }

    std::shared_ptr<QPrinter> printer(QWidget* parent, QPageLayout::Orientation orientation) override {
        const TickHold hold;
        const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
        printer->setPageOrientation(orientation);
        QPrintDialog dialog(printer.get(), visibleWindow(parent));
        return dialog.exec() == QDialog::Accepted ? printer : nullptr;
    }
};

class NoBoxes : public Dialogs {
public:
    void message(QWidget*, const QString&, BoxKind, const QString&, const QString&) override {}
    bool confirm(QWidget*, const QString&, const QString&, BoxKind, bool, const QString&) override {
        return false;
    }
    QString openFolder(QWidget*, const QString&, const QString&) override { return {}; }
    QString openFile(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
    QString saveFile(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
    std::shared_ptr<QPrinter> printer(QWidget*, QPageLayout::Orientation) override { return nullptr; }
};

int withoutBoxes = 0;

std::shared_ptr<Dialogs>& replacementDialogs() {
    static std::shared_ptr<Dialogs> replacement;
    return replacement;
}

} // namespace

Dialogs& dialogs() {
    static RealDialogs real;
    static NoBoxes none;
    if (withoutBoxes > 0) {
        return none;
    }
    const auto& replacement = replacementDialogs();
    return replacement ? *replacement : real;
}

void setDialogs(std::shared_ptr<Dialogs> replacement) {
    replacementDialogs() = std::move(replacement);
}

NoDialogs::NoDialogs() {
    ++withoutBoxes;
}

NoDialogs::~NoDialogs() {
    --withoutBoxes;
}

bool withoutDialogs() {
    return withoutBoxes > 0;
}

QString toolkitFilter(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList result;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString words = parts[i].trimmed();
        const QString patterns =
            parts[i + 1].trimmed() == QLatin1String("*.*") ? QStringLiteral("*") : parts[i + 1].trimmed();
        result += words + QLatin1String(" (") + patterns.simplified().replace(u';', u' ') + u')';
    }
    return result.join(QLatin1String(";;"));
}

} // namespace benthor::platform
