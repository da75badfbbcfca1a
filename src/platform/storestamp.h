#pragma once

#include <QtGlobal>

namespace benthor::platform {

/// Two that are equal say that nothing in the store has changed from one to the other, by whomever.
struct StoreStamp {
    quint64 opening = 0; ///< of the store, counted for the whole process; 0: nothing is known
    qint64 others = 0;   ///< another one behind a change by another handle
    qint64 form = 0;     ///< another one behind a change of the tables' form
    qint64 own = 0;      ///< rows that were changed through this handle

    bool isSome() const { return opening != 0; }
    bool operator==(const StoreStamp&) const = default;
};

/// Before and behind the work of one routine.
struct StoreSpan {
    StoreStamp before;
    StoreStamp after;

    /// Whatever changed in the store meanwhile, the routine did.
    bool isOnlyOurs() const {
        return before.isSome() && before.opening == after.opening && before.others == after.others &&
               before.form == after.form;
    }
};

} // namespace benthor::platform
