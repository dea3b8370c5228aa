#include "RecorderPanelPlacement.h"

#include "SimulatorWindowLocator.h"

#include <algorithm>

namespace RecorderPanelPlacement {

QRectF frame(const std::optional<QRectF> &visibleFrame, const std::optional<QRectF> &simulatorFrame)
{
    constexpr double gap = 14;       // between the panel and the Simulator
    constexpr double margin = 12;    // from the visible frame's edges
    constexpr double rightInset = 28; // without a Simulator: near the top right
    constexpr double topInset = 42;
    const QRectF v = visibleFrame.value_or(QRectF(0, 0, 1200, 800));
    const double vMaxX = v.x() + v.width();
    const double vMaxY = v.y() + v.height();
    if (!simulatorFrame)
        return QRectF(vMaxX - panelWidth - rightInset, vMaxY - panelHeight - topInset, panelWidth, panelHeight);

    const QRectF &w = *simulatorFrame;
    double x = w.x() + w.width() + gap;
    if (x + panelWidth > vMaxX)
        x = std::max(v.x() + margin, w.x() - panelWidth - gap);
    double y = std::max(v.y() + margin, w.y() + w.height() - panelHeight);
    y = std::min(y, vMaxY - panelHeight - margin);
    return QRectF(x, y, panelWidth, panelHeight);
}

QRect topLeftGeometry(const QRectF &frame, const std::optional<QRectF> &mainScreenFrame)
{
    const QRectF screen = mainScreenFrame.value_or(QRectF(0, 0, 1200, 800));
    const double top = screen.y() + screen.height() - (frame.y() + frame.height());
    return QRectF(frame.x(), top, frame.width(), frame.height()).toRect();
}

QRect geometry(PlatformServices &platform)
{
    const QRectF placed = frame(platform.mainScreenVisibleFrame(), SimulatorWindowLocator::windowFrame(platform));
    return topLeftGeometry(placed, platform.mainScreenFrame());
}

} // namespace RecorderPanelPlacement
