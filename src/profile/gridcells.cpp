#include "profile/gridcells.h"

#include "platform/textformat.h"
#include "profile/elapsed.h"

namespace benthor::profile {

namespace {

enum class Form { Plain, Elapsed, Negated, GasName, TwoPlaces, Nothing };

struct Column {
    const char* heading = "";
    SampleArray DiveProfile::*array = nullptr;
    Form form = Form::Plain;
};

using P = DiveProfile;

constexpr std::array<Column, kGridColumns> kColumns = {{
    {"Time", nullptr, Form::Elapsed},
    {"Depth", &P::depthneg, Form::Negated},
    {"Gas", &P::gasnum, Form::GasName},
    {"PO2", &P::po2, Form::TwoPlaces},
    {"Ceiling", &P::ceilingneg, Form::Negated},
    {"Temp", &P::temp},
    {"#errors", &P::alarmcount},
    {"Filter%", &P::filterpct},
    {"Bat1", &P::bat1},
    {"Bat2", &P::bat2},
    {"HPdil", &P::hpdil},
    {"HPo2", &P::hpo2},
    {"Cella", &P::cella, Form::TwoPlaces},
    {"Cellb", &P::cellb, Form::TwoPlaces},
    {"Cellc", &P::cellc, Form::TwoPlaces},
    {"Setpoint", &P::setpoint},
    {"CO2", &P::co2},
    {"", &P::co2adjust1},
    {"", &P::co2adjust2},
    {"", &P::depthpos},
    {"", &P::mark},
    {"", &P::extrao},
    {"", &P::extrap},
    {"", &P::extraq},
    {"", &P::extrar},
    {"TPM1", &P::tpm1},
    {"TPM2", &P::tpm2},
    {"TPM3", &P::tpm3},
    {"TPM4", &P::tpm4},
    {"TPM5", &P::tpm5},
    {"TPM6", &P::tpm6},
    {"TPM7", &P::tpm7},
    {"TPM8", &P::tpm8},
    {"TPM%a", &P::tpmpcta},
    {"TPM%b", &P::tpmpctb},
    {},
    {"v", &P::extrav},
    {"t", &P::extrat},
    {"o"}, // its number is dropped in decoding
    {"f", &P::extraf},
    {},
    {"", nullptr, Form::Nothing},
    {"", nullptr, Form::Nothing},
    {"", nullptr, Form::Nothing},
    {"", nullptr, Form::Nothing},
}};

const Column& columnAt(int column) {
    return kColumns.at(static_cast<size_t>(column));
}

} // namespace

QString gridHeading(int column) {
    return QString::fromLatin1(columnAt(column).heading);
}

const SampleArray* gridArray(const DiveProfile& profile, int column) {
    const auto array = columnAt(column).array;
    return array == nullptr ? nullptr : &(profile.*array);
}

QString gasNameAt(const DiveProfile& profile, const GasNames& gasname, int row) {
    const int gas = platform::toWhole(profile.gasnum[row - 1]);
    return gas >= 0 && gas < kGasNames ? gasname[static_cast<size_t>(gas)] : QString();
}

QString cellText(const DiveProfile& profile, const GasNames& gasname, double interval, int row, int column) {
    const SampleArray* array = gridArray(profile, column);
    const float value = array == nullptr ? 0.0F : (*array)[row - 1];
    switch (columnAt(column).form) {
    case Form::Elapsed:
        return formatelapsed(row * interval);
    case Form::Negated:
        return platform::floatText(-value);
    case Form::GasName:
        return gasNameAt(profile, gasname, row);
    case Form::TwoPlaces:
        return platform::formatNumber(value, u"#0.00");
    case Form::Nothing:
        return {};
    case Form::Plain:
        break;
    }
    return platform::floatText(value);
}

} // namespace benthor::profile
