#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

namespace benthor::ctl {

// Tables for people, in columns of a terminal.

/// `text` on one line, as it can be shown: what would move the cursor, colour the screen or turn the
/// direction of the writing stands as a blank.
QString shownText(const QString& text);

/// Columns of a terminal that the text takes: 2 for a wide character, 0 for a mark that stands on another.
int displayWidth(QStringView text);

class Table {
public:
    /// A heading that begins with ">" is that of a column of figures, which stand at its right.
    explicit Table(QStringList headings);
    void add(const QStringList& cells);
    /// The heading and the rows. `width`: lines are cut there, with "…" at their end; 0 for none.
    QStringList lines(int width) const;

private:
    std::vector<bool> right_;
    std::vector<QStringList> rows_;
};

} // namespace benthor::ctl
