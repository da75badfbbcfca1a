#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace benthor::link {

// The working port and the link's verdict.

/// Any change of the text in `ComNum`: takes the text and runs opencomport().
void setcomnum(LinkState& link, LinkHost& host, const QString& text);
void opencomport(LinkState& link, LinkHost& host);
/// Whether the working port was cut: its adapter is gone, and the port is opened again when that is back.
bool portcut(const LinkState& link, LinkHost& host);
/// The receive event: takes all that waits at the working port.
void MSComm1_received(LinkState& link, LinkHost& host);
/// Every 500 ms.
void Timer1_tick(LinkState& link, LinkHost& host);
/// Colours of the ten lamps; advances nothing but the wrap of `tickcount`.
void linkstatuspaint(LinkState& link);

// The search for the port on which a device talks.

void mnuFindKD_click(LinkState& link, LinkHost& host);
/// Every 5 s.
void Timer8_tick(LinkState& link, LinkHost& host);
/// Whether a search is in its first seconds, in which nothing is amiss where nothing was heard.
bool searchisyoung(const LinkState& link);
/// The receive event of a search port.
void MSComm2_received(LinkState& link, LinkHost& host, int index);
/// Closes the search ports 1 to `last` that are open.
void closesearchports(LinkHost& host, int last);

// The remembered port: a record file with one record.

/// The port number's text, or empty for a missing file, which is then made.
QString readcomport();
void writecomport(const QString& text);
/// Writes the number when there is one and it is another than the remembered one.
void remembercomport(const LinkState& link);

/// Hint 1 to 5.
const QString& hint(int step);
/// Every 10 s: the next of five hints, and the clock while the screen can be seen.
void Timer4_tick(LinkState& link, bool screenVisible);

} // namespace benthor::link
