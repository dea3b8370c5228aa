#pragma once
// Where the floating recorder panel goes: beside the Simulator window, its
// top level with the Simulator's top, and always inside the visible screen.
// Desktop coordinates, origin at the bottom left.

#include "platform/PlatformServices.h"

#include <QRect>
#include <QRectF>
#include <optional>

namespace RecorderPanelPlacement {

inline constexpr double panelWidth = 460;
inline constexpr double panelHeight = 760;

// `visibleFrame` is the main screen's visible frame (1200 x 800 at the
// origin when there is no main screen); `simulatorFrame` the Simulator
// window's frame, if one was found.
QRectF frame(const std::optional<QRectF> &visibleFrame, const std::optional<QRectF> &simulatorFrame);

// A bottom-left-origin desktop frame as a window system with its origin at
// the top left places it, flipped against the main screen's frame (the
// 1200 x 800 stand-in when there is no main screen).
QRect topLeftGeometry(const QRectF &frame, const std::optional<QRectF> &mainScreenFrame);

// Where the panel goes now, with the facts fetched from the desktop, in
// top-left-origin coordinates, ready for the window.
QRect geometry(PlatformServices &platform);

} // namespace RecorderPanelPlacement
