#pragma once
// Where the floating recorder panel goes: beside the Simulator window, its
// top level with the Simulator's top, and always inside the visible screen.
// Desktop coordinates, origin at the bottom left.

#include <QRectF>
#include <optional>

namespace RecorderPanelPlacement {

inline constexpr double panelWidth = 460;
inline constexpr double panelHeight = 760;

// `visibleFrame` is the main screen's visible frame (1200 x 800 at the
// origin when there is no main screen); `simulatorFrame` the Simulator
// window's frame, if one was found.
QRectF frame(const std::optional<QRectF> &visibleFrame, const std::optional<QRectF> &simulatorFrame);

} // namespace RecorderPanelPlacement
