#pragma once

#include "exports/lossreport.h"
#include "exports/uddfgases.h"
#include "exports/uddfids.h"
#include "exports/uddfparts.h"
#include "exports/uddfsamples.h"
#include "exports/uddfxml.h"
#include "exports/wholedive.h"

#include <QDate>
#include <QDateTime>

#include <map>

namespace benthor::exports {

/// Writes dives as UDDF 3.2.3, the format that logbooks exchange: one after the other into a device that is
/// open, each handed on before the next. What they refer to, gases, sites, people and equipment, is gathered
/// meanwhile and stands behind them.
///
/// Lengths are metres, whatever the screen shows, times seconds by the device's clock, pressures pascals,
/// temperatures kelvin. The file is well-formed and its identifiers are unique whatever texts a dive holds.
///
/// begin() first, then add() for each dive, then end(). Each throws ExportError when the device does not take
/// the bytes; the file is worth nothing then.
class UddfWriter {
public:
    /// The two halves of add(): what can be made of a dive by itself, on any thread, and its going out.
    struct Prepared {
        explicit Prepared(WholeDive whole);

        WholeDive dive; ///< without its file and its profile
        UddfProfile profile;
        UddfSamples samples; ///< empty where the dive has none
        std::vector<UddfGases::Mix> mixes;
        LostKinds lost; ///< without what shows only when it goes out
    };
    static Prepared prepare(WholeDive dive) { return Prepared(std::move(dive)); }

    /// `version`: of the program. `written`: the moment of the export.
    UddfWriter(QIODevice& device, QString version, QDateTime written);

    void begin();
    /// Dives of one day share a group when they come one behind the other, as they do by their start. A day
    /// that comes again begins another group.
    void add(const Prepared& dive);
    void add(const WholeDive& dive) { add(prepare(dive)); }
    void end();

    /// What had no place and what was made up, of the dives until now.
    const LossReport& report() const { return report_; }

private:
    struct DiveInHand;

    void openGroup(const DiveInHand& hand);
    void closeGroup();
    void writeBefore(DiveInHand& hand);
    void writeLinks(DiveInHand& hand);
    void writeEquipmentUsed(DiveInHand& hand);
    void writeTanks(const DiveInHand& hand);
    void writeAfter(DiveInHand& hand);
    void writeNotes(DiveInHand& hand);
    void tellWithoutRow(const DiveInHand& hand);

    UddfXml xml_;
    QString version_;
    QDateTime written_;
    LossReport report_;
    UddfIds names_;
    UddfGases gases_;
    UddfParts parts_;
    bool anyDive_ = false;
    bool groupIsOpen_ = false;
    QDate day_;                   ///< of the open group; null in one for a single dive
    std::map<QDate, int> groups_; ///< how many a day has
};

} // namespace benthor::exports
