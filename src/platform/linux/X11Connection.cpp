#include "X11Connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cstdlib>

namespace X11Connection {

xcb_connection_t *open(quint32 *root)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return nullptr;
    int screenNumber = 0;
    xcb_connection_t *connection = xcb_connect(nullptr, &screenNumber);
    xcb_screen_iterator_t screens{};
    if (!xcb_connection_has_error(connection)) {
        screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
        for (int i = 0; i < screenNumber && screens.rem > 0; ++i)
            xcb_screen_next(&screens);
    }
    if (xcb_connection_has_error(connection) || screens.rem == 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    *root = screens.data->root;
    return connection;
}

bool hasXInput2(xcb_connection_t *connection)
{
    const xcb_query_extension_reply_t *extension = xcb_get_extension_data(connection, &xcb_input_id);
    if (!extension || !extension->present)
        return false;
    xcb_input_xi_query_version_reply_t *version =
        xcb_input_xi_query_version_reply(connection, xcb_input_xi_query_version(connection, 2, 2), nullptr);
    const bool recentEnough =
        version && (version->major_version > 2 || (version->major_version == 2 && version->minor_version >= 2));
    std::free(version);
    return recentEnough;
}

} // namespace X11Connection
