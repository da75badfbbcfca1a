#include "exports/logbookjson.h"

#include "exports/divejson.h"
#include "exports/numbertext.h"
#include "exports/wholewrite.h"

#include <QJsonDocument>
#include <QUtf8StringView>

#include <array>
#include <utility>

namespace benthor::exports {

namespace {

/// What a JSON text of so many bytes takes, if it has line ends as a dive file has them.
qsizetype usualRoom(qsizetype bytes) {
    return bytes + bytes / 8;
}

/// Bytes that are valid UTF-8 as a JSON text. A text of Qt's would take twice the bytes on the way, and drop
/// a byte order mark.
void appendUtf8(QByteArray& json, QByteArrayView bytes) {
    json += '"';
    const char* plain = bytes.begin();
    for (const char* at = plain; at != bytes.end(); ++at) {
        const char byte = *at;
        if (static_cast<unsigned char>(byte) >= ' ' && byte != '"' && byte != '\\') {
            continue;
        }
        json.append(plain, at - plain);
        if (byte == '\r' && at + 1 != bytes.end() && at[1] == '\n') {
            json += "\\r\\n";
            ++at;
        } else if (byte == '\r') {
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
        plain = at + 1;
    }
    json.append(plain, bytes.end() - plain);
    json += '"';
}

void appendFile(QByteArray& json, const WholeDive& dive) {
    if (!dive.file) {
        json += "null";
        return;
    }
    const QByteArray& bytes = *dive.file;
    const bool isText = QUtf8StringView(bytes.constData(), bytes.size()).isValidUtf8();
    json += "{\"name\":" + jsonText(dive.fileName) + ",\"text\":";
    if (isText) {
        json.reserve(json.size() + usualRoom(bytes.size()));
        appendUtf8(json, bytes);
        json += ",\"base64\":null}";
    } else {
        json += "null,\"base64\":\"" + bytes.toBase64() + "\"}";
    }
}

/// All readings of a channel, up to the last that is one.
void appendChannel(QByteArray& json, size_t stick, size_t channel, std::span<const float> values) {
    json += "{\"stick\":" + QByteArray::number(static_cast<int>(stick)) +
            ",\"channel\":" + QByteArray::number(static_cast<int>(channel)) + ",\"values\":[";
    for (size_t i = 0; i < values.size(); ++i) {
        if (i != 0) {
            json += ',';
        }
        appendNumber(json, values[i]);
    }
    json += "]}";
}

void appendSticks(QByteArray& json, const profile::DiveProfile& profile) {
    const std::array sticks{&profile.tpmstick0, &profile.tpmstick1, &profile.tpmstick2};
    bool any = false;
    json += '[';
    for (size_t stick = 0; stick < sticks.size(); ++stick) {
        for (size_t channel = 1; channel < sticks[stick]->size(); ++channel) {
            std::span<const float> values = (*sticks[stick])[channel].values();
            while (!values.empty() && values.back() == 0.0F) {
                values = values.first(values.size() - 1);
            }
            if (!values.empty()) {
                json += std::exchange(any, true) ? "," : "";
                appendChannel(json, stick, channel, values);
            }
        }
    }
    json += ']';
}

} // namespace

void LogbookJson::begin() {
    writeWhole(device_, "{\"format\":\"benthor-logbook\",\"version\":1,\"dives\":[");
}

QByteArray LogbookJson::prepare(const WholeDive& dive) {
    QByteArray json = "{\"show\":" + QJsonDocument(showObject(dive)).toJson(QJsonDocument::Compact);
    json += ",\"samples\":";
    appendSamplesJson(json, dive, dive.file ? usualRoom(dive.file->size()) : 0);
    json += ",\"sticks\":";
    appendSticks(json, dive.profile);
    json += ",\"file\":";
    appendFile(json, dive);
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
