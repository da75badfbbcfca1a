#include "shell/screens/unsavednote.h"

#include "logbook/unsaveddetails.h"
#include "platform/files.h"
#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

namespace benthor::shell {

using platform::ProgramFolder;

namespace {

constexpr qint64 kMostBytes = 1 << 20;
constexpr QSize kTextWindow(640, 560);

QPushButton* makeButton(const char* name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    return button;
}

} // namespace

UnsavedNote::UnsavedNote(QWidget* parent)
    : look::NoticeBand(QString(), parent) {
    setObjectName(QStringLiteral("unsavednote"));
    label()->setObjectName(QStringLiteral("unsavednotewords"));
    label()->setTextFormat(Qt::PlainText);
    label()->setMinimumWidth(1);
    auto* row = static_cast<QHBoxLayout*>(layout());
    row->setStretchFactor(label(), 1);
    row->setSpacing(look::spaceBase);
    auto* show = makeButton("cmdshowunsaved", QStringLiteral("Show it"));
    auto* remove = makeButton("cmdremoveunsaved", QStringLiteral("Remove it"));
    connect(show, &QPushButton::clicked, this, &UnsavedNote::showText);
    connect(remove, &QPushButton::clicked, this, &UnsavedNote::removeText);
    row->addWidget(show);
    row->addWidget(remove);
    hide();
}

void UnsavedNote::lookAgain() {
    const QStringList names = logbook::unsavednames(ProgramFolder::current());
    name_ = names.value(0);
    label()->setText(logbook::unsavedline(names));
    setVisible(!names.isEmpty());
}

/// In a window of its own, so that it can be read and copied from beside the dive's details.
void UnsavedNote::showText() {
    const std::optional<QByteArray> text =
        platform::readFile(ProgramFolder::current().path(name_), kMostBytes);
    if (!text) {
        lookAgain(); // taken away meanwhile
        return;
    }
    auto* words = new QPlainTextEdit(window());
    words->setObjectName(QStringLiteral("unsavedwords"));
    words->setWindowFlags(Qt::Window);
    words->setAttribute(Qt::WA_DeleteOnClose);
    words->setWindowTitle(name_);
    words->setReadOnly(true);
    words->setPlainText(QString::fromUtf8(*text));
    words->resize(look::scaled(kTextWindow.width()), look::scaled(kTextWindow.height()));
    words->show();
}

void UnsavedNote::removeText() {
    const QString name = name_;
    if (platform::dialogs().confirm(
            this, QStringLiteral("Remove the file \"%1\"? What stands in it is gone then.").arg(name),
            QStringLiteral("Benthor"), platform::BoxKind::Question, true)) {
        if (const platform::FileResult removed = platform::removeFile(ProgramFolder::current().path(name));
            !removed) {
            platform::dialogs().message(this, removed.error, platform::BoxKind::Warning);
        }
    }
    lookAgain();
}

} // namespace benthor::shell
