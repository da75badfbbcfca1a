#pragma once

#include "logbook/actrecorder.h"
#include "platform/database.h"
#include "store/diveidentity.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>

namespace benthor::logbook {

// The summary of one dive and what its diver adds to it. Texts have LF line ends; the store keeps CR LF.

constexpr int kPictures = 3;

/// What the device said, as it is shown.
struct DeviceSays {
    QString diveid;
    QString divedate; ///< "dd/mm/yyyy hh:nn:ss", as is timeup
    QString timeup;
    QString duration;
    QString maxdepth; ///< in the unit of depthcaption
    QString depthcaption;
    QString interval;
    QString version;
    QString otu;
    QString atmos;
    QString dusage;
};

/// What the diver writes.
struct DiverAdds {
    QString username;
    QString department;
    QString site;
    QString location;
    QString weather;
    QString suit;
    QString divenote;
    QString sitenote;
    QString comments;
    QStringList buddies;
    bool operator==(const DiverAdds&) const = default;
};

struct PickLists {
    QStringList departments;
    QStringList sites;
    QStringList weathers;
    QStringList buddies;
};

struct SavedDetails {
    QStringList refused;
    QString notTakenBack;       ///< why the save cannot be taken back; empty where it can
    platform::StoreSpan span{}; ///< of the store, around the save
};

struct DiveDetails {
    store::DiveIdentity dive;
    DeviceSays device;
    DiverAdds diver;
};

/// The dive of that identifier; a StoreError when there is none. `depthunit`: "Feet", anything else is
/// metres. An empty dive note comes with the headings of divenotetemplate().
DiveDetails loaddetails(platform::Database& database, const QString& diveid, QStringView depthunit);
PickLists loadpicklists(platform::Database& database);

/// Stores all of it in one transaction: the dive's row, what is new for the pick lists, the buddies in their
/// order, and keeps it as an act that can be taken back, unless the store was so before. Returns the values
/// that a pick list cannot take because they hold a single quote; they stand in the dive's own rows all the
/// same. StoreError: nothing was stored; one of them is that the dive is no longer in the store, even though
/// its identifier may be another dive's by now.
SavedDetails savedetails(platform::Database& database, const store::DiveIdentity& dive,
                         const DiverAdds& diver);

QString divenotetemplate();

/// Paths of the pictures, by index; empty where there is none. Each stands in a line of the site note, behind
/// the marker "Imageplz" and its index.
std::array<QString, kPictures> picturepaths(const QString& sitenote);
/// The site note with the picture's line cut out, where there was one, and the new one at its end.
QString withpicture(const QString& sitenote, int index, const QString& path);
/// The site note with the picture's line cut out.
QString withoutpicture(const QString& sitenote, int index);

} // namespace benthor::logbook
