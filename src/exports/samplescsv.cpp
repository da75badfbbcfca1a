#include "exports/samplescsv.h"

#include "exports/samplecolumns.h"
#include "exports/samplerows.h"
#include "exports/wholewrite.h"

#include <algorithm>

namespace benthor::exports {

QByteArray csvField(const QString& text) {
    const bool special = text.isEmpty() || std::any_of(text.begin(), text.end(), [](QChar letter) {
                             return letter == u',' || letter == u'"' || letter == u'\r' || letter == u'\n';
                         });
    QByteArray field = text.toUtf8();
    return special ? '"' + field.replace('"', "\"\"") + '"' : field;
}

QByteArray csvField(const std::optional<QString>& text) {
    return text ? csvField(*text) : QByteArray();
}

QByteArray samplesCsvHeader(SampleIds ids) {
    QByteArray header = ids == SampleIds::First ? "id,time_s" : "time_s";
    for (const SampleColumn& column : sampleColumns()) {
        header += ',';
        header += column.name;
    }
    return header + ",alarms\r\n";
}

QByteArray samplesCsvLines(const WholeDive& dive, SampleIds ids) {
    const QByteArray id = ids == SampleIds::First ? csvField(dive.figures.id) + ',' : QByteArray();
    QByteArray lines;
    const SampleRows rows(dive, {});
    rows.reserve(lines, id.size());
    for (int sample = profile::kFirstSample; sample <= dive.lastsample(); ++sample) {
        lines += id;
        rows.append(lines, sample);
        lines += ',';
        if (const QStringList tokens = alarmTokens(dive.profile, sample); !tokens.isEmpty()) {
            lines += csvField(tokens.join(QStringLiteral("; ")));
        }
        lines += "\r\n";
    }
    return lines;
}

void SamplesCsv::begin() {
    writeWhole(device_, samplesCsvHeader(ids_));
}

void SamplesCsv::add(const Prepared& dive) {
    writeWhole(device_, dive);
}

void SamplesCsv::end() {
    flushWhole(device_);
}

} // namespace benthor::exports
