#pragma once

#include "exports/wholedive.h"

#include <QIODevice>

namespace benthor::exports {

/// Dives as one JSON document, streamed, that holds all that there is of them:
///
///   {"format": "benthor-logbook", "version": 1, "dives": [{"show", "samples", "sticks", "file"}, ...]}
///
/// `show` is showObject(), `samples` samplesJson(). `sticks` are the readings of the thermistor sticks,
/// [{"stick", "channel", "values"}], without the channels that hold none. `file` is null where the dive's
/// file cannot be read, and otherwise {"name", "text", "base64"}: the text where its bytes are valid UTF-8,
/// and in any other case its bytes in base 64; the other one is null.
class LogbookJson {
public:
    explicit LogbookJson(QIODevice& device)
        : device_(device) {}
    /// In this order, add() for each dive. ExportError where the device does not take all.
    void begin();
    void add(const WholeDive& dive) { add(prepare(dive)); }
    void end();

    /// The two halves of add(): what can be made of a dive by itself, on any thread, and its going out.
    using Prepared = QByteArray;
    static Prepared prepare(const WholeDive& dive);
    void add(const Prepared& dive);

private:
    QIODevice& device_;
    bool any_ = false;
};

} // namespace benthor::exports
