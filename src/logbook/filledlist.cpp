#include "logbook/filledlist.h"

#include "logbook/divelist.h"
#include "platform/skiperrors.h"

#include <QSet>

#include <algorithm>

namespace benthor::logbook {

namespace {

using platform::StoredCells;
using platform::StoredStatement;
using platform::StoredValue;

/// One that the store compares byte by byte, but for case.
bool isUsual(const QString& identifier) {
    return !identifier.isEmpty() && std::all_of(identifier.begin(), identifier.end(), [](QChar letter) {
        return letter.unicode() > 0x20 && letter.unicode() < 0x7f;
    });
}

/// Finds out where dives belong: the store itself says which of two stands first.
class Order {
public:
    Order(platform::StoredRows& store, int sortnumber, bool downward)
        : first_(store.prepare("SELECT rowid FROM main WHERE rowid IN (?1, ?2) " +
                               QByteArray::fromStdString(orderof(listquery(sortnumber, downward))) +
                               " LIMIT 1")) {}

    /// The number that the row gets among those that are listed.
    int placeOf(const ListedDives& dives, qint64 row) {
        int from = 1;
        int to = dives.count() + 1;
        while (from < to) {
            const int middle = from + (to - from) / 2;
            if (isFirst(dives.rowNumber(middle), row)) {
                from = middle + 1;
            } else {
                to = middle;
            }
        }
        return from;
    }

private:
    bool isFirst(qint64 row, qint64 other) {
        const auto found = first_.read({StoredValue(row), StoredValue(other)});
        return !found.empty() && found.front().at(0).integer == row;
    }

    StoredStatement first_;
};

/// Takes those dives out. False where one stands there twice.
bool leaveOut(FilledList& list, const QStringList& diveids) {
    const std::vector<int> numbers = list.dives.numbersOf(diveids);
    QSet<QString> found;
    for (const int number : numbers) {
        found += list.dives.diveid(number).toLower();
    }
    if (static_cast<size_t>(found.size()) != numbers.size()) {
        return false;
    }
    list.dives.remove(numbers);
    removenumbers(list.sound, numbers, 0);
    return true;
}

/// Those of the dives that the store has, each at its place. False where one cannot be told from another.
bool bring(FilledList& list, platform::Database& database, const QStringList& diveids) {
    platform::StoredRows store(database);
    StoredStatement rows = store.prepare("SELECT *, rowid FROM main WHERE DiveID = ?1");
    Order order(store, list.sortnumber, list.downward);
    for (const QString& identifier : diveids) {
        int found = 0;
        bool plain = true;
        rows.each({StoredValue(identifier)}, [&](const StoredCells& row) {
            const qint64 number = row.integer(row.count() - 1);
            plain = plain && ++found == 1 && row.placeOf("diveid") == size_t{0};
            const int place = order.placeOf(list.dives, number);
            list.dives.insert(place, row, number);
            list.sound.insert(list.sound.begin() + place, false);
        });
        if (!plain) {
            return false;
        }
    }
    return true;
}

} // namespace

void FilledList::follow(const platform::StoreSpan& act, const QStringList& divesOfAct) {
    if (act.isOnlyOurs() && act.before == stamp) {
        stamp = act.after;
        changed += divesOfAct;
    } else {
        stamp = {};
    }
}

bool FilledList::takeChanges(platform::Database& database, int wantedSort, bool wantedDownward) {
    bool taken = false;
    platform::skipErrors([&] {
        const platform::SteadyReading steady(database);
        if (!stamp.isSome() || sortnumber != wantedSort || downward != wantedDownward ||
            !(database.stamp() == stamp) || !std::all_of(changed.begin(), changed.end(), isUsual) ||
            sound.size() != static_cast<size_t>(dives.count()) + 1) {
            return;
        }
        QStringList diveids = changed;
        for (QString& identifier : diveids) {
            identifier = identifier.toLower();
        }
        diveids.removeDuplicates();
        taken = diveids.isEmpty() || (leaveOut(*this, diveids) && bring(*this, database, diveids));
    });
    changed.clear();
    return taken;
}

} // namespace benthor::logbook
