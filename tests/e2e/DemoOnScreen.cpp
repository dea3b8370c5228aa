#include "DemoOnScreen.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QJsonArray>
#include <QTest>
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

QHash<QString, QString> privateHome(const DeviceWorld &world)
{
    const QString home = world.scratch() + QStringLiteral("/home");
    QDir().mkpath(home + QStringLiteral("/.local/share"));
    return {{QStringLiteral("HOME"), home}, {QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share")}};
}

QHash<QString, QString> privateDesktop(const DeviceWorld &world, const XDisplay &display)
{
    QHash<QString, QString> env = privateHome(world);
    env.insert(display.environment());
    return env;
}

QJsonObject demoSession(const DeviceWorld &world)
{
    for (const QJsonValue &device : world.standInState()[QStringLiteral("devices")].toArray()) {
        if (device[QStringLiteral("udid")].toString() != iPhoneUdid)
            continue;
        for (const QJsonValue &session : device[QStringLiteral("running")].toArray())
            if (session[QStringLiteral("bundleId")].toString() == demoBundleId)
                return session.toObject();
    }
    return {};
}

bool waitForDemo(const DeviceWorld &world, const std::function<bool(const QJsonObject &)> &reached)
{
    QDeadlineTimer deadline(20000);
    while (!reached(demoSession(world))) {
        if (deadline.hasExpired())
            return false;
        QTest::qWait(100);
    }
    return true;
}

QStringList screenActions(const QJsonObject &project)
{
    QStringList screens;
    for (const QJsonValue &screen : project[QStringLiteral("screens")].toArray()) {
        QStringList actions;
        for (const QJsonValue &value : screen[QStringLiteral("operations")].toArray()) {
            const QJsonObject operation = value.toObject();
            const QString kind = operation.keys().first();
            const QJsonObject p = operation[kind].toObject();
            if (kind == QLatin1String("tap"))
                actions.append(QStringLiteral("tap %1 %2").arg(p[QStringLiteral("x")].toInt()).arg(p[QStringLiteral("y")].toInt()));
            else if (kind == QLatin1String("swipe"))
                actions.append(QStringLiteral("swipe %1 %2 %3 %4")
                                   .arg(p[QStringLiteral("startX")].toInt())
                                   .arg(p[QStringLiteral("startY")].toInt())
                                   .arg(p[QStringLiteral("endX")].toInt())
                                   .arg(p[QStringLiteral("endY")].toInt()));
            else if (kind != QLatin1String("wait"))
                actions.append(kind);
        }
        screens.append(actions.join(QStringLiteral(", ")));
    }
    return screens;
}

} // namespace E2E
