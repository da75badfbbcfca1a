#pragma once

#include <QByteArray>

namespace benthor::platform {

// Desktops that let no program push its windows in front (Wayland's) give each start a token instead: leave
// for one window to come to the front, once. A start that hands its work to the copy that is open already
// hands its token over, too.

/// Whether it can be handed over: 1 to 512 characters of ASCII without blanks.
bool isActivationToken(const QByteArray& token);

/// Takes the token of this start out of the environment, where the toolkit and programs started from here
/// would find it. Empty where there is none, or none that can be handed over.
QByteArray takeActivationToken();

/// For as long as it lives the toolkit finds this token when it asks for a window to come to the front. An
/// empty one changes nothing.
class LeaveToActivate {
public:
    explicit LeaveToActivate(const QByteArray& token);
    ~LeaveToActivate();
    LeaveToActivate(const LeaveToActivate&) = delete;
    LeaveToActivate& operator=(const LeaveToActivate&) = delete;

private:
    bool given_;
};

} // namespace benthor::platform
