#include "DemoOnScreen.h"

#include <algorithm>

namespace E2E {

namespace {

// The default world's iPhone 15 Pro, in points.
const QSizeF iPhonePoints(393, 852);

} // namespace

QRectF screenRect(const QRect &window)
{
    const double strip = std::min(window.height() * 0.18, 34.0);
    const QRectF content(window.x(), window.y() + strip, window.width(), window.height() - strip);
    const double aspect = iPhonePoints.width() / iPhonePoints.height();
    const QSizeF fitted = aspect < content.width() / content.height()
                              ? QSizeF(aspect * content.height(), content.height())
                              : QSizeF(content.width(), content.width() / aspect);
    QRectF rect(QPointF(), fitted);
    rect.moveCenter(content.center());
    return rect;
}

QPoint pixelFor(const QPointF &point, const QRect &window)
{
    const QRectF screen = screenRect(window);
    return QPointF(screen.x() + point.x() / iPhonePoints.width() * screen.width(),
                   screen.y() + point.y() / iPhonePoints.height() * screen.height())
        .toPoint();
}

QPointF pointAt(const QPoint &pixel, const QRect &window)
{
    const QRectF screen = screenRect(window);
    return {(pixel.x() - screen.x()) / screen.width() * iPhonePoints.width(),
            (pixel.y() - screen.y()) / screen.height() * iPhonePoints.height()};
}

bool within1(const QPointF &a, const QPointF &b)
{
    return std::abs(a.x() - b.x()) <= 1 && std::abs(a.y() - b.y()) <= 1;
}

QHash<QString, QString> privateDesktop(const DeviceWorld &world, const XDisplay &display)
{
    QHash<QString, QString> env = world.privateHome();
    env.insert(display.environment());
    return env;
}

bool waitForDemo(const DeviceWorld &world, const std::function<bool(const QJsonObject &)> &reached)
{
    return eventually([&] { return reached(world.demoSession()); });
}

} // namespace E2E
