#pragma once
// What the X11 adapter makes of the facts an X server reports: which
// top-level windows count and in what order, the work area, whose window
// lies under the pointer, and the flip to the desktop convention of the
// platform interface (origin bottom left, y up). Plain values in, plain
// values out, so that they are tested without a display.

#include "platform/PlatformServices.h"

#include <QByteArray>
#include <QList>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSet>
#include <QSize>
#include <QString>

// One top-level window as the X server describes it. Rectangles are in
// root coordinates (origin top left, y down).
struct X11TopLevel
{
    enum class Kind { normal, dock, desktop };

    quint32 frame = 0;  // the root's child: a window manager's frame, or the window itself
    quint32 client = 0; // the application's window (the frame itself when there is none)
    QRect frameBounds;
    QRect clientBounds;
    QString wmClass; // the class part of WM_CLASS
    quint32 pid = 0; // _NET_WM_PID; 0 when unset
    bool viewable = false;
    bool inputOnly = false;
    bool overrideRedirect = false; // menus, tooltips and other pop-ups
    Kind kind = Kind::normal;      // from _NET_WM_WINDOW_TYPE
};

namespace X11DesktopRules {

// Layers as the desktop interface numbers them: ordinary windows on 0,
// panels and docks above them, pop-ups above those.
inline constexpr int normalLayer = 0;
inline constexpr int dockLayer = 20;
inline constexpr int popUpLayer = 101;

// The windows one can see, front to back, from the server's stacking
// order (bottom to top). Hidden, minimised and input-only windows and the
// desktop's background window are left out.
QList<X11TopLevel> visibleFrontToBack(const QList<X11TopLevel> &bottomToTop);
// The window list of the platform interface: owner name, layer and the
// client area's bounds (origin top left).
QList<RawWindowInfo> rawWindows(const QList<X11TopLevel> &frontToBack);
// Whether the front-most window under `point` (root coordinates) is one of
// this process's: its pid, or one of `ownWindowIds`.
bool isOverOwnWindow(const QPointF &point, const QList<X11TopLevel> &frontToBack, quint32 ownPid,
                     const QSet<quint32> &ownWindowIds);

// Root coordinates (origin top left) to desktop coordinates (origin bottom
// left) on a screen `screenHeight` high, and a rectangle the same way.
QPointF toBottomLeft(const QPointF &point, double screenHeight);
QRectF toBottomLeft(const QRectF &rect, double screenHeight);

// The current desktop's work area from _NET_WORKAREA (x, y, width, height
// for each desktop), limited to the screen; the whole screen when the
// window manager sets none.
QRect workArea(const QList<quint32> &values, quint32 currentDesktop, const QSize &screen);
// The class name of a WM_CLASS property ("instance\0class\0").
QString wmClassName(const QByteArray &property);

} // namespace X11DesktopRules
