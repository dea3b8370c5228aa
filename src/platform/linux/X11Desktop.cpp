#include "X11Desktop.h"

#include "X11Connection.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

namespace {

// Replies are allocated by xcb and freed with free().
template <class T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

template <class T>
Reply<T> reply(T *value)
{
    return Reply<T>(value, &std::free);
}

xcb_atom_t internAtom(xcb_connection_t *c, const char *name)
{
    const auto r = reply(xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name), nullptr));
    return r ? r->atom : xcb_atom_t(XCB_ATOM_NONE);
}

// A reparenting window manager nests its frames; further down is not a desktop.
constexpr int maximumNesting = 8;

} // namespace

struct X11Desktop::Atoms
{
    xcb_atom_t clientListStacking, workArea, currentDesktop, wmState, wmPid, windowType, typeDock, typeDesktop;
};

std::unique_ptr<X11Desktop> X11Desktop::connect()
{
    quint32 root = 0;
    xcb_connection_t *connection = X11Connection::open(&root);
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11Desktop>(new X11Desktop(connection, root));
}

X11Desktop::X11Desktop(xcb_connection_t *connection, quint32 root)
    : m_connection(connection), m_root(root), m_atoms(std::make_unique<Atoms>())
{
    *m_atoms = {internAtom(connection, "_NET_CLIENT_LIST_STACKING"),
                internAtom(connection, "_NET_WORKAREA"),
                internAtom(connection, "_NET_CURRENT_DESKTOP"),
                internAtom(connection, "WM_STATE"),
                internAtom(connection, "_NET_WM_PID"),
                internAtom(connection, "_NET_WM_WINDOW_TYPE"),
                internAtom(connection, "_NET_WM_WINDOW_TYPE_DOCK"),
                internAtom(connection, "_NET_WM_WINDOW_TYPE_DESKTOP")};
}

X11Desktop::~X11Desktop()
{
    xcb_disconnect(m_connection);
}

bool X11Desktop::isConnected() const
{
    return xcb_connection_has_error(m_connection) == 0;
}

bool X11Desktop::hasXInput2()
{
    return isConnected() && X11Connection::hasXInput2(m_connection);
}

QSize X11Desktop::screenSize()
{
    const auto geometry = reply(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, m_root), nullptr));
    return geometry ? QSize(geometry->width, geometry->height) : QSize();
}

QRect X11Desktop::workArea()
{
    const QList<quint32> desktop = cardinals(m_root, m_atoms->currentDesktop, XCB_ATOM_CARDINAL, 1);
    const QList<quint32> areas = cardinals(m_root, m_atoms->workArea, XCB_ATOM_CARDINAL, 4 * 64);
    return X11DesktopRules::workArea(areas, desktop.value(0), screenSize());
}

std::optional<QPoint> X11Desktop::pointer()
{
    const auto r = reply(xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr));
    discardErrors();
    if (!r || !r->same_screen)
        return std::nullopt;
    return QPoint(r->root_x, r->root_y);
}

QList<X11TopLevel> X11Desktop::topLevels()
{
    if (!isConnected())
        return {};
    QList<X11TopLevel> windows;
    const QList<quint32> stacking = cardinals(m_root, m_atoms->clientListStacking, XCB_ATOM_WINDOW, 4096);
    if (!stacking.isEmpty()) {
        for (const quint32 client : stacking)
            windows.append(describe(frameOf(client), client));
    } else {
        for (const quint32 topLevel : children(m_root))
            windows.append(describe(topLevel, clientOf(topLevel)));
    }
    discardErrors();
    return windows;
}

// A window that closes while it is being described answers with errors;
// this connection selects no events, so its queue holds nothing else.
void X11Desktop::discardErrors()
{
    while (xcb_generic_event_t *event = xcb_poll_for_queued_event(m_connection))
        std::free(event);
}

QList<quint32> X11Desktop::cardinals(quint32 window, quint32 property, quint32 type, quint32 count)
{
    QList<quint32> values;
    if (property == XCB_ATOM_NONE)
        return values;
    const auto r = reply(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 0, window, property, type, 0, count), nullptr));
    if (!r || r->format != 32 || r->type != type)
        return values;
    const auto *data = static_cast<const uint32_t *>(xcb_get_property_value(r.get()));
    const int length = xcb_get_property_value_length(r.get()) / 4;
    for (int i = 0; i < length; ++i)
        values.append(data[i]);
    return values;
}

bool X11Desktop::hasProperty(quint32 window, quint32 property)
{
    const auto r = reply(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 0), nullptr));
    return r && r->type != XCB_ATOM_NONE;
}

QList<quint32> X11Desktop::children(quint32 window)
{
    QList<quint32> result;
    const auto tree = reply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    if (!tree)
        return result;
    const xcb_window_t *list = xcb_query_tree_children(tree.get());
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) // bottom to top
        result.append(list[i]);
    return result;
}

quint32 X11Desktop::parent(quint32 window)
{
    const auto tree = reply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    return tree ? tree->parent : xcb_window_t(XCB_WINDOW_NONE);
}

// The root's child that holds a client: its window manager frame.
quint32 X11Desktop::frameOf(quint32 client)
{
    quint32 window = client;
    for (int depth = 0; depth < maximumNesting; ++depth) {
        const quint32 up = parent(window);
        if (up == XCB_WINDOW_NONE || up == m_root)
            return window;
        window = up;
    }
    return client;
}

// The application window inside a root child: the one that carries
// WM_STATE (set by a window manager on the windows it manages); without a
// window manager, the root child itself.
quint32 X11Desktop::clientOf(quint32 topLevel)
{
    if (hasProperty(topLevel, m_atoms->wmState))
        return topLevel;
    QList<quint32> level = children(topLevel);
    for (int depth = 0; depth < 2 && !level.isEmpty(); ++depth) {
        QList<quint32> next;
        for (const quint32 window : level) {
            if (hasProperty(window, m_atoms->wmState))
                return window;
            next += children(window);
        }
        level = next;
    }
    return topLevel;
}

X11TopLevel X11Desktop::describe(quint32 frame, quint32 client)
{
    xcb_connection_t *c = m_connection;
    // All requests first, then the replies: one wait for the lot.
    const auto attributesCookie = xcb_get_window_attributes(c, client);
    const auto frameGeometryCookie = xcb_get_geometry(c, frame);
    const auto frameOriginCookie = xcb_translate_coordinates(c, frame, m_root, 0, 0);
    const auto clientGeometryCookie = xcb_get_geometry(c, client);
    const auto clientOriginCookie = xcb_translate_coordinates(c, client, m_root, 0, 0);
    const auto classCookie = xcb_get_property(c, 0, client, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 256);
    const auto pidCookie = xcb_get_property(c, 0, client, m_atoms->wmPid, XCB_ATOM_CARDINAL, 0, 1);
    const auto typeCookie = xcb_get_property(c, 0, client, m_atoms->windowType, XCB_ATOM_ATOM, 0, 16);

    X11TopLevel window;
    window.frame = frame;
    window.client = client;
    if (const auto attributes = reply(xcb_get_window_attributes_reply(c, attributesCookie, nullptr))) {
        window.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
        window.inputOnly = attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
        window.overrideRedirect = attributes->override_redirect;
    }
    const auto frameGeometry = reply(xcb_get_geometry_reply(c, frameGeometryCookie, nullptr));
    const auto frameOrigin = reply(xcb_translate_coordinates_reply(c, frameOriginCookie, nullptr));
    if (frameGeometry && frameOrigin)
        window.frameBounds = QRect(frameOrigin->dst_x, frameOrigin->dst_y, frameGeometry->width, frameGeometry->height);
    const auto clientGeometry = reply(xcb_get_geometry_reply(c, clientGeometryCookie, nullptr));
    const auto clientOrigin = reply(xcb_translate_coordinates_reply(c, clientOriginCookie, nullptr));
    if (clientGeometry && clientOrigin)
        window.clientBounds =
            QRect(clientOrigin->dst_x, clientOrigin->dst_y, clientGeometry->width, clientGeometry->height);
    if (const auto wmClass = reply(xcb_get_property_reply(c, classCookie, nullptr))) {
        const QByteArray bytes(static_cast<const char *>(xcb_get_property_value(wmClass.get())),
                               xcb_get_property_value_length(wmClass.get()));
        window.wmClass = X11DesktopRules::wmClassName(bytes);
    }
    if (const auto pid = reply(xcb_get_property_reply(c, pidCookie, nullptr));
        pid && pid->format == 32 && xcb_get_property_value_length(pid.get()) >= 4)
        window.pid = *static_cast<const uint32_t *>(xcb_get_property_value(pid.get()));
    if (const auto types = reply(xcb_get_property_reply(c, typeCookie, nullptr)); types && types->format == 32) {
        const auto *atoms = static_cast<const xcb_atom_t *>(xcb_get_property_value(types.get()));
        const int count = xcb_get_property_value_length(types.get()) / 4;
        // The first type the window manager knows wins; these two matter here.
        for (int i = 0; i < count; ++i) {
            if (atoms[i] == m_atoms->typeDock) {
                window.kind = X11TopLevel::Kind::dock;
                break;
            }
            if (atoms[i] == m_atoms->typeDesktop) {
                window.kind = X11TopLevel::Kind::desktop;
                break;
            }
        }
    }
    return window;
}
