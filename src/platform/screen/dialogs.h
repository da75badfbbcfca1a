#pragma once

#include <QPageLayout>
#include <QString>
#include <memory>

class QPrinter;
class QWidget;

namespace benthor::platform {

/// Where to write, and as what.
struct SaveAnswer {
    QString path;  ///< empty when cancelled
    int type = -1; ///< place of the picked type in the filter, from 0; -1 where it is not known
};

enum class BoxKind { Plain, Information, Warning, Critical, Question };

/// The modal boxes of the program. Screens ask these and nothing else, so that a test can put answers of its
/// own in their place. All ticks are held off while one is up.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    /// Shows `text` until the user closes the box. An empty title stands for the program's name. `below`
    /// stands under the text in smaller words, as the box's informative text.
    virtual void message(QWidget* parent, const QString& text, BoxKind kind = BoxKind::Plain,
                         const QString& title = {}, const QString& below = {}) = 0;

    /// Asks with Yes and No; true for Yes. Return takes No when `noIsDefault`. Closing the box is No. `below`
    /// as in a message.
    virtual bool confirm(QWidget* parent, const QString& text, const QString& title,
                         BoxKind kind = BoxKind::Question, bool noIsDefault = false,
                         const QString& below = {}) = 0;

    /// Path of an existing file, or empty when cancelled. `filter` is "Words (*.txt)|*.txt|All Files
    /// (*.*)|*.*".
    virtual QString openFile(QWidget* parent, const QString& title, const QString& folder,
                             const QString& filter) = 0;

    /// Path of an existing folder, or empty when cancelled. `folder`: where the search begins.
    virtual QString openFolder(QWidget* parent, const QString& title, const QString& folder) = 0;

    /// Path to write to, or empty when cancelled; the box itself asks before a file that is there is taken.
    virtual QString saveFile(QWidget* parent, const QString& title, const QString& folder,
                             const QString& filter) = 0;

    /// The same, with the type that was picked beside it.
    virtual SaveAnswer saveFileAs(QWidget* parent, const QString& title, const QString& folder,
                                  const QString& filter) {
        return {saveFile(parent, title, folder, filter)};
    }

    /// The printer that the user chose, set up as he chose; null when cancelled.
    /// `orientation`: of the page, as the dialog offers it first.
    virtual std::shared_ptr<QPrinter>
    printer(QWidget* parent, QPageLayout::Orientation orientation = QPageLayout::Portrait) = 0;
};

Dialogs& dialogs();

/// Puts `replacement` in the place of the real boxes; null brings those back.
void setDialogs(std::shared_ptr<Dialogs> replacement);

/// While this lives no box comes up: a message is passed over, a question is No, a file or a printer is
/// cancelled.
class NoDialogs {
public:
    NoDialogs();
    ~NoDialogs();
    NoDialogs(const NoDialogs&) = delete;
    NoDialogs& operator=(const NoDialogs&) = delete;
};

/// Whether one of those lives: a No is then nobody's answer.
bool withoutDialogs();

/// "Words (*.txt)|*.txt|All Files (*.*)|*.*" in the toolkit's form, parted by ";;": each description as it
/// reads, and behind it its patterns, which a dialog without the details of its filters does not show. "*.*"
/// takes every file.
QString toolkitFilter(const QString& filter);

} // namespace benthor::platform
