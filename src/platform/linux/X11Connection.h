#pragma once
// Opening a connection of our own to the X11 display in DISPLAY, for the
// desktop facts and for the click monitor alike.

#include <QtGlobal>

struct xcb_connection_t;

namespace X11Connection {

// A new connection and the root window of its default screen; nothing when
// DISPLAY is unset or its server cannot be reached. Close it with xcb_disconnect.
xcb_connection_t *open(quint32 *root);
// Whether the server offers XInput 2.2, from which raw button events reach
// every client that selects them, grabs or not.
bool hasXInput2(xcb_connection_t *connection);

} // namespace X11Connection
