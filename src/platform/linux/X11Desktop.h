#pragma once
// The facts an X11 display gives about its desktop, read over a connection
// of our own (not the one of Qt's windowing, which a command-line front
// does not have): the top-level windows in stacking order, the screen and
// its work area, the pointer. Coordinates are the server's (root window,
// origin top left); X11DesktopRules turns them into the desktop convention.

#include "X11DesktopRules.h"

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <memory>
#include <optional>

struct xcb_connection_t;

class X11Desktop
{
public:
    // Nothing when DISPLAY is unset or its server cannot be reached.
    static std::unique_ptr<X11Desktop> connect();
    ~X11Desktop();
    X11Desktop(const X11Desktop &) = delete;
    X11Desktop &operator=(const X11Desktop &) = delete;

    // False once the server has closed the connection.
    bool isConnected() const;
    // Whether the server offers XInput 2.2 (raw button events for everyone).
    bool hasXInput2();

    QSize screenSize();
    QRect workArea();
    std::optional<QPoint> pointer();
    // Every top-level window, bottom to top, as the window manager stacks
    // them (_NET_CLIENT_LIST_STACKING) or, without one, as the root does.
    QList<X11TopLevel> topLevels();

private:
    struct Atoms;
    X11Desktop(xcb_connection_t *connection, quint32 root);

    QList<quint32> cardinals(quint32 window, quint32 property, quint32 type, quint32 count);
    bool hasProperty(quint32 window, quint32 property);
    QList<quint32> children(quint32 window);
    quint32 parent(quint32 window);
    quint32 frameOf(quint32 client);
    quint32 clientOf(quint32 topLevel);
    X11TopLevel describe(quint32 frame, quint32 client);
    void discardErrors();

    xcb_connection_t *m_connection;
    quint32 m_root;
    std::unique_ptr<Atoms> m_atoms;
};
