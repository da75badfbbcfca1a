#include "exports/uddfgases.h"

#include "platform/textformat.h"

namespace benthor::exports {

namespace {

constexpr int kModTenthsPerMetre = 10;
constexpr double kDeepest = 100000;

void leafShare(UddfXml& xml, const QString& name, double perCent) {
    if (perCent >= 0 && perCent <= 100) {
        xml.leaf(name, decimalText(perCent / 100));
    }
}

} // namespace

void GasesWithoutRow::add(int gas, const WholeDive& dive) {
    if (!UddfGases::isNumber(gas)) {
        beyond = true;
    } else if (gas >= UddfGases::rowsOf(dive)) {
        numbers.set(static_cast<std::size_t>(gas));
    }
}

int UddfGases::rowsOf(const WholeDive& dive) {
    return static_cast<int>(std::min(dive.gases.size(), static_cast<std::size_t>(profile::kMostGases)));
}

QString UddfGases::id(const QString& name, int gas) {
    return QStringLiteral("mix-") + name + u'-' +
           (isNumber(gas) ? QString::number(gas) : QStringLiteral("unknown"));
}

/// As the dive screen reads the row. The depth has its tenths where they belong to the metres shown there: a
/// row that cannot be is replaced by another as a whole.
UddfGases::Mix UddfGases::mixOf(const WholeDive& dive, int row) {
    const auto at = static_cast<std::size_t>(row);
    const int metres = dive.gasArrays.gasmod[at];
    const std::optional<double> tenths = plainNumber(fieldOf(dive.gases[at], u"gasmod").value_or(QString()));
    const bool exact = tenths && platform::toWhole(*tenths / kModTenthsPerMetre) == metres;
    return {dive.gasArrays.gaso2[at], dive.gasArrays.gasn2[at], dive.gasArrays.gashe[at],
            exact ? *tenths / kModTenthsPerMetre : metres};
}

void UddfGases::add(const QString& name, const WholeDive& dive, const GasesWithoutRow& withoutRow) {
    std::vector<Mix> rows;
    for (int row = 0; row < rowsOf(dive); ++row) {
        rows.push_back(mixOf(dive, row));
    }
    if (rows.empty() && withoutRow.numbers.none() && !withoutRow.beyond) {
        return;
    }
    const auto table = tables_.try_emplace(std::move(rows), 0).first;
    ++table->second;
    dives_.push_back({name, &table->first, withoutRow});
}

void UddfGases::writeMix(UddfXml& xml, const QString& id, const Mix& mix) {
    profile::GasArrays gases;
    gases.gaso2[0] = mix.oxygen;
    gases.gasn2[0] = mix.nitrogen;
    gases.gashe[0] = mix.helium;
    xml.open(QStringLiteral("mix"));
    xml.attribute(QStringLiteral("id"), id);
    xml.leaf(QStringLiteral("name"), profile::gasName(gases, 0));
    leafShare(xml, QStringLiteral("o2"), mix.oxygen);
    leafShare(xml, QStringLiteral("n2"), mix.nitrogen);
    leafShare(xml, QStringLiteral("he"), mix.helium);
    if (mix.depth > 0 && mix.depth <= kDeepest) {
        xml.leaf(QStringLiteral("maximumoperationdepth"), decimalText(mix.depth));
    }
    xml.close();
}

void UddfGases::write(UddfXml& xml) const {
    if (dives_.empty()) {
        return;
    }
    const auto writeNamed = [&xml](const QString& id, const QString& name) {
        xml.open(QStringLiteral("mix"));
        xml.attribute(QStringLiteral("id"), id);
        xml.leaf(QStringLiteral("name"), name);
        xml.close();
    };
    xml.open(QStringLiteral("gasdefinitions"));
    for (const OfDive& dive : dives_) {
        int gas = 0;
        for (const Mix& mix : *dive.rows) {
            writeMix(xml, id(dive.name, gas++), mix);
        }
        for (; gas < profile::kMostGases; ++gas) {
            if (dive.withoutRow.numbers.test(static_cast<std::size_t>(gas))) {
                writeNamed(id(dive.name, gas), QStringLiteral("Gas %1").arg(gas));
            }
        }
        if (dive.withoutRow.beyond) {
            writeNamed(id(dive.name, -1), QStringLiteral("Unknown gas"));
        }
    }
    xml.close();
}

} // namespace benthor::exports
