#include "profile/recorddecoder.h"

#include "platform/textformat.h"
#include "store/depthunits.h"

namespace benthor::profile {

namespace {

using platform::roundToEven;

constexpr double kMetresPerCount = 0.09375;
constexpr double kPsiPerBar = 14.7;
constexpr double kWrapMetres = 192.0; // the device's depth count overflows at 2,048
constexpr int kFirstFreeField = 7;    // from here on a field is known by its letter
constexpr qsizetype kMostGrownText = 1024;

enum class Conversion { None, Dropped, Plain, Hundredth, Pressure, Ceiling, Co2, Thermistor };

struct LetterRule {
    SampleArray DiveProfile::*array = nullptr;
    Conversion conversion = Conversion::None;
    signed char check = 0; ///< box that data of this letter enable
    signed char mask = -1; ///< panel of Frame4 that they uncover
};

constexpr std::array<LetterRule, 256> letterRules() {
    using P = DiveProfile;
    using C = Conversion;
    std::array<LetterRule, 256> rules{};
    rules['B'] = {&P::bat1, C::Hundredth, 7};
    rules['C'] = {&P::bat2, C::Hundredth, 7};
    rules['D'] = {&P::hpdil, C::Pressure, 8, 2};
    rules['E'] = {&P::hpo2, C::Pressure, 8, 5};
    rules['F'] = {&P::cella, C::Hundredth, 9, 0};
    rules['G'] = {&P::cellb, C::Hundredth, 9};
    rules['H'] = {&P::cellc, C::Hundredth, 9};
    rules['I'] = {&P::setpoint, C::Hundredth, 10};
    rules['J'] = {&P::ceilingneg, C::Ceiling, 11};
    rules['N'] = {&P::mark, C::Plain};
    rules['O'] = {&P::extrao, C::Plain};
    rules['P'] = {&P::extrap, C::Plain};
    rules['Q'] = {&P::extraq, C::Plain};
    rules['R'] = {&P::extrar, C::Plain};
    rules['S'] = {&P::tpm1, C::Thermistor, 6};
    rules['T'] = {&P::tpm2, C::Thermistor};
    rules['U'] = {&P::tpm3, C::Thermistor};
    rules['V'] = {&P::tpm4, C::Thermistor};
    rules['W'] = {&P::tpm5, C::Thermistor};
    rules['X'] = {&P::tpm6, C::Thermistor};
    rules['Y'] = {&P::tpm7, C::Thermistor};
    rules['Z'] = {&P::tpm8, C::Thermistor};
    rules['x'] = {&P::tpmpcta, C::Plain, 12};
    rules['y'] = {&P::tpmpctb, C::Plain, 12};
    rules['z'] = {&P::co2, C::Co2};
    rules['v'] = {&P::extrav, C::Plain};
    rules['t'] = {&P::extrat, C::Plain};
    rules['o'] = {nullptr, C::Dropped};
    rules['f'] = {&P::extraf, C::Plain};
    return rules;
}

constexpr std::array<LetterRule, 256> kLetterRules = letterRules();

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Tenths of a foot.
double inFeet(double metres) {
    return roundToEven(metres * store::kSampleFeetPerMetre * 10.0) / 10.0;
}

double numberBehindLetter(QByteArrayView field) {
    return fieldNumber(field.sliced(1));
}

/// A grown field can be as long as the file, and is read again with every line: looking at no more than its
/// beginning keeps the whole in proportion to the file.
QByteArrayView numberText(const LineFields& line, int field) {
    const QByteArrayView text = line.text(field);
    return field < kFirstGrownField || text.size() <= kMostGrownText ? text : text.first(kMostGrownText);
}

} // namespace

bool RecordDecoder::decode(const LineFields& line) {
    if (profile_.lastsample > kMostSamples) {
        return false;
    }
    decodeDepth(line.text(1));
    store(profile_.gasnum, fieldNumber(line.text(2)));
    const double po2 = formattedNumber(fieldNumber(line.text(3)) / 100.0, 2);
    store(profile_.po2, po2);
    if (po2 > 0.05) {
        enable(3);
    }
    decodeMark(line.text(4));
    decodeTemperature(line.text(5));
    decodeFilterOrCeiling(line.text(6));
    for (int field = kFirstFreeField; field <= line.last(); ++field) {
        const QByteArrayView text = line.text(field);
        if (text.isEmpty() || !isDigit(text.back())) {
            addAlarm(line, field);
        } else if (!decodeLettered(numberText(line, field))) {
            return false;
        }
    }
    ++profile_.lastsample;
    return true;
}

void RecordDecoder::decodeDepth(QByteArrayView field) {
    double depth = roundToEven(fieldNumber(field) * kMetresPerCount * 100.0) / 100.0;
    if (wrapped_ && depth < 100.0) {
        depth += kWrapMetres;
    }
    wrapped_ = depth > 150.0;
    store(profile_.depthpos, depth);
    store(profile_.depthneg, feet_ ? inFeet(-depth) : -depth);
    enable(1);
}

void RecordDecoder::decodeMark(QByteArrayView field) {
    const bool lettered = field.startsWith('M');
    profile_.malformed = profile_.malformed || !lettered;
    store(profile_.mark, lettered && field.sliced(1) == QByteArrayView("1") ? 1.0 : 0.0);
}

void RecordDecoder::decodeTemperature(QByteArrayView field) {
    if (field.startsWith('T')) {
        const double celsius = numberBehindLetter(field);
        temperature_ = formattedNumber(feet_ ? celsius * 9.0 / 5.0 + 32.0 : celsius, 0);
    } else {
        profile_.malformed = true;
    }
    store(profile_.temp, temperature_);
    enable(5);
}

void RecordDecoder::decodeFilterOrCeiling(QByteArrayView field) {
    if (field.startsWith('A')) {
        store(profile_.filterpct, numberBehindLetter(field) / 10.0);
        enable(12);
    } else if (field.startsWith('C')) {
        storeCeiling(numberBehindLetter(field));
        enable(11);
    }
}

void RecordDecoder::addAlarm(const LineFields& line, int field) {
    const int sample = profile_.lastsample;
    if (field < kFirstGrownField) {
        profile_.alarms.add(sample, line.text(field));
    } else {
        profile_.alarms.addGrown(sample, field);
    }
    profile_.alarmcount.set(sample - 1, profile_.alarmcount[sample - 1] + 1.0F);
}

bool RecordDecoder::decodeLettered(QByteArrayView field) {
    const LetterRule& rule = kLetterRules[static_cast<unsigned char>(field.front())];
    if (rule.conversion == Conversion::None || rule.conversion == Conversion::Dropped) {
        return true;
    }
    const double value = numberBehindLetter(field);
    if (rule.check > 0) {
        enable(rule.check);
    }
    if (rule.mask >= 0) {
        profile_.maskshidden.set(static_cast<size_t>(rule.mask));
    }
    switch (rule.conversion) {
    case Conversion::Hundredth:
        store(profile_.*rule.array, value / 100.0);
        break;
    case Conversion::Pressure:
        store(profile_.*rule.array, feet_ ? roundToEven(value * kPsiPerBar) : value);
        break;
    case Conversion::Ceiling:
        storeCeiling(value);
        break;
    case Conversion::Co2:
        storeCo2(value / 100.0);
        break;
    case Conversion::Thermistor:
        store(profile_.*rule.array, value);
        return storeThermistor(field.front(), value);
    default:
        store(profile_.*rule.array, value);
        break;
    }
    return true;
}

void RecordDecoder::storeCeiling(double ceiling) {
    store(profile_.ceilingneg, feet_ ? inFeet(-ceiling) : -ceiling);
}

void RecordDecoder::storeCo2(double co2) {
    const double depth = profile_.depthpos[profile_.lastsample - 1];
    const double ambient = depth / (depth + 10.0) * co2;
    store(profile_.co2, co2);
    store(profile_.co2adjust1, co2 / (2.0 - std::exp(co2 / -20.0)));
    store(profile_.co2adjust2,
          co2 / ((1.6 - 1.6 * std::exp(ambient / -80.0)) + (2.0 - std::exp(ambient / -20.0))));
    if (co2 > 0.01) {
        enable(14);
    }
}

bool RecordDecoder::storeThermistor(char letter, double value) {
    if (letter == 'S') {
        ++thermistorcounter_;
    }
    const int t = thermistorcounter_;
    if (t > kMostSamples) {
        return false;
    }
    auto& stick = t % 3 == 0 ? profile_.tpmstick0 : t % 3 == 1 ? profile_.tpmstick1 : profile_.tpmstick2;
    SampleArray& channel = stick[static_cast<size_t>(letter - 'S' + 1)];
    for (int n = t - 2; n <= t; ++n) { // each reading is held over three samples
        channel.set(n - 1, asFloat(value));
    }
    return true;
}

} // namespace benthor::profile
