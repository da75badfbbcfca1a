#include "logbook/screens/mergemodel.h"

#include "logbook/divelist.h"
#include "platform/textformat.h"
#include "session/process.h"

namespace benthor::logbook {

namespace {

constexpr int kDepthPosition = 9; // of the table main
constexpr int kGroupBits = 2;
constexpr int kDifferenceBits = 5;
constexpr qsizetype kMostShown = 400; // characters of a text in a line; the column shows what it has room for

QString inOneLine(const QString& text) {
    const QString line = text.simplified();
    return line.size() > kMostShown ? line.left(kMostShown) + QStringLiteral("...") : line;
}

QString wordOf(TakeDetail take) {
    switch (take) {
    case TakeDetail::Mine:
        return QStringLiteral("Mine");
    case TakeDetail::Theirs:
        return QStringLiteral("Theirs");
    case TakeDetail::Both:
        break;
    }
    return QStringLiteral("Both");
}

QString shownMoment(const QString& stored) {
    const QDateTime moment = platform::Value(stored).dateTime();
    return moment.isValid() ? platform::formatDate(moment, u"mmm/dd/yyyy hh:mm:ss") : stored;
}

bool isNumber(int column) {
    return column == MergeModel::Duration || column == MergeModel::MaxDepth;
}

} // namespace

void MergeModel::setDives(std::vector<MergeDive> dives) {
    beginResetModel();
    dives_ = std::move(dives);
    groups_ = {};
    rows_.assign(dives_.size(), 0);
    checked_.assign(dives_.size(), false);
    details_.assign(dives_.size(), {});
    for (size_t i = 0; i < dives_.size(); ++i) {
        for (size_t group = 0; group < kGroups.size(); ++group) {
            if (kGroups.at(group) == dives_[i].group) {
                rows_[i] = static_cast<int>(groups_.at(group).size());
                groups_.at(group).push_back(static_cast<int>(i));
            }
        }
        checked_[i] = dives_[i].group == MergeGroup::New;
        for (const DetailDifference& difference : dives_[i].differences) {
            details_[i].push_back(plainchoice(difference));
        }
    }
    endResetModel();
    emit choiceChanged();
}

std::vector<MergeChoice> MergeModel::choices() const {
    std::vector<MergeChoice> choices(dives_.size());
    for (size_t i = 0; i < dives_.size(); ++i) {
        choices[i].comes = checked_[i] && dives_[i].group == MergeGroup::New;
        if (checked_[i] && dives_[i].group == MergeGroup::OtherDetails) {
            choices[i].details = details_[i];
        }
    }
    return choices;
}

int MergeModel::comes() const {
    int count = 0;
    for (size_t i = 0; i < dives_.size(); ++i) {
        count += checked_[i] && dives_[i].group == MergeGroup::New ? 1 : 0;
    }
    return count;
}

int MergeModel::changes() const {
    int count = 0;
    for (const int dive : groups_[1]) {
        const auto i = static_cast<size_t>(dive);
        count += checked_[i] && std::any_of(details_[i].begin(), details_[i].end(),
                                            [](TakeDetail one) { return one != TakeDetail::Mine; })
                     ? 1
                     : 0;
    }
    return count;
}

QStringList MergeModel::offered(const QModelIndex& index) const {
    const Place place = placeOf(index);
    if (place.difference < 0) {
        return {};
    }
    QStringList words{wordOf(TakeDetail::Mine), wordOf(TakeDetail::Theirs)};
    if (dives_[static_cast<size_t>(place.dive)].differences[static_cast<size_t>(place.difference)].joins) {
        words += wordOf(TakeDetail::Both);
    }
    return words;
}

quintptr MergeModel::packed(const Place& place) {
    return (static_cast<quintptr>(place.dive + 1) << (kGroupBits + kDifferenceBits)) |
           (static_cast<quintptr>(place.difference + 1) << kGroupBits) | static_cast<quintptr>(place.group);
}

MergeModel::Place MergeModel::placeOf(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    const quintptr number = index.internalId();
    return {static_cast<int>(number & ((1U << kGroupBits) - 1)),
            static_cast<int>(number >> (kGroupBits + kDifferenceBits)) - 1,
            static_cast<int>((number >> kGroupBits) & ((1U << kDifferenceBits) - 1)) - 1};
}

QModelIndex MergeModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || column >= Columns || row >= rowCount(parent)) {
        return {};
    }
    Place place = placeOf(parent);
    if (place.group < 0) {
        place.group = row;
    } else if (place.dive < 0) {
        place.dive = groups_.at(static_cast<size_t>(place.group))[static_cast<size_t>(row)];
    } else {
        place.difference = row;
    }
    return createIndex(row, column, packed(place));
}

QModelIndex MergeModel::parent(const QModelIndex& index) const {
    Place place = placeOf(index);
    if (place.dive < 0) {
        return {};
    }
    if (place.difference >= 0) {
        place.difference = -1;
        return createIndex(rows_[static_cast<size_t>(place.dive)], 0, packed(place));
    }
    place.dive = -1;
    return createIndex(place.group, 0, packed(place));
}

int MergeModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid() && parent.column() > 0) {
        return 0;
    }
    const Place place = placeOf(parent);
    if (place.group < 0) {
        return dives_.empty() ? 0 : static_cast<int>(kGroups.size());
    }
    if (place.dive < 0) {
        return static_cast<int>(groups_.at(static_cast<size_t>(place.group)).size());
    }
    return place.difference < 0 ? static_cast<int>(dives_[static_cast<size_t>(place.dive)].differences.size())
                                : 0;
}

QString MergeModel::groupText(int group) const {
    static constexpr std::array<const char*, 3> kTitles{"Not here yet", "Here with other details",
                                                        "Here already"};
    const auto number = static_cast<size_t>(group);
    return QStringLiteral("%1 (%2)").arg(QLatin1String(kTitles.at(number))).arg(groups_.at(number).size());
}

QVariant MergeModel::diveText(const MergeDive& dive, int column) const {
    switch (column) {
    case Dive:
        return dive.mine.isEmpty() ? dive.diveid : QStringLiteral("%1, here %2").arg(dive.diveid, dive.mine);
    case Name:
        return dive.name.trimmed();
    case Started:
        return shownMoment(dive.started);
    case Duration:
        return dive.duration;
    case MaxDepth:
        return celltext(kDepthPosition, dive.maxdepth, process().depthunit); // as in the dive list
    default:
        return dive.serial;
    }
}

QVariant MergeModel::differenceText(const Place& place, int column) const {
    const auto dive = static_cast<size_t>(place.dive);
    const auto number = static_cast<size_t>(place.difference);
    const DetailDifference& difference = dives_[dive].differences[number];
    const QString mine =
        difference.mine.trimmed().isEmpty() ? QStringLiteral("nothing") : inOneLine(difference.mine);
    switch (column) {
    case Dive:
        return difference.caption;
    case Name:
        return QStringLiteral("mine: %1\ntheirs: %2").arg(mine, inOneLine(difference.theirs));
    case kChoice:
        return wordOf(details_[dive][number]);
    default:
        return {};
    }
}

bool MergeModel::isChecked(int dive) const {
    return checked_[static_cast<size_t>(dive)];
}

QVariant MergeModel::data(const QModelIndex& index, int role) const {
    const Place place = placeOf(index);
    if (place.group < 0) {
        return {};
    }
    const bool isGroup = place.dive < 0;
    if (role == Qt::CheckStateRole && index.column() == 0 && (flags(index) & Qt::ItemIsUserCheckable)) {
        if (!isGroup) {
            return isChecked(place.dive) ? Qt::Checked : Qt::Unchecked;
        }
        const auto& dives = groups_.at(static_cast<size_t>(place.group));
        const auto checked =
            std::count_if(dives.begin(), dives.end(), [this](int dive) { return isChecked(dive); });
        return checked == 0                                      ? Qt::Unchecked
               : checked == static_cast<qsizetype>(dives.size()) ? Qt::Checked
                                                                 : Qt::PartiallyChecked;
    }
    if (role == Qt::ToolTipRole && place.difference >= 0) {
        const DetailDifference& difference =
            dives_[static_cast<size_t>(place.dive)].differences[static_cast<size_t>(place.difference)];
        return QStringLiteral("Mine:\n%1\n\nTheirs:\n%2").arg(difference.mine, difference.theirs);
    }
    if (role == Qt::TextAlignmentRole && place.difference < 0 && isNumber(index.column())) {
        return (Qt::AlignRight | Qt::AlignVCenter).toInt();
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        return {};
    }
    if (isGroup) {
        return index.column() == 0 ? groupText(place.group) : QVariant();
    }
    return place.difference < 0 ? diveText(dives_[static_cast<size_t>(place.dive)], index.column())
                                : differenceText(place, index.column());
}

void MergeModel::setChecked(const Place& place, bool checked) {
    if (place.dive >= 0) {
        checked_[static_cast<size_t>(place.dive)] = checked;
        return;
    }
    for (const int dive : groups_.at(static_cast<size_t>(place.group))) {
        checked_[static_cast<size_t>(dive)] = checked;
    }
}

bool MergeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const Place place = placeOf(index);
    if (role == Qt::CheckStateRole && (flags(index) & Qt::ItemIsUserCheckable)) {
        setChecked(place, value.toInt() != Qt::Unchecked);
    } else if (role == Qt::EditRole && place.difference >= 0 && offered(index).contains(value.toString())) {
        const auto dive = static_cast<size_t>(place.dive);
        details_[dive][static_cast<size_t>(place.difference)] =
            static_cast<TakeDetail>(offered(index).indexOf(value.toString()));
        checked_[dive] = true; // who chooses wants it done
    } else {
        return false;
    }
    const QModelIndex group = this->index(place.group, 0);
    emit dataChanged(group, group);
    if (rowCount(group) > 0) {
        emit dataChanged(this->index(0, 0, group), this->index(rowCount(group) - 1, Columns - 1, group));
    }
    if (place.difference >= 0) {
        emit dataChanged(index, index);
    }
    emit choiceChanged();
    return true;
}

Qt::ItemFlags MergeModel::flags(const QModelIndex& index) const {
    const Place place = placeOf(index);
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (place.group < 0) {
        return Qt::NoItemFlags;
    }
    const bool canCome = kGroups.at(static_cast<size_t>(place.group)) != MergeGroup::Here &&
                         !groups_.at(static_cast<size_t>(place.group)).empty();
    if (place.difference < 0 && index.column() == 0 && canCome) {
        flags |= Qt::ItemIsUserCheckable;
    }
    if (place.difference >= 0 && index.column() == kChoice) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

QVariant MergeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static constexpr std::array<const char*, Columns> kHeadings{"Dive",     "Dive Name", "Started",
                                                                "Duration", "MaxDepth",  "S\\N"};
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && isNumber(section)) {
        return (Qt::AlignRight | Qt::AlignVCenter).toInt();
    }
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return QAbstractItemModel::headerData(section, orientation, role);
    }
    return QLatin1String(kHeadings.at(static_cast<size_t>(section)));
}

} // namespace benthor::logbook
