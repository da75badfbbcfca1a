#include "exports/samplecolumns.h"

#include <algorithm>
#include <array>

namespace benthor::exports {

namespace {

using profile::DiveProfile;

constexpr std::array<SampleColumn, 36> kColumns{{
    {"depthpos", "m", &DiveProfile::depthpos},
    {"gasnum", "", &DiveProfile::gasnum},
    {"po2", "bar", &DiveProfile::po2},
    {"ceilingneg", "m", &DiveProfile::ceilingneg},
    {"temp", "C", &DiveProfile::temp},
    {"alarmcount", "", &DiveProfile::alarmcount},
    {"filterpct", "%", &DiveProfile::filterpct},
    {"bat1", "V", &DiveProfile::bat1},
    {"bat2", "V", &DiveProfile::bat2},
    {"hpdil", "bar", &DiveProfile::hpdil},
    {"hpo2", "bar", &DiveProfile::hpo2},
    {"cella", "bar", &DiveProfile::cella},
    {"cellb", "bar", &DiveProfile::cellb},
    {"cellc", "bar", &DiveProfile::cellc},
    {"setpoint", "bar", &DiveProfile::setpoint},
    {"co2", "mbar", &DiveProfile::co2},
    {"co2adjust1", "mbar", &DiveProfile::co2adjust1},
    {"co2adjust2", "mbar", &DiveProfile::co2adjust2},
    {"mark", "", &DiveProfile::mark},
    {"extrao", "", &DiveProfile::extrao},
    {"extrap", "", &DiveProfile::extrap},
    {"extraq", "", &DiveProfile::extraq},
    {"extrar", "", &DiveProfile::extrar},
    {"tpm1", "", &DiveProfile::tpm1},
    {"tpm2", "", &DiveProfile::tpm2},
    {"tpm3", "", &DiveProfile::tpm3},
    {"tpm4", "", &DiveProfile::tpm4},
    {"tpm5", "", &DiveProfile::tpm5},
    {"tpm6", "", &DiveProfile::tpm6},
    {"tpm7", "", &DiveProfile::tpm7},
    {"tpm8", "", &DiveProfile::tpm8},
    {"tpmpcta", "", &DiveProfile::tpmpcta},
    {"tpmpctb", "", &DiveProfile::tpmpctb},
    {"extrav", "", &DiveProfile::extrav},
    {"extrat", "", &DiveProfile::extrat},
    {"extraf", "", &DiveProfile::extraf},
}};

} // namespace

std::span<const SampleColumn> sampleColumns() {
    return kColumns;
}

bool isRecorded(const WholeDive& dive, ColumnArray column) {
    if (column == &DiveProfile::depthpos || column == &DiveProfile::gasnum) {
        return dive.samples() > 0;
    }
    constexpr size_t kFirst = profile::kFirstSample - 1;
    const std::span<const float> all = (dive.profile.*column).values();
    const size_t end = std::min(all.size(), static_cast<size_t>(std::max(0, dive.lastsample())));
    return end > kFirst && std::any_of(all.begin() + kFirst, all.begin() + static_cast<std::ptrdiff_t>(end),
                                       [](float value) { return value != 0.0F; });
}

} // namespace benthor::exports
