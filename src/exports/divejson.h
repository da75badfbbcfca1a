#pragma once

#include "exports/wholedive.h"

#include <QJsonObject>

namespace benthor::exports {

// A dive as JSON. Numbers are numbers, dates "2008-07-15T08:55:17" by the device's clock, and what is not
// there is null.

/// id, name, site, start, end, duration_s, max_depth_m, interval_s, otu, serial, version, faults.
QJsonObject diveObject(const DiveFigures& figures);

/// {"dive", "store": {column: text or null}, "gases": [{...}], "tissues": [{...}], "buddies": [...]}: all
/// that the store has of the dive, columns as the store spells them.
QJsonObject showObject(const WholeDive& dive);

/// {"id", "interval_s", "columns": [{"name", "unit"}], "rows": [[...], ...]} in UTF-8, as one line. A row a
/// sample: the seconds, the columns of sampleColumns() (null throughout where isRecorded() says no), and the
/// list of its alarms' tokens.
QByteArray samplesJson(const WholeDive& dive);
/// Puts it behind `json`. So many bytes that will stand behind it have room then, too.
void appendSamplesJson(QByteArray& json, const WholeDive& dive, qsizetype behind);

/// "2008-07-15T08:55:17"; empty where there is none.
QString momentText(const QDateTime& moment);

/// `text` in quotes and escaped. A surrogate without its partner stands as its escape.
QByteArray jsonText(const QString& text);

} // namespace benthor::exports
