#include "tests/walk/mergerule.h"

#include <QSet>

#include <algorithm>

namespace benthor::tests {

namespace {

struct Caption {
    const char* field;
    const char* words;
    bool joins;
};
constexpr std::array<Caption, 10> kDetails{{{"UserName", "Diver", false},
                                            {"Location", "Dive name", false},
                                            {"Suit", "S\\N", false},
                                            {"site", "Site", false},
                                            {"weather", "Weather", false},
                                            {"department", "Department", false},
                                            {"divenote", "Dive notes", true},
                                            {"sitenote", "Site notes", true},
                                            {"Coments", "Comments", true},
                                            {"buddylist", "Buddies", false}}};
constexpr qsizetype kMostSerial = 50;

QString bare(const StoredDive& dive, const char* field) {
    return dive.diver.value(QLatin1String(field)).trimmed().toCaseFolded();
}

/// By start code and device, or, where a code is missing, by what the dive was.
bool isSameByWords(const StoredDive& one, const StoredDive& other) {
    const QString code = one.startcode.trimmed();
    const QString otherCode = other.startcode.trimmed();
    if (code.isEmpty() || otherCode.isEmpty()) {
        return !one.started().trimmed().isEmpty() && one.key() == other.key();
    }
    bool known = false;
    bool same = false;
    for (const char* field : {"Suit", "UserName"}) {
        known = known || !bare(one, field).isEmpty() || !bare(other, field).isEmpty();
        same = same || (!bare(one, field).isEmpty() && bare(one, field) == bare(other, field));
    }
    return code == otherCode && (same || !known);
}

/// A dive that may turn out to be the same as another, and its file.
struct Candidate {
    const StoredDive* dive;
    std::optional<QByteArray> file;
    QString mine; ///< its identifier here; empty for one of over there
};

const Candidate* sameDive(const std::vector<Candidate>& dives, const StoredDive& dive,
                          const std::optional<QByteArray>& file) {
    for (const Candidate& one : dives) {
        if (isSameByWords(*one.dive, dive)) {
            return &one;
        }
    }
    for (const Candidate& one : dives) {
        if (file && one.file == file) {
            return &one;
        }
    }
    return nullptr;
}

bool isPlainName(const QString& name) {
    return !name.isEmpty() && !name.contains(u'/') && name != QLatin1String(".") &&
           name != QLatin1String("..");
}

std::optional<QByteArray> fileIn(const QMap<QString, QByteArray>& folder, const QString& name) {
    return isPlainName(name) && folder.contains(name) ? std::optional(folder[name]) : std::nullopt;
}

QString textOf(const StoredDive& dive, const QString& field) {
    return field == QLatin1String("buddylist") ? dive.buddies.join(QLatin1String(", "))
                                               : dive.diver.value(field);
}

std::vector<Difference> differencesOf(const StoredDive& mine, const StoredDive& theirs) {
    std::vector<Difference> differences;
    for (const Caption& detail : kDetails) {
        const QString field = QLatin1String(detail.field);
        const QString there = textOf(theirs, field).trimmed();
        if (!there.isEmpty() && there != textOf(mine, field).trimmed()) {
            differences.push_back({field, textOf(mine, field), textOf(theirs, field)});
        }
    }
    return differences;
}

QString numbered(const QString& name, int number) {
    const qsizetype point = name.lastIndexOf(u'.');
    const qsizetype end = point < 0 ? name.size() : point;
    return number == 1 ? name : name.left(end) + QStringLiteral("-%1").arg(number) + name.mid(end);
}

/// The rows and files of the dives that come.
class Coming {
public:
    Coming(const OtherContents& other, Merged& merged)
        : other_(other)
        , merged_(merged) {
        for (const StoredDive& dive : std::as_const(merged.after.dives)) {
            named_ += dive.dbtxtname.toCaseFolded();
        }
        for (const QString& name : merged.after.trashNames) {
            if (isPlainName(name) && !merged.after.forviewer.contains(name)) {
                named_ += name.toCaseFolded();
            }
        }
    }

    void bring(const StoredRow& row) {
        StoredDive dive = row.dive;
        const std::optional<QByteArray> file = other_.fileOf(dive);
        if (!dive.dbtxtname.isEmpty()) {
            const QString name = freeName(dive.dbtxtname, file);
            if (file) {
                merged_.after.forviewer[name] = *file;
                bringOld(*file);
            } else {
                merged_.fileless += dive.dbtxtname;
            }
            dive.dbtxtname = name;
            named_ += name.toCaseFolded();
        }
        dive.diver[QStringLiteral("Suit")].truncate(kMostSerial);
        const QString diveid = nextIdentifier(merged_.after.dives);
        merged_.after.dives.insert(diveid, dive);
        merged_.came += diveid;
    }

private:
    QString freeName(const QString& name, const std::optional<QByteArray>& file) const {
        for (int number = 1;; ++number) {
            QString free = numbered(name, number);
            const auto there = merged_.after.forviewer.constFind(free);
            const bool stands = there != merged_.after.forviewer.constEnd();
            if (!named_.contains(free.toCaseFolded()) && (!stands || (file && *there == *file))) {
                return free;
            }
        }
    }
    void bringOld(const QByteArray& file) {
        const QString name = other_.kept.key(file);
        for (int number = 1; !name.isEmpty(); ++number) {
            const QString free = numbered(name, number);
            if (!merged_.after.kept.contains(free)) {
                merged_.after.kept.insert(free, file);
            }
            if (merged_.after.kept.value(free) == file) {
                return;
            }
        }
    }

    const OtherContents& other_;
    Merged& merged_;
    QSet<QString> named_;
};

/// Both, without what stands there already: the same merge again adds nothing.
QString joined(const QString& mine, const QString& theirs) {
    const QString lines = u'\n' + mine.trimmed() + u'\n';
    if (mine.trimmed().isEmpty()) {
        return theirs;
    }
    return lines.contains(u'\n' + theirs.trimmed() + u'\n') ? mine : mine + u'\n' + theirs;
}

void takeDetails(StoredDive& dive, const PlannedDive& planned, const std::vector<Take>& wished) {
    for (size_t i = 0; i < wished.size(); ++i) {
        const Difference& difference = planned.differences[i];
        if (wished[i] == Take::Mine) {
            continue;
        }
        if (difference.field == QLatin1String("buddylist")) {
            dive.buddies = planned.there.dive.buddies;
            continue;
        }
        QString& text = dive.diver[difference.field];
        text = wished[i] == Take::Both ? joined(text, difference.theirs) : difference.theirs;
        if (difference.field == QLatin1String("Suit")) {
            text.truncate(kMostSerial);
        }
    }
}

/// A value with a single quote cannot be asked for in a list.
int bringEntries(QMap<QString, QStringList>& lists, const QMap<QString, QStringList>& theirs) {
    int entries = 0;
    for (const QString& table : listTables()) {
        for (const QString& value : theirs.value(table)) {
            const QString bareValue = value.trimmed().toCaseFolded();
            const bool here =
                std::any_of(lists[table].begin(), lists[table].end(), [&bareValue](const QString& one) {
                    return one.trimmed().toCaseFolded() == bareValue;
                });
            if (!bareValue.isEmpty() && !here && !value.contains(u'\'')) {
                lists[table] += value;
                ++entries;
            }
        }
    }
    return entries;
}

} // namespace

std::optional<QByteArray> OtherContents::fileOf(const StoredDive& dive) const {
    return fileIn(forviewer, dive.dbtxtname);
}

OtherContents readOther(const QString& store, const QString& folder) {
    StoreContents contents = readStore(store);
    std::stable_sort(contents.dives.begin(), contents.dives.end(),
                     [](const StoredRow& one, const StoredRow& other) { return one.diveid < other.diveid; });
    return {contents.dives, contents.lists, filesOf(folder + QStringLiteral("/dbtxt")),
            filesOf(folder + QStringLiteral("/old"))};
}

bool PlannedDive::showsAs(const PlannedDive& other) const {
    const auto facts = [](const PlannedDive& one) {
        const StoredDive& dive = one.there.dive;
        return QStringList{QString::number(one.there.number),
                           one.there.diveid,
                           dive.key(),
                           dive.dbtxtname,
                           dive.diver.value(QStringLiteral("Location")),
                           dive.diver.value(QStringLiteral("Suit")),
                           one.mine};
    };
    return facts(*this) == facts(other) && standing == other.standing && differences == other.differences;
}

MergePlan planOf(const Snapshot& own, const OtherContents& other) {
    std::vector<Candidate> known;
    for (auto dive = own.dives.begin(); dive != own.dives.end(); ++dive) {
        known.push_back({&*dive, fileIn(own.forviewer, dive->dbtxtname), dive.key()});
    }
    MergePlan plan;
    for (const StoredRow& row : other.dives) {
        const std::optional<QByteArray> file = other.fileOf(row.dive);
        PlannedDive planned{row, Standing::New, {}, {}};
        if (const Candidate* same = sameDive(known, row.dive, file)) {
            planned.mine = same->mine;
            planned.differences =
                same->mine.isEmpty() ? std::vector<Difference>() : differencesOf(*same->dive, row.dive);
            planned.standing = Standing::Here;
        } else {
            known.push_back({&row.dive, file, {}});
        }
        plan.push_back(planned);
    }
    for (PlannedDive& planned : plan) {
        const auto isOneHere = [&planned](const PlannedDive& one) { return one.mine == planned.mine; };
        if (!planned.mine.isEmpty() && std::count_if(plan.begin(), plan.end(), isOneHere) > 1) {
            std::erase_if(planned.differences, [](const Difference& difference) {
                return difference.field == QLatin1String("Suit") ||
                       difference.field == QLatin1String("UserName");
            });
        }
        if (!planned.differences.empty()) {
            planned.standing = Standing::OtherDetails;
        }
    }
    return plan;
}

bool joins(const QString& field) {
    return std::any_of(kDetails.begin(), kDetails.end(), [&field](const Caption& detail) {
        return detail.joins && field == QLatin1String(detail.field);
    });
}

QString captionOf(const QString& field) {
    const auto found = std::find_if(kDetails.begin(), kDetails.end(), [&field](const Caption& detail) {
        return field == QLatin1String(detail.field);
    });
    return found == kDetails.end() ? QString() : QString::fromLatin1(found->words);
}

std::vector<Wish> firstWishes(const MergePlan& plan) {
    std::vector<Wish> wishes;
    for (const PlannedDive& dive : plan) {
        Wish wish{dive.standing == Standing::New, {}};
        for (const Difference& difference : dive.differences) {
            wish.details.push_back(difference.mine.trimmed().isEmpty() ? Take::Theirs : Take::Mine);
        }
        wishes.push_back(wish);
    }
    return wishes;
}

Merged mergedBy(const Snapshot& own, const OtherContents& other, const MergePlan& plan,
                const std::vector<Wish>& wishes) {
    Merged merged{own, {}, 0, 0, {}, false};
    Coming coming(other, merged);
    for (size_t i = 0; i < plan.size(); ++i) {
        if (wishes[i].ticked && plan[i].standing == Standing::New) {
            coming.bring(plan[i].there);
        }
    }
    for (size_t i = 0; i < plan.size(); ++i) {
        const std::vector<Take>& details = wishes[i].details;
        if (wishes[i].ticked && plan[i].standing == Standing::OtherDetails &&
            std::any_of(details.begin(), details.end(), [](Take take) { return take != Take::Mine; })) {
            takeDetails(merged.after.dives[plan[i].mine], plan[i], details);
            ++merged.details;
        }
    }
    if (!merged.came.isEmpty() || merged.details > 0) {
        merged.entries = bringEntries(merged.after.lists, other.lists);
    }
    merged.changes = merged.after.dives != own.dives || merged.entries > 0;
    return merged;
}

QString nextIdentifier(const QMap<QString, StoredDive>& dives) {
    const int last = dives.isEmpty() ? 0 : dives.lastKey().mid(1).toInt();
    return QStringLiteral("D%1").arg(last + 1, 7, 10, QLatin1Char('0'));
}

} // namespace benthor::tests
