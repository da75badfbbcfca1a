#include "simulator/divetext.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace benthor::simulator {

namespace {

constexpr double metresacount = 0.09375;
constexpr int countwrap = 2048;

QByteArray whole(double value) {
    return QByteArray::number(std::llround(value));
}

/// At most three digits, which is what the store's checks let through.
QByteArray threeDigits(double value) {
    return whole(std::clamp(value, 0.0, 999.0));
}

/// The comma is the sixth byte behind the keyword, the value begins at the eighth.
QByteArray valueLine(QByteArrayView keyword, const QByteArray& value) {
    return keyword.toByteArray() + "     , " + value + "\r\n";
}

QByteArray fourDigits(int number) {
    return QByteArray::number(number).rightJustified(4, '0');
}

void appendGases(QByteArray& text, const GasTable& gases) {
    for (int place = 0; place < gascount; ++place) {
        const Gas& gas = gases[place];
        text += "Gas" + fourDigits(place) + ',' + QByteArray::number(gas.n2()) + ',' +
                QByteArray::number(gas.he) + ',' + QByteArray::number(maximumDepth(gas) * 10) +
                (gas.on ? ",1\r\n" : ",0\r\n");
    }
}

void appendTissues(QByteArray& text, const Tissues& tissues) {
    for (int i = 0; i < compartmentcount; ++i) {
        text += "Tissue" + fourDigits(i) + ',' + threeDigits(tissues.n2[i] * 100) + ',' +
                threeDigits(tissues.he[i] * 100) + "\r\n";
    }
}

void appendReading(QByteArray& line, char letter, double value) {
    line += ',';
    line += letter;
    line += whole(value);
}

void appendTenths(QByteArray& line, char letter, double value) {
    const long long tenths = std::llround(value * 10);
    line += ',';
    line += letter;
    line += QByteArray::number(tenths / 10);
    if (tenths % 10 != 0) {
        line += '.';
        line += QByteArray::number(tenths % 10);
    }
}

void appendCells(QByteArray& line, const Sample& sample) {
    appendReading(line, 'F', sample.cells[0] * 100);
    appendReading(line, 'G', sample.cells[1] * 100);
    appendReading(line, 'H', sample.cells[2] * 100);
}

void appendAlarms(QByteArray& line, const Sample& sample, int most) {
    for (int i = 0; i < alarmkinds && most > 0; ++i) {
        const auto alarm = static_cast<Alarm>(i);
        if (sample.has(alarm)) {
            line += ',';
            line += alarmWord(alarm);
            --most;
        }
    }
}

void appendPower(QByteArray& line, const Sample& sample, bool co2sensor) {
    appendReading(line, 'A', sample.filter * 10);
    appendReading(line, 'B', sample.backupbattery * 100);
    appendReading(line, 'C', sample.mainbattery * 100);
    appendReading(line, 'D', sample.diluent);
    appendReading(line, 'E', sample.oxygen);
    appendCells(line, sample);
    appendReading(line, 'I', sample.setpoint * 100);
    appendTenths(line, 'J', sample.ceiling);
    if (co2sensor) {
        appendReading(line, 'z', sample.co2 * 100);
    }
    appendAlarms(line, sample, co2sensor ? 2 : 3);
}

void appendSticks(QByteArray& line, const Sample& sample) {
    appendTenths(line, 'C', sample.ceiling);
    for (int k = 0; k < thermistorcount; ++k) {
        appendReading(line, static_cast<char>('S' + k), sample.stick[k]);
    }
    appendCells(line, sample);
    appendAlarms(line, sample, 1);
}

} // namespace

QByteArray headText(const Dive& dive) {
    const DivePlan& plan = dive.plan;
    QByteArray text = "ver=" + plan.version + "\r\n";
    text += "Recint=" + QByteArray::number(plan.intervalseconds) + "\r\n";
    text += "SN=" + plan.serial + "\r\n";
    text += valueLine("Start", QByteArray::number(plan.startcode));
    text += valueLine("Finish", QByteArray::number(dive.finishcode));
    text += valueLine("Status", QByteArray::number(dive.status));
    // One keyword is "Descend", the other label "Descend prob": only here the comma comes first.
    text += "Descend prob,      " + QByteArray::number(dive.descendprob) + "\r\n";
    text += valueLine("DAtmos", whole(plan.surfacembar));
    text += valueLine("DStack", QByteArray::number(dive.stackseconds));
    text += valueLine("DUsage", QByteArray::number(dive.usageseconds));
    text += valueLine("MaxD", QByteArray::number(dive.maxdepth, 'f', 1));
    text += valueLine("OTU", whole(dive.otu));
    text += valueLine("HPCylinder", whole(plan.diluentbar));
    appendGases(text, dive.gases);
    appendTissues(text, dive.tissues);
    return text;
}

QByteArray sampleLine(const Sample& sample, const DivePlan& plan, int number) {
    QByteArray line = QByteArray::number(number);
    line += ',';
    line += QByteArray::number(std::llround(sample.depth / metresacount) % countwrap);
    line += ',';
    line += QByteArray::number(sample.gas);
    line += ',';
    line += whole(sample.po2 * 100);
    line += sample.mark ? ",M1" : ",M0";
    appendReading(line, 'T', sample.temperature);
    if (plan.scrubbersticks) {
        appendSticks(line, sample);
    } else {
        appendPower(line, sample, plan.co2sensor);
    }
    return line;
}

QByteArray diveText(const Dive& dive) {
    constexpr qsizetype headbytes = 1024;
    constexpr qsizetype linebytes = 110;
    QByteArray text;
    text.reserve(headbytes + static_cast<qsizetype>(dive.samples.size()) * linebytes);
    text += headText(dive);
    text += "Profile\r\nNo,Depth,Mix,PO2,Mark,Temp\r\n";
    int number = 0;
    for (const Sample& sample : dive.samples) {
        text += sampleLine(sample, dive.plan, ++number);
        text += "\r\n";
    }
    text += "End\r\n";
    return text;
}

} // namespace benthor::simulator
