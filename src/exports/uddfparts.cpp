#include "exports/uddfparts.h"

namespace benthor::exports {

namespace {

constexpr std::array<const char*, UddfParts::kCells> kCellIds{"cell-a", "cell-b", "cell-c"};
constexpr std::array<const char*, UddfParts::kCells> kCellNames{"Cell a", "Cell b", "Cell c"};
constexpr std::array<const char*, UddfParts::kTanks> kTankIds{"tank-o2", "tank-dil"};
constexpr std::array<const char*, UddfParts::kTanks> kTankNames{"Oxygen", "Diluent"};

QString numbered(QStringView prefix, std::size_t number) {
    return prefix.toString() + QString::number(number);
}

void openNamed(UddfXml& xml, const QString& element, const QString& id, const QString& name) {
    xml.open(element);
    xml.attribute(QStringLiteral("id"), id);
    xml.leaf(QStringLiteral("name"), name);
}

/// Both names are musts: of a name that is one word the second is a stroke.
void writePersonal(UddfXml& xml, const QString& name) {
    const QString whole = name.trimmed();
    const qsizetype gap = whole.lastIndexOf(u' ');
    xml.open(QStringLiteral("personal"));
    xml.leaf(QStringLiteral("firstname"), gap < 0 ? whole : whole.left(gap).trimmed());
    xml.leaf(QStringLiteral("lastname"), gap < 0 ? QStringLiteral("-") : whole.mid(gap + 1));
    xml.close();
}

} // namespace

QString UddfParts::cellId(std::size_t cell) {
    return QLatin1String(kCellIds[cell]);
}

QString UddfParts::tankId(std::size_t tank) {
    return QLatin1String(kTankIds[tank]);
}

QString UddfParts::numberOf(Named& named, const QStringList& texts, QStringView prefix) {
    const auto found = named.numbers.constFind(texts);
    if (found != named.numbers.constEnd()) {
        return numbered(prefix, static_cast<std::size_t>(*found));
    }
    named.texts.push_back(texts);
    named.numbers.insert(texts, static_cast<int>(named.texts.size()));
    return numbered(prefix, named.texts.size());
}

QString UddfParts::kept(const QString& name) {
    QString plain = xmlText(name.trimmed(), replaced_);
    if (plain.size() > kLongestName) {
        cut_ = true;
        plain.truncate(plain[kLongestName - 1].isHighSurrogate() ? kLongestName - 1 : kLongestName);
    }
    return plain;
}

QString UddfParts::device(const QString& serial, const QString& type, const QString& version) {
    return numberOf(devices_, {kept(serial), kept(type), kept(version)}, u"computer-");
}

void UddfParts::writeEquipment(UddfXml& xml) const {
    if (devices_.texts.empty() && !rebreather_ && tanks_.none()) {
        return;
    }
    xml.open(QStringLiteral("equipment"));
    std::size_t number = 0;
    for (const QStringList& device : devices_.texts) {
        const QString name = (device[1] + u' ' + device[2]).trimmed();
        openNamed(xml, QStringLiteral("divecomputer"), numbered(u"computer-", ++number),
                  name.isEmpty() ? QStringLiteral("Dive computer") : name);
        if (!device[1].isEmpty()) {
            xml.leaf(QStringLiteral("model"), device[1]);
        }
        if (!device[0].isEmpty()) {
            xml.leaf(QStringLiteral("serialnumber"), device[0]);
        }
        xml.close();
    }
    if (rebreather_) {
        openNamed(xml, QStringLiteral("rebreather"), rebreatherId(), QStringLiteral("Rebreather"));
        for (std::size_t cell = 0; cell < kCells; ++cell) {
            if (cells_.test(cell)) {
                openNamed(xml, QStringLiteral("o2sensor"), cellId(cell), QLatin1String(kCellNames[cell]));
                xml.close();
            }
        }
        xml.close();
    }
    for (std::size_t tank = 0; tank < kTanks; ++tank) {
        if (tanks_.test(tank)) {
            openNamed(xml, QStringLiteral("tank"), tankId(tank), QLatin1String(kTankNames[tank]));
            xml.close();
        }
    }
    xml.close();
}

void UddfParts::write(UddfXml& xml) const {
    if (!sites_.texts.empty()) {
        xml.open(QStringLiteral("divesite"));
        std::size_t number = 0;
        for (const QStringList& site : sites_.texts) {
            openNamed(xml, QStringLiteral("site"), numbered(u"site-", ++number), site[0]);
            xml.close();
        }
        xml.close();
    }
    if (!rebreather_ && devices_.texts.empty() && buddies_.texts.empty()) {
        return;
    }
    xml.open(QStringLiteral("diver"));
    xml.open(QStringLiteral("owner"));
    xml.attribute(QStringLiteral("id"), QStringLiteral("owner"));
    // The logbook does not know whose it is.
    writePersonal(xml, QStringLiteral("Unknown diver"));
    writeEquipment(xml);
    xml.close();
    std::size_t number = 0;
    for (const QStringList& buddy : buddies_.texts) {
        xml.open(QStringLiteral("buddy"));
        xml.attribute(QStringLiteral("id"), numbered(u"buddy-", ++number));
        writePersonal(xml, buddy[0]);
        xml.close();
    }
    xml.close();
}

} // namespace benthor::exports
