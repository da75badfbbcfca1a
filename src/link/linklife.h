#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

namespace benthor::link {

/// Load of the link screen: the texts it begins with, the remembered port, the first request for the
/// directory when a face was asked for, the text to send from gdata.txt, and the search for the device.
void loadlink(LinkState& link, LinkHost& host);
/// Unload of the link screen: remembers the port, closes all ports, and takes back the wish for a face.
/// Nothing is sent.
void unloadlink(LinkState& link, LinkHost& host);

/// Closes the working port and all search ports that are open; none of them is opened again by a tick.
void closeallports(LinkState& link, LinkHost& host);

} // namespace benthor::link
