#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace benthor::guides {

/// The connection tips and the one that is shown, counted from 1. Stepping beyond an end goes on at the
/// other.
class Tips {
public:
    /// Adds each line of the file. Without a name or a file nothing is added. Lines end in LF or CR LF and
    /// are UTF-8; empty ones are passed over.
    void LoadTips(const QString& filename);
    void clear();

    bool isEmpty() const { return tips_.isEmpty(); }
    int count() const { return static_cast<int>(tips_.size()); }
    int CurrentTip() const { return current_; }

    void DoNextTip();
    void DoPreviousTip();
    /// `random(n)`: a whole number from 0 to n - 1.
    void startAt(const std::function<int(int)>& random);
    /// Reads the file anew and begins at any of its tips.
    void open(const QString& filename);

    /// The tip as it is shown: its number, the text, and ">>>Next" but behind the last. Without any tip, how
    /// to make the file.
    QString text() const;

private:
    QStringList tips_;
    int current_ = 1;
};

/// Where the tips stand in the program folder.
inline QString tipsfile() {
    return QStringLiteral("TIPOFDAY.TXT");
}

} // namespace benthor::guides
