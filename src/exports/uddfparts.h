#pragma once

#include "exports/uddfxml.h"

#include <QHash>
#include <QStringList>

#include <array>
#include <bitset>

namespace benthor::exports {

/// What the dives of a file refer to beside their gases: sites, people, equipment. It is gathered while the
/// dives are written and stands behind them. Each name is kept once.
class UddfParts {
public:
    static constexpr qsizetype kLongestName = 1000;
    static constexpr std::size_t kCells = 3;
    static constexpr std::size_t kTanks = 2; ///< oxygen, diluent

    static QString cellId(std::size_t cell);
    static QString tankId(std::size_t tank);
    static QString rebreatherId() { return QStringLiteral("rebreather"); }

    /// Identifiers to refer by; `name` is not empty, and a long one ends behind kLongestName characters.
    QString site(const QString& name) { return numberOf(sites_, {kept(name)}, u"site-"); }
    QString buddy(const QString& name) { return numberOf(buddies_, {kept(name)}, u"buddy-"); }
    /// Of the device that made a dive; nothing of it need be known.
    QString device(const QString& serial, const QString& type, const QString& version);

    void useRebreather() { rebreather_ = true; }
    void useCell(std::size_t cell) { cells_.set(cell); }
    void useTank(std::size_t tank) { tanks_.set(tank); }

    /// Whether a name was cut since the last call, and whether one held characters that XML cannot hold.
    bool takeCut() { return std::exchange(cut_, false); }
    bool takeReplaced() { return std::exchange(replaced_, false); }

    /// The elements divesite, where there is a site, and diver, where there is anything to tell.
    void write(UddfXml& xml) const;

private:
    struct Named {
        QHash<QStringList, int> numbers; ///< from 1
        std::vector<QStringList> texts;
    };

    static QString numberOf(Named& named, const QStringList& texts, QStringView prefix);
    QString kept(const QString& name);
    void writeEquipment(UddfXml& xml) const;

    Named sites_, buddies_, devices_;
    bool rebreather_ = false;
    std::bitset<kCells> cells_;
    std::bitset<kTanks> tanks_;
    bool cut_ = false;
    bool replaced_ = false;
};

} // namespace benthor::exports
