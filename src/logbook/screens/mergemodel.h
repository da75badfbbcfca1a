#pragma once

#include "logbook/merge.h"

#include <QAbstractItemModel>

#include <array>

namespace benthor::logbook {

/// The dives of another logbook in their three groups, with a box for each that can come, and below a dive
/// with other details a line for each difference and what becomes of it.
class MergeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column { Dive, Name, Started, Duration, MaxDepth, Serial, Columns };
    /// The column in which a line of a difference is chosen.
    static constexpr int kChoice = Started;
    static constexpr std::array<MergeGroup, 3> kGroups{MergeGroup::New, MergeGroup::OtherDetails,
                                                       MergeGroup::Here};

    using QAbstractItemModel::QAbstractItemModel;

    void setDives(std::vector<MergeDive> dives);
    const std::vector<MergeDive>& dives() const { return dives_; }
    /// What is ticked and chosen, one for each dive.
    std::vector<MergeChoice> choices() const;
    int comes() const;   ///< new dives that are ticked
    int changes() const; ///< dives here whose details would change

    /// Of the line of a difference: what can be chosen, in words; "Mine", "Theirs" and perhaps "Both".
    QStringList offered(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return Columns; }
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

signals:
    void choiceChanged();

private:
    // An index is a group, a dive of one, or a difference of a dive: its number holds which.
    struct Place {
        int group = -1;
        int dive = -1; ///< into dives_; -1: the group itself
        int difference = -1;
    };
    static quintptr packed(const Place& place);
    Place placeOf(const QModelIndex& index) const;
    int rowInGroup(int dive) const;
    bool isChecked(int dive) const;
    QString groupText(int group) const;
    QVariant diveText(const MergeDive& dive, int column) const;
    QVariant differenceText(const Place& place, int column) const;
    void setChecked(const Place& place, bool checked);

    std::vector<MergeDive> dives_;
    std::array<std::vector<int>, 3> groups_; ///< into dives_
    std::vector<int> rows_;                  ///< of each dive in its group
    std::vector<bool> checked_;
    std::vector<std::vector<TakeDetail>> details_;
};

} // namespace benthor::logbook
