#include "exports/uddfgases.h"

#include "platform/textformat.h"

namespace benthor::exports {

namespace {

constexpr int kModTenthsPerMetre = 10;
constexpr double kDeepest = 100000;

void writeShare(QXmlStreamWriter& xml, const QString& name, double perCent) {
    if (perCent >= 0 && perCent <= 100) {
        xml.writeTextElement(name, decimalText(perCent / 100).text());
    }
}

void fill(UddfXml& xml, const UddfForm& form, QByteArrayView id) {
    xml.put(form.before);
    xml.put(id);
    xml.put(form.behind);
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

QByteArray UddfGases::id(const QString& name, int gas) {
    return idBefore() + name.toLatin1() + idBehind(gas);
}

QByteArray UddfGases::idBehind(int gas) {
    return '-' + (isNumber(gas) ? QByteArray::number(gas) : QByteArrayLiteral("unknown"));
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

std::vector<UddfGases::Mix> UddfGases::mixesOf(const WholeDive& dive) {
    std::vector<Mix> mixes;
    mixes.reserve(static_cast<std::size_t>(rowsOf(dive)));
    for (int row = 0; row < rowsOf(dive); ++row) {
        mixes.push_back(mixOf(dive, row));
    }
    return mixes;
}

void UddfGases::add(const QString& name, const std::vector<Mix>& mixes, const GasesWithoutRow& withoutRow) {
    if (mixes.empty() && withoutRow.numbers.none() && !withoutRow.beyond) {
        return;
    }
    const auto table = tables_.try_emplace(mixes, 0).first;
    ++table->second;
    dives_.push_back({name, &table->first, withoutRow});
}

UddfForm UddfGases::formOf(const Mix& mix) {
    profile::GasArrays gases;
    gases.gaso2[0] = mix.oxygen;
    gases.gasn2[0] = mix.nitrogen;
    gases.gashe[0] = mix.helium;
    return UddfForm::withId(
        QStringLiteral("gasdefinitions"), QStringLiteral("mix"), [&](QXmlStreamWriter& xml) {
            xml.writeTextElement(QStringLiteral("name"), profile::gasName(gases, 0));
            writeShare(xml, QStringLiteral("o2"), mix.oxygen);
            writeShare(xml, QStringLiteral("n2"), mix.nitrogen);
            writeShare(xml, QStringLiteral("he"), mix.helium);
            if (mix.depth > 0 && mix.depth <= kDeepest) {
                xml.writeTextElement(QStringLiteral("maximumoperationdepth"), decimalText(mix.depth).text());
            }
        });
}

UddfForm UddfGases::formOf(const QString& name) {
    return UddfForm::withId(
        QStringLiteral("gasdefinitions"), QStringLiteral("mix"),
        [&name](QXmlStreamWriter& xml) { xml.writeTextElement(QStringLiteral("name"), name); });
}

void UddfGases::write(UddfXml& xml) const {
    if (dives_.empty()) {
        return;
    }
    const UddfForm all = UddfForm::around({"uddf", "gasdefinitions"});
    xml.put(all.before);
    const std::vector<Mix>* rows = nullptr; // of the dive before: mostly the same
    std::vector<UddfForm> forms;
    for (const OfDive& dive : dives_) {
        if (dive.rows != rows) {
            rows = dive.rows;
            forms.clear();
            std::transform(rows->begin(), rows->end(), std::back_inserter(forms),
                           [](const Mix& mix) { return formOf(mix); });
        }
        int gas = 0;
        for (const UddfForm& form : forms) {
            fill(xml, form, id(dive.name, gas++));
        }
        for (; gas < profile::kMostGases; ++gas) {
            if (dive.withoutRow.numbers.test(static_cast<std::size_t>(gas))) {
                fill(xml, formOf(QStringLiteral("Gas %1").arg(gas)), id(dive.name, gas));
            }
        }
        if (dive.withoutRow.beyond) {
            fill(xml, formOf(QStringLiteral("Unknown gas")), id(dive.name, -1));
        }
    }
    xml.put(all.behind);
}

} // namespace benthor::exports
