#include "tests/logbook/actmodel.h"

#include "platform/storedrows.h"
#include "session/process.h"

#include <algorithm>

namespace benthor::tests {

namespace {

const QStringList& editedFields() {
    static const QStringList names{
        QStringLiteral("UserName"), QStringLiteral("Department"), QStringLiteral("site"),
        QStringLiteral("Location"), QStringLiteral("weather"),    QStringLiteral("Suit"),
        QStringLiteral("divenote"), QStringLiteral("sitenote"),   QStringLiteral("Coments")};
    return names;
}

constexpr int kFirstStart = 800000000;

QByteArray textOf(const platform::StoredRow& row, const QStringList& without) {
    QByteArray text;
    for (const auto& [name, value] : row.fields) {
        if (!without.contains(QString::fromUtf8(name), Qt::CaseInsensitive)) {
            text += name + '=' + QByteArray::number(static_cast<int>(value.type)) + ':' +
                    QByteArray::number(value.integer) + ':' + value.bytes + '\n';
        }
    }
    return text;
}

} // namespace

QMap<QString, int>& ActModel::met() {
    static QMap<QString, int> counts;
    return counts;
}

QString ActModel::nextNumber() const {
    const int last = dives.isEmpty() ? 0 : dives.lastKey().mid(1).toInt();
    return QStringLiteral("D%1").arg(last + 1, 7, 10, QLatin1Char('0'));
}

QString ActModel::numberOf(int serial) const {
    for (auto dive = dives.cbegin(); dive != dives.cend(); ++dive) {
        if (dive->serial == serial) {
            return dive.key();
        }
    }
    return {};
}

void ActModel::import() {
    lastImported = static_cast<int>(waiting.size());
    for (auto file = waiting.cbegin(); file != waiting.cend(); ++file) {
        const QString number = nextNumber();
        leftBuddies_.remove(number);
        ModelDive dive;
        dive.serial = *file;
        dive.name = file.key();
        dives.insert(number, dive);
    }
    waiting.clear();
}

ActModel::Act& ActModel::newAct() {
    std::erase_if(acts_, [](const Act& act) { return !act.done; });
    acts_.push_back({});
    return acts_.back();
}

void ActModel::remove(const QStringList& numbers) {
    if (numbers.isEmpty()) {
        return;
    }
    Act& act = newAct();
    for (const QString& number : numbers) {
        Item item;
        item.order = ++items_;
        item.dive = dives.take(number);
        item.number = number;
        item.gone = now;
        if (waiting.contains(item.dive.name)) {
            item.file = item.dive.name;
            item.fileSerial = waiting.take(item.file);
        }
        leftBuddies_.insert(number, item.dive.details.buddies);
        act.items.push_back(item);
    }
}

void ActModel::save(const QString& number, const QString& site, const QString& note,
                    const QStringList& buddies) {
    ModelDive& dive = dives[number];
    Act act;
    act.isDelete = false;
    act.label = number;
    act.serial = dive.serial;
    act.before = dive.details;
    ModelDetails& details = dive.details;
    for (const QString& field : editedFields()) {
        details.fields[field] = details.fields.value(field).value_or(QString());
    }
    details.fields[QStringLiteral("site")] = site;
    details.fields[QStringLiteral("divenote")] =
        QString(note).replace(QLatin1String("\n"), QLatin1String("\r\n"));
    details.buddies = buddies;
    act.after = details;
    const auto offer = [&](const QString& list, const QString& value) {
        if (!value.isEmpty() && !lists_[list].contains(value)) {
            lists_[list] += value;
            act.entries.push_back({list, value});
        }
    };
    offer(QStringLiteral("site"), site);
    for (const QString& buddy : buddies) {
        offer(QStringLiteral("buddy"), buddy);
    }
    if (!(act.before == act.after) || !act.entries.empty()) {
        newAct() = act;
    }
}

int ActModel::indexOf(bool undo) const {
    const auto done =
        static_cast<int>(std::count_if(acts_.begin(), acts_.end(), [](const Act& act) { return act.done; }));
    const int index = undo ? done - 1 : done;
    return index < static_cast<int>(acts_.size()) ? index : -1;
}

QString ActModel::words(bool undo) const {
    const int index = indexOf(undo);
    if (index < 0) {
        return {};
    }
    const Act& act = acts_[static_cast<size_t>(index)];
    const auto count = act.items.size();
    return act.isDelete ? QStringLiteral("delete of %1 dive%2").arg(count).arg(count == 1 ? "" : "s")
                        : QStringLiteral("details of ") + act.label;
}

ActModel::Turned ActModel::turn(bool undo) {
    const int index = indexOf(undo);
    if (index < 0) {
        return Turned::Nothing;
    }
    Act& act = acts_[static_cast<size_t>(index)];
    if (!(act.isDelete ? turnDelete(act, undo) : turnDetails(act, undo))) {
        ++met()[QStringLiteral("does not fit")];
        dropAct(index);
        return Turned::DoesNotFit;
    }
    act.done = !undo;
    ++met()[(undo ? QStringLiteral("undone ") : QStringLiteral("redone ")) +
            (act.isDelete ? QStringLiteral("delete") : QStringLiteral("details"))];
    return Turned::Done;
}

void ActModel::dropAct(int index) {
    const auto act = acts_.begin() + index;
    for (const Item& item : act->items) {
        if (!item.here) {
            loose_.push_back(item);
        }
    }
    acts_.erase(act);
}

/// The next number where the dive's own is another's.
void ActModel::bring(Item& item) {
    const bool taken = dives.contains(item.number);
    met()[QStringLiteral("new number")] += taken ? 1 : 0;
    item.number = taken ? nextNumber() : item.number;
    leftBuddies_.remove(item.number);
    dives.insert(item.number, item.dive);
    item.here = true;
}

void ActModel::bringFile(Item& item) {
    if (item.file.isEmpty()) {
        return;
    }
    QString name = item.file;
    for (int number = 2; waiting.contains(name) && waiting.value(name) != item.fileSerial; ++number) {
        name = QString(item.file).replace(QLatin1String(".txt"), QStringLiteral("-%1.txt").arg(number));
    }
    waiting[name] = item.fileSerial;
    item.file.clear();
    ++met()[QStringLiteral("file came back")];
}

bool ActModel::turnDelete(Act& act, bool undo) {
    if (undo) {
        if (std::any_of(act.items.begin(), act.items.end(),
                        [this](const Item& item) { return !numberOf(item.dive.serial).isEmpty(); })) {
            return false;
        }
        for (auto item = act.items.rbegin(); item != act.items.rend(); ++item) {
            bring(*item);
        }
        for (Item& item : act.items) {
            bringFile(item);
        }
        return true;
    }
    for (const Item& item : act.items) {
        const QString number = numberOf(item.dive.serial);
        if (number.isEmpty() || !(dives.value(number).details == item.dive.details)) {
            return false;
        }
    }
    QStringList files;
    for (Item& item : act.items) {
        item.number = numberOf(item.dive.serial);
        item.dive = dives.take(item.number);
        item.gone = now;
        item.here = false;
        leftBuddies_.insert(item.number, item.dive.details.buddies);
        if (waiting.contains(item.dive.name)) {
            item.file = item.dive.name;
            item.fileSerial = waiting.value(item.file);
            files += item.file;
        }
    }
    for (const QString& file : files) {
        waiting.remove(file);
    }
    return true;
}

bool ActModel::turnDetails(Act& act, bool undo) {
    const QString number = numberOf(act.serial);
    if (number.isEmpty() || !(dives.value(number).details == (undo ? act.after : act.before))) {
        return false;
    }
    dives[number].details = undo ? act.before : act.after;
    turnEntries(act, undo);
    return true;
}

bool ActModel::isNamed(const Entry& entry) const {
    const bool isSite = entry.list == QLatin1String("site");
    const bool left =
        !isSite && std::any_of(leftBuddies_.begin(), leftBuddies_.end(),
                               [&](const QStringList& some) { return some.contains(entry.value); });
    return left || std::any_of(dives.begin(), dives.end(), [&](const ModelDive& dive) {
               return isSite ? dive.details.fields.value(entry.list) == entry.value
                             : dive.details.buddies.contains(entry.value);
           });
}

void ActModel::turnEntries(Act& act, bool undo) {
    for (Entry& entry : act.entries) {
        QStringList& list = lists_[entry.list];
        if (undo && !isNamed(entry)) {
            list.removeOne(entry.value);
        } else if (!undo && !list.contains(entry.value)) {
            list += entry.value;
        }
    }
}

std::vector<const ActModel::Item*> ActModel::trashed() const {
    std::vector<const Item*> all;
    for (const Act& act : acts_) {
        for (const Item& item : act.items) {
            if (!item.here) {
                all.push_back(&item);
            }
        }
    }
    for (const Item& item : loose_) {
        all.push_back(&item);
    }
    std::sort(all.begin(), all.end(), [](const Item* one, const Item* other) {
        return one->gone != other->gone ? one->gone > other->gone : one->order > other->order;
    });
    return all;
}

QStringList ActModel::trashNames() const {
    QStringList names;
    for (const Item* item : trashed()) {
        names += item->number + QLatin1Char(' ') +
                 item->dive.details.fields.value(QStringLiteral("Location")).value_or(QString());
    }
    return names;
}

/// The act that deleted it means it no longer, and is none where it meant no other.
ActModel::Item ActModel::takeFromTrash(int place) {
    const Item item = *trashed().at(static_cast<size_t>(place));
    const auto isIt = [&item](const Item& one) { return one.order == item.order; };
    for (Act& act : acts_) {
        std::erase_if(act.items, isIt);
    }
    std::erase_if(loose_, isIt);
    std::erase_if(acts_, [](const Act& act) { return act.isDelete && act.items.empty(); });
    return item;
}

void ActModel::backUp() {
    backup_ = {dives, leftBuddies_, lists_};
}

void ActModel::restore() {
    dives = backup_.dives;
    leftBuddies_ = backup_.leftBuddies;
    lists_ = backup_.lists;
    ++met()[QStringLiteral("restored")];
}

/// One that is there stays in the trash.
void ActModel::putBack(int place) {
    if (!numberOf(trashed().at(static_cast<size_t>(place))->dive.serial).isEmpty()) {
        return;
    }
    Item item = takeFromTrash(place);
    bring(item);
    bringFile(item);
    ++met()[QStringLiteral("put back")];
}

void ActModel::forget(int place) {
    takeFromTrash(place);
    ++met()[QStringLiteral("forgotten")];
}

void ActModel::tidy() {
    const QDateTime limit = now.addDays(-30);
    for (int place = static_cast<int>(trashed().size()) - 1; place >= 0; --place) {
        if (trashed().at(static_cast<size_t>(place))->gone < limit) {
            takeFromTrash(place);
            ++met()[QStringLiteral("too old")];
        }
    }
}

QString ActModel::difference() {
    const QString fault = differenceOfDives();
    return fault.isEmpty() ? differenceOfLists() : fault;
}

QString ActModel::differenceOfDives() {
    platform::StoredRows store(process().database);
    QStringList without = editedFields();
    without += QStringLiteral("DiveID");
    const auto rows = store.read("SELECT * FROM main ORDER BY DiveID");
    if (rows.size() != static_cast<size_t>(dives.size())) {
        return QStringLiteral("%1 dives, wanted %2").arg(rows.size()).arg(dives.size());
    }
    auto wanted = dives.begin();
    for (const auto& row : rows) {
        ModelDive& dive = *wanted;
        QByteArray birth = textOf(row, without);
        ModelDetails details;
        int serial = 0;
        for (const auto& [name, value] : row.fields) {
            const QString field = QString::fromUtf8(name);
            if (editedFields().contains(field)) {
                details.fields[field] = value.isNull() ? std::nullopt : std::optional(value.text());
            }
            serial = name == "Startcode" ? value.text().toInt() - kFirstStart : serial;
        }
        const QString number = row.at(0).text();
        for (const char* table : {"gas", "tissue"}) {
            for (const auto& one : store.read(
                     QByteArray("SELECT * FROM ") + table + " WHERE diveid = ?1 ORDER BY rowid", {number})) {
                birth += textOf(one, {QStringLiteral("diveid")});
            }
        }
        for (const auto& one :
             store.read("SELECT buddylist FROM buddylist WHERE diveid = ?1 ORDER BY rowid", {number})) {
            details.buddies += one.at(0).text();
        }
        if (dive.birth.isEmpty() && dive.serial == serial) { // just imported
            dive.birth = birth;
            dive.details = details;
        }
        if (number != wanted.key() || serial != dive.serial || birth != dive.birth ||
            !(details == dive.details)) {
            return QStringLiteral("%1 (%2) is not %3 (%4) as it should be")
                .arg(number)
                .arg(serial)
                .arg(wanted.key())
                .arg(dive.serial);
        }
        ++wanted;
    }
    return {};
}

QString ActModel::differenceOfLists() const {
    platform::StoredRows store(process().database);
    for (auto list = lists_.cbegin(); list != lists_.cend(); ++list) {
        QStringList found;
        for (const auto& row : store.read("SELECT * FROM " + list.key().toLatin1())) {
            found += row.at(0).text();
        }
        QStringList expected = *list;
        found.sort();
        expected.sort();
        if (found != expected) {
            return QStringLiteral("the list %1 has %2").arg(list.key(), found.join(u','));
        }
    }
    qsizetype rows = 0;
    for (const ModelDive& dive : dives) {
        rows += dive.details.buddies.size();
    }
    for (const QStringList& left : leftBuddies_) {
        rows += left.size();
    }
    if (store.read("SELECT COUNT(*) FROM buddylist").front().at(0).integer != rows) {
        return QStringLiteral("rows too many in buddylist, or too few");
    }
    const QString counter = store.read("SELECT serial_no FROM serialno").front().at(0).text();
    const QString highest = dives.isEmpty() ? QStringLiteral("D0000000") : dives.lastKey();
    return counter == highest ? QString() : QStringLiteral("the counter is %1").arg(counter);
}

} // namespace benthor::tests
