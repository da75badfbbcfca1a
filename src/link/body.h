#pragma once

#include "link/console.h"

namespace benthor::link {

// Parts of a send.

/// A box, and the caption of a device that does not answer.
void telllost(LinkState& link, LinkHost& host, const QString& words);
/// What is being sent, in words, and what to know of it where it did not leave whole.
struct Sent {
    QString what;
    QString behind = QStringLiteral(".");
};
Sent sentcommand();
Sent sentsetup();

/// While this lives what is sent is the tick's own request: the same one would come at each tick, and a line
/// that takes nothing is told once, until it takes something again or is opened anew.
class AsksItself {
public:
    explicit AsksItself(LinkState& link)
        : link_(link) {
        ++link_.asksitself;
    }
    ~AsksItself() { --link_.asksitself; }
    AsksItself(const AsksItself&) = delete;
    AsksItself& operator=(const AsksItself&) = delete;

private:
    LinkState& link_;
};

/// One write. Where the line is cut or takes nothing, what became of it is told; a port that nobody opened is
/// skipped silently.
platform::Written put(LinkState& link, LinkHost& host, const QByteArray& bytes, const Sent& sent);

/// A request whose answer the ticks wait for: "The request for dives". A line that takes nothing is told; the
/// wait for it stays, and so does that on a cut line, which shows by itself.
void putrequest(LinkState& link, LinkHost& host, const QByteArray& bytes, const QString& what);

/// A setup is looked at before the first byte that leads it. False: it stays, and that was told.
bool bodymaygo(const LinkState& link, LinkHost& host);
/// A book or a logo needs a file that was opened and is named; else it does not even begin, and that is told.
bool tellmissing(const LinkState& link, LinkHost& host);
/// The body, if there is one, character by character.
void sendbody(LinkState& link, LinkHost& host);

/// Command, prefix, data, trailer: what goes out ahead of a body.
QString wire(const Console& console);
/// Whether Send is the update of the gas screen.
bool isupdate(const Console& console);
/// The interval that was typed, where that is what can be seen; empty: the data as they are.
QString typedinterval(const Console& console);

} // namespace benthor::link
