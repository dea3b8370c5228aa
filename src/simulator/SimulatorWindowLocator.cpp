#include "SimulatorWindowLocator.h"

namespace SimulatorWindowLocator {

std::optional<QRectF> windowFrame(const QList<RawWindowInfo> &windows, const std::optional<QRectF> &mainScreenFrame)
{
    // Small Simulator windows are its panels and sheets, not a device.
    constexpr double minimumSide = 100;
    const QRectF screen = mainScreenFrame.value_or(QRectF());
    for (const RawWindowInfo &window : windows) {
        if (window.ownerName != QLatin1String("Simulator") || window.layer != 0 || !window.bounds)
            continue;
        const QRectF &bounds = *window.bounds;
        if (bounds.width() <= minimumSide || bounds.height() <= minimumSide)
            continue;
        const double screenMaxY = screen.y() + screen.height();
        const double boundsMaxY = bounds.y() + bounds.height();
        return QRectF(bounds.x(), screenMaxY - boundsMaxY, bounds.width(), bounds.height());
    }
    return std::nullopt;
}

std::optional<QRectF> windowFrame(PlatformServices &platform)
{
    const QList<RawWindowInfo> windows = platform.onScreenWindows();
    if (windows.isEmpty())
        return std::nullopt;
    return windowFrame(windows, platform.mainScreenFrame());
}

} // namespace SimulatorWindowLocator
