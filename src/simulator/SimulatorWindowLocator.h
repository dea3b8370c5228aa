#pragma once
// Where the Simulator's window lies on the desktop, so that clicks in it can
// be turned into device points. Frames use desktop coordinates: origin at
// the bottom left of the main screen, y growing upwards.

#include "platform/PlatformServices.h"

#include <QList>
#include <QRectF>
#include <optional>

namespace SimulatorWindowLocator {

// The front-most Simulator window of `windows` (front to back, as the
// window server lists them): owned by "Simulator", on layer 0, with
// readable bounds larger than 100 x 100. Its top-left-origin bounds are
// flipped against the main screen's frame (all zero when there is none).
std::optional<QRectF> windowFrame(const QList<RawWindowInfo> &windows, const std::optional<QRectF> &mainScreenFrame);

// The same, with the facts fetched from the desktop.
std::optional<QRectF> windowFrame(PlatformServices &platform);

} // namespace SimulatorWindowLocator
