#include "exports/uddf.h"

#include "exports/uddflosses.h"

#include <QRegularExpression>

namespace benthor::exports {

namespace {

constexpr double kStandInInterval = 10; ///< as the importer has it for a file that tells none
constexpr double kShortestInterval = 0.001;
constexpr double kLongestInterval = 86400;
constexpr double kMillibarPerBar = 1000;

QString textOf(const WholeDive& dive, QStringView field) {
    return fieldOf(dive.store, field).value_or(QString()).trimmed();
}

bool hasStart(const WholeDive& dive) {
    constexpr int kLastYear = 9999;
    const QDateTime& start = dive.figures.start;
    return start.isValid() && start.date().year() >= 1 && start.date().year() <= kLastYear;
}

QString momentText(const QDateTime& moment) {
    return moment.date().toString(Qt::ISODate) + u'T' + moment.time().toString(Qt::ISODate);
}

/// The number that the device's logbook gave the dive; nothing where it has none above 0.
std::optional<int> diveNumber(const QString& id) {
    static const QRegularExpression form(QStringLiteral("^[Dd]?(\\d{1,9})$"));
    const int number = form.match(id).capturedView(1).toInt();
    return number > 0 ? std::optional(number) : std::nullopt;
}

/// Seconds between samples. Every sample must have a time, and a later one a later time: nothing where the
/// dive's interval does not give that.
std::optional<double> intervalOf(const WholeDive& dive) {
    const double interval = dive.figures.interval.value_or(0);
    return interval >= kShortestInterval && interval <= kLongestInterval ? std::optional(interval)
                                                                         : std::nullopt;
}

} // namespace

UddfWriter::Prepared::Prepared(WholeDive whole)
    : dive(std::move(whole))
    , profile(dive)
    , mixes(UddfGases::mixesOf(dive)) {
    if (dive.samples() > 0) {
        samples = uddfSamples(dive, profile, intervalOf(dive).value_or(kStandInInterval));
    }
    lost = samples.lost;
    addUddfLosses(dive, lost);
    if (profile.impossible) {
        lost.insert(QStringLiteral("readings that cannot be"));
    }
    dive.file.reset();
    dive.profile = {};
}

/// A dive while it is written.
struct UddfWriter::DiveInHand {
    const WholeDive& dive;
    const UddfProfile& profile;
    const QString name; ///< in the file
    LostKinds lost;

    const QString& id() const { return dive.figures.id; }
};

UddfWriter::UddfWriter(QIODevice& device, QString version, QDateTime written)
    : xml_(device)
    , version_(std::move(version))
    , written_(std::move(written)) {}

void UddfWriter::begin() {
    xml_.begin();
    xml_.open(QStringLiteral("generator"));
    xml_.leaf(QStringLiteral("name"), QStringLiteral("Benthor"));
    xml_.leaf(QStringLiteral("type"), QStringLiteral("logbook"));
    if (!version_.isEmpty()) {
        xml_.text(QStringLiteral("version"), version_);
    }
    if (written_.isValid()) {
        xml_.leaf(QStringLiteral("datetime"), momentText(written_));
    }
    xml_.close();
}

void UddfWriter::add(const Prepared& prepared) {
    const WholeDive& dive = prepared.dive;
    DiveInHand hand{dive, prepared.profile, names_.unique(dive.figures.id), prepared.lost};
    ++report_.dives;
    if (hand.name != hand.id()) {
        report_.addMust(hand.id(),
                        QStringLiteral("no identifier of its own that the file can hold; d-%1 stands for it")
                            .arg(hand.name));
    }
    openGroup(hand);
    xml_.open(QStringLiteral("dive"));
    xml_.attribute(QStringLiteral("id"), QStringLiteral("d-") + hand.name);
    writeBefore(hand);
    writeTanks(hand);
    if (!prepared.samples.bytes.isEmpty()) {
        if (!intervalOf(dive)) {
            report_.addMust(hand.id(), QStringLiteral("no interval; 10 seconds stand for it"));
        }
        writeUddfSamples(xml_, prepared.samples, hand.name);
        tellWithoutRow(hand);
    } else {
        report_.addWithoutSamples(hand.id(), dive.withoutSamples);
    }
    writeAfter(hand);
    xml_.close();
    gases_.add(hand.name, prepared.mixes, hand.profile.withoutRow);
    const bool replacedInParts = parts_.takeReplaced();
    if (xml_.takeReplaced() || replacedInParts || prepared.samples.replaced) {
        hand.lost.insert(QStringLiteral("characters that XML cannot hold"));
    }
    if (parts_.takeCut()) {
        hand.lost.insert(QStringLiteral("the rest of long names"));
    }
    for (const QString& kind : hand.lost) {
        report_.lose(kind);
    }
}

void UddfWriter::end() {
    closeGroup();
    if (anyDive_) {
        xml_.close();
    }
    gases_.write(xml_);
    parts_.write(xml_);
    xml_.end();
}

void UddfWriter::openGroup(const DiveInHand& hand) {
    const QDate day = hasStart(hand.dive) ? hand.dive.figures.start.date() : QDate();
    if (groupIsOpen_ && day.isValid() && day == day_) {
        return;
    }
    closeGroup();
    if (!anyDive_) {
        xml_.open(QStringLiteral("profiledata"));
        anyDive_ = true;
    }
    QString id = QStringLiteral("group-of-") + hand.name;
    if (day.isValid()) {
        const int number = ++groups_[day];
        id = QStringLiteral("group-") + day.toString(Qt::ISODate) +
             (number > 1 ? u'-' + QString::number(number) : QString());
    }
    xml_.open(QStringLiteral("repetitiongroup"));
    xml_.attribute(QStringLiteral("id"), id);
    groupIsOpen_ = true;
    day_ = day;
}

void UddfWriter::closeGroup() {
    if (groupIsOpen_) {
        xml_.close();
        groupIsOpen_ = false;
    }
}

void UddfWriter::writeBefore(DiveInHand& hand) {
    const WholeDive& dive = hand.dive;
    xml_.open(QStringLiteral("informationbeforedive"));
    writeLinks(hand);
    if (const std::optional<int> number = diveNumber(hand.id())) {
        xml_.leaf(QStringLiteral("divenumber"), QString::number(*number));
    }
    if (hasStart(dive)) {
        xml_.leaf(QStringLiteral("datetime"), momentText(dive.figures.start));
    } else {
        xml_.leaf(QStringLiteral("datetime"), QStringLiteral("1991-12-31T00:00:00"));
        report_.addMust(hand.id(), QStringLiteral("no start; 1991-12-31T00:00:00 stands for it"));
    }
    writeEquipmentUsed(hand);
    xml_.leaf(QStringLiteral("apparatus"), QStringLiteral("rebreather"));
    const double millibar = plainNumber(textOf(dive, u"datmos")).value_or(0);
    if (isUddfPressure(millibar)) {
        xml_.leaf(QStringLiteral("surfacepressure"), pascalText(millibar / kMillibarPerBar));
    }
    xml_.close();
}

void UddfWriter::writeLinks(DiveInHand& hand) {
    if (const QString site = textOf(hand.dive, u"site"); !site.isEmpty()) {
        xml_.link(parts_.site(site));
    }
    QSet<QString> linked; // who stands in a dive's list twice was there once
    for (const QString& buddy : hand.dive.buddies) {
        const QString id = buddy.trimmed().isEmpty() ? QString() : parts_.buddy(buddy);
        if (!id.isEmpty() && !linked.contains(id)) {
            xml_.link(id);
            linked += id;
        }
    }
}

void UddfWriter::writeEquipmentUsed(DiveInHand& hand) {
    const WholeDive& dive = hand.dive;
    parts_.useRebreather();
    xml_.open(QStringLiteral("equipmentused"));
    const QString serial = dive.figures.serial.value_or(QString()).trimmed();
    const QString version = dive.figures.version.value_or(QString()).trimmed();
    const QString type = textOf(dive, u"systemid");
    if (!serial.isEmpty() || !version.isEmpty() || !type.isEmpty()) {
        xml_.link(parts_.device(serial, type, version));
    }
    xml_.link(UddfParts::rebreatherId());
    for (std::size_t cell = 0; cell < UddfParts::kCells; ++cell) {
        if (hand.profile.cells[cell]) {
            parts_.useCell(cell);
        }
    }
    for (std::size_t tank = 0; tank < UddfParts::kTanks; ++tank) {
        if (hand.profile.tanks[tank].first > 0) {
            parts_.useTank(tank);
            xml_.link(UddfParts::tankId(tank));
        }
    }
    xml_.close();
}

void UddfWriter::writeTanks(const DiveInHand& hand) {
    for (std::size_t tank = 0; tank < UddfParts::kTanks; ++tank) {
        const UddfProfile::Pressures& pressures = hand.profile.tanks[tank];
        if (pressures.first > 0) {
            xml_.open(QStringLiteral("tankdata"));
            xml_.link(UddfParts::tankId(tank));
            xml_.leaf(QStringLiteral("tankpressurebegin"), pascalText(pressures.first));
            xml_.leaf(QStringLiteral("tankpressureend"), pascalText(pressures.last));
            xml_.close();
        }
    }
}

void UddfWriter::writeAfter(DiveInHand& hand) {
    const DiveFigures& figures = hand.dive.figures;
    const auto must = [&](const QString& element, std::optional<double> value, const char* what) {
        const bool isThere = value && *value >= 0 && *value <= kMostOfAll;
        if (!isThere) {
            report_.addMust(hand.id(), QStringLiteral("no %1; 0 stands for it").arg(QLatin1String(what)));
        }
        xml_.leaf(element, decimalText(isThere ? *value : 0));
    };
    xml_.open(QStringLiteral("informationafterdive"));
    if (hand.profile.coldest) {
        xml_.leaf(QStringLiteral("lowesttemperature"), kelvinText(*hand.profile.coldest));
    }
    must(QStringLiteral("greatestdepth"), figures.maxdepth, "depth");
    writeNotes(hand);
    must(QStringLiteral("diveduration"), figures.duration, "duration");
    if (hand.profile.highestPo2 > 0) {
        xml_.leaf(QStringLiteral("highestpo2"), pascalText(hand.profile.highestPo2));
    }
    xml_.close();
}

void UddfWriter::writeNotes(DiveInHand& hand) {
    bool isOpen = false;
    forEachNote(hand.dive, hand.lost, [this, &isOpen](const QString& line) {
        if (!isOpen) {
            xml_.open(QStringLiteral("notes"));
            isOpen = true;
        }
        xml_.text(QStringLiteral("para"), line);
    });
    if (isOpen) {
        xml_.close();
    }
}

void UddfWriter::tellWithoutRow(const DiveInHand& hand) {
    const GasesWithoutRow& gases = hand.profile.withoutRow;
    for (int gas = 0; gas < profile::kMostGases; ++gas) {
        if (gases.numbers.test(static_cast<std::size_t>(gas))) {
            report_.addMust(hand.id(),
                            QStringLiteral("no row for gas %1; a mix without shares stands for it").arg(gas));
        }
    }
    if (gases.beyond) {
        report_.addMust(hand.id(), QStringLiteral("a gas number that no gas has; a mix without a number "
                                                  "stands for it"));
    }
}

} // namespace benthor::exports
