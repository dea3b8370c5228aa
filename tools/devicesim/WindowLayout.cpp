#include "WindowLayout.h"

#include <algorithm>
#include <cmath>

namespace WindowLayout {

namespace {

constexpr double maximumStrip = 34;
constexpr double stripShare = 0.18;

} // namespace

double titleStripHeight(double windowHeight)
{
    return std::min(windowHeight * stripShare, maximumStrip);
}

QRectF screenRect(const QSizeF &window, const QSizeF &devicePoints)
{
    const double strip = titleStripHeight(window.height());
    const QRectF content(0, strip, window.width(), window.height() - strip);
    if (devicePoints.isEmpty() || content.isEmpty())
        return {};
    const double aspect = devicePoints.width() / devicePoints.height();
    QSizeF fitted = aspect < content.width() / content.height() ? QSizeF(aspect * content.height(), content.height())
                                                                : QSizeF(content.width(), content.width() / aspect);
    QRectF rect(QPointF(), fitted);
    rect.moveCenter(content.center());
    return rect;
}

std::optional<QPointF> devicePoint(const QPointF &windowPoint, const QSizeF &window, const QSizeF &devicePoints)
{
    const QRectF screen = screenRect(window, devicePoints);
    if (screen.isEmpty() || windowPoint.x() < screen.left() || windowPoint.x() > screen.right()
        || windowPoint.y() < screen.top() || windowPoint.y() > screen.bottom())
        return std::nullopt;
    const double x = (windowPoint.x() - screen.left()) / screen.width() * devicePoints.width();
    const double y = (windowPoint.y() - screen.top()) / screen.height() * devicePoints.height();
    return QPointF(std::clamp(x, 0.0, devicePoints.width()), std::clamp(y, 0.0, devicePoints.height()));
}

QSize initialSize(const QSizeF &devicePoints, const QSize &available)
{
    if (devicePoints.isEmpty())
        return {400, 800};
    // A window taller than 189 pixels has the full strip.
    const double screenHeight = std::min(devicePoints.height(), available.height() * 0.85 - maximumStrip);
    const double height = std::max(screenHeight, 300.0);
    const double width = height * devicePoints.width() / devicePoints.height();
    return {int(std::lround(width)), int(std::lround(height + maximumStrip))};
}

} // namespace WindowLayout
