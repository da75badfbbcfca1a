#include "exports/logbookjson.h"

#include "exports/divejson.h"
#include "exports/numbertext.h"
#include "exports/wholewrite.h"

#include <QJsonDocument>
#include <QUtf8StringView>

#include <array>

namespace benthor::exports {

namespace {

/// Bytes that are valid UTF-8 as a JSON text. A text of Qt's would take twice the bytes on the way, and drop
/// a byte order mark.
QByteArray jsonOfUtf8(QByteArrayView bytes) {
    QByteArray json = "\"";
    const char* plain = bytes.begin();
    for (const char* at = plain; at != bytes.end(); ++at) {
        const char byte = *at;
        if (static_cast<unsigned char>(byte) >= ' ' && byte != '"' && byte != '\\') {
            continue;
        }
        json.append(plain, at - plain);
        plain = at + 1;
        if (byte == '\r') {
            json += "\\r";
        } else if (byte == '\n') {
            json += "\\n";
        } else if (byte == '"' || byte == '\\') {
            json += '\\';
            json += byte;
        } else {
            constexpr auto kDigits = "0123456789abcdef";
            json += "\\u00";
            json += kDigits[byte / 16];
            json += kDigits[byte % 16];
        }
    }
    json.append(plain, bytes.end() - plain);
    return json += '"';
}

QByteArray fileJson(const WholeDive& dive) {
    if (!dive.file) {
        return "null";
    }
    const QByteArray& bytes = *dive.file;
    const bool isText = QUtf8StringView(bytes.constData(), bytes.size()).isValidUtf8();
    return "{\"name\":" + jsonText(dive.fileName) + ",\"text\":" + (isText ? jsonOfUtf8(bytes) : "null") +
           ",\"base64\":" + (isText ? "null" : '"' + bytes.toBase64() + '"') + "}";
}

/// All readings of a channel, up to the last that is one.
QByteArray channelJson(size_t stick, size_t channel, std::span<const float> values) {
    QByteArray json = "{\"stick\":" + QByteArray::number(static_cast<int>(stick)) +
                      ",\"channel\":" + QByteArray::number(static_cast<int>(channel)) + ",\"values\":[";
    constexpr size_t kUsualNumber = 6;
    json.reserve(json.size() + static_cast<qsizetype>(values.size() * kUsualNumber));
    for (size_t i = 0; i < values.size(); ++i) {
        if (i != 0) {
            json += ',';
        }
        appendNumber(json, values[i]);
    }
    return json + "]}";
}

QByteArray sticksJson(const profile::DiveProfile& profile) {
    const std::array sticks{&profile.tpmstick0, &profile.tpmstick1, &profile.tpmstick2};
    QByteArrayList channels;
    for (size_t stick = 0; stick < sticks.size(); ++stick) {
        for (size_t channel = 1; channel < sticks[stick]->size(); ++channel) {
            std::span<const float> values = (*sticks[stick])[channel].values();
            while (!values.empty() && values.back() == 0.0F) {
                values = values.first(values.size() - 1);
            }
            if (!values.empty()) {
                channels += channelJson(stick, channel, values);
            }
        }
    }
    return '[' + channels.join(',') + ']';
}

} // namespace

void LogbookJson::begin() {
    writeWhole(device_, "{\"format\":\"benthor-logbook\",\"version\":1,\"dives\":[");
}

QByteArray LogbookJson::prepare(const WholeDive& dive) {
    QByteArray json = "{\"show\":" + QJsonDocument(showObject(dive)).toJson(QJsonDocument::Compact);
    json += ",\"samples\":";
    json += samplesJson(dive);
    json += ",\"sticks\":";
    json += sticksJson(dive.profile);
    json += ",\"file\":";
    json += fileJson(dive);
    return json += '}';
}

/// A dive on a line of its own, so that tools for lines get along with a large logbook.
void LogbookJson::add(const Prepared& dive) {
    writeWhole(device_, any_ ? ",\n" : "\n");
    any_ = true;
    writeWhole(device_, dive);
}

void LogbookJson::end() {
    writeWhole(device_, "\n]}\n");
    flushWhole(device_);
}

} // namespace benthor::exports
