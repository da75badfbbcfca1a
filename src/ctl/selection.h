#pragma once

#include "exports/wholedive.h"
#include "platform/database.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace benthor::ctl {

/// Which dives a command is about: the named ones, or all that meet every condition.
struct Selection {
    bool all = false;
    QStringList ids;    ///< as the store spells them: "D0000012"
    QDate since, until; ///< of the start, both inclusive; invalid: no such condition
    QStringList words;  ///< each must occur in some text of the dive

    /// Whether anything was said.
    bool isGiven() const { return all || !ids.isEmpty() || isConditional(); }
    bool isConditional() const { return since.isValid() || until.isValid() || !words.isEmpty(); }
};

/// "12", "D12" and "d0000012" as "D0000012"; other texts as they are.
QString identifierOf(const QString& text);

/// The first and the last day of "2008", "2008-07" or "2008-07-15"; nothing for any other text.
std::optional<std::pair<QDate, QDate>> daysOf(const QString& text);

struct Selected {
    QStringList ids;     ///< by the start of the dive, as the dive list sorts by date
    QStringList missing; ///< identifiers that were asked for and are not there
    int unnamed = 0;     ///< rows that no identifier leads to; counted where all dives are meant
};

/// The dives that are meant; all where nothing is said. A dive without a start meets no condition of a date.
/// StoreError.
Selected selectDives(platform::Database& database, exports::DiveReader& reader, const Selection& selection);

} // namespace benthor::ctl
