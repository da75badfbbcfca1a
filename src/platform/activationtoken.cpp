#include "platform/activationtoken.h"

#include <QtGlobal>

#include <algorithm>

namespace benthor::platform {

namespace {

constexpr const char* kName = "XDG_ACTIVATION_TOKEN";
constexpr qsizetype kLongestToken = 512;

} // namespace

bool isActivationToken(const QByteArray& token) {
    return !token.isEmpty() && token.size() <= kLongestToken &&
           std::all_of(token.begin(), token.end(), [](char c) { return c > ' ' && c < '\x7f'; });
}

QByteArray takeActivationToken() {
    const QByteArray token = qgetenv(kName);
    qunsetenv(kName);
    return isActivationToken(token) ? token : QByteArray();
}

LeaveToActivate::LeaveToActivate(const QByteArray& token)
    : given_(!token.isEmpty()) {
    if (given_) {
        qputenv(kName, token);
    }
}

/// Where the display knows no such tokens nobody has used it, and it would come to programs started later.
LeaveToActivate::~LeaveToActivate() {
    if (given_) {
        qunsetenv(kName);
    }
}

} // namespace benthor::platform
