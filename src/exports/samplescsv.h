#pragma once

#include "exports/wholedive.h"

#include <QByteArray>
#include <QIODevice>

namespace benthor::exports {

/// A text as a field of a comma-separated file (RFC 4180), in quotes where it holds a comma, a quote or a
/// line end, and where it is empty: a field without anything is one that is not there.
QByteArray csvField(const QString& text);
QByteArray csvField(const std::optional<QString>& text);

/// What a row of samples begins with.
enum class SampleIds {
    None, ///< with the time: for a single dive
    First ///< with the dive's identifier, in a column of its own
};

/// The header line and the lines of a dive, each ended by CR LF: the columns of samplesJson() under their own
/// names, empty where those are null, a sample's alarms joined by "; ".
QByteArray samplesCsvHeader(SampleIds ids);
QByteArray samplesCsvLines(const WholeDive& dive, SampleIds ids);

/// The samples of dives as one table, streamed. The columns are the same whatever the dives hold.
class SamplesCsv {
public:
    SamplesCsv(QIODevice& device, SampleIds ids)
        : device_(device)
        , ids_(ids) {}
    /// In this order, add() for each dive. ExportError where the device does not take all.
    void begin();
    void add(const WholeDive& dive) { add(prepare(dive, ids_)); }
    void end();

    /// The two halves of add(): what can be made of a dive by itself, on any thread, and its going out.
    using Prepared = QByteArray;
    static Prepared prepare(const WholeDive& dive, SampleIds ids) { return samplesCsvLines(dive, ids); }
    void add(const Prepared& dive);

private:
    QIODevice& device_;
    SampleIds ids_;
};

} // namespace benthor::exports
