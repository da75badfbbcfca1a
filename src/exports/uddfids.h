#pragma once

#include <QHash>
#include <QSet>
#include <QString>

namespace benthor::exports {

/// Names for the identifiers of a file, each given once. A damaged store may bear any text as an identifier,
/// and the same one twice.
class UddfIds {
public:
    /// Letters, digits, '.', '-' and '_' of `text`, any other character as '_', at most 64 of them; behind
    /// that a number where the name was given before. It may begin with any of these: what uses it puts a
    /// letter in front.
    QString unique(const QString& text);

private:
    QSet<QString> taken_;
    QHash<QString, int> last_; ///< the number behind a name that came before
};

} // namespace benthor::exports
