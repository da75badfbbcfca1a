#include "exports/csvexport.h"

#include "platform/textformat.h"

namespace benthor::exports {

namespace {

bool isLeftOut(std::size_t field, bool feet) {
    switch (field) {
    case 6:
        return true;
    case 2:
    case 7:
    case 9:
    case 13:
    case 15:
        return feet;
    case 3:
    case 8:
    case 10:
    case 14:
    case 16:
        return !feet;
    default:
        return false;
    }
}

} // namespace

QByteArray csvHeader() {
    return "Dive ID,Record ID,Depth,Gas,PPO2,Temp,Stk Tm,Bat2V,Bat1V,HPDil,HPO2,PPO2a,PPO2b,PPO2c,SetPoint,"
           "Ceiling,Alarm1,Alarm2,Alarm3,Alarm4,Alarm5,Alarm6,Alarm7,Alarm8,Alarm9,Alarm10,Alarm11,"
           "T-stick1,T-stick2,T-stick3,T-stick4,T-stick5,T-stick6,T-stick7,T-stick8";
}

QByteArray csvLine(const ExportRow& row, bool feet) {
    QByteArray line;
    for (std::size_t field = 0; field < row.size(); ++field) {
        if (!isLeftOut(field, feet)) {
            line += platform::trimBlanks(row[field].value_or(QString())).toUtf8() + ',';
        }
    }
    return line;
}

QByteArray csvText(const std::vector<ExportRow>& rows, bool feet) {
    QByteArray text = csvHeader() + "\r\n";
    for (const ExportRow& row : rows) {
        text += csvLine(row, feet) + "\r\n";
    }
    return text;
}

} // namespace benthor::exports
