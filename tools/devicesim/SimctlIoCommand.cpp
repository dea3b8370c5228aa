// simctl io <device> enumerate | screenshot [--type=...] [--display=...] [--mask=...] <path>

#include "Console.h"
#include "DeviceScreen.h"
#include "SimctlSupport.h"
#include "StateStore.h"

#include <QFileInfo>
#include <QUuid>

namespace Simctl {

namespace {

QString portUuid(const Device &d, const char *port)
{
    const QUuid ns(QStringLiteral("{0b6f3c1e-55a2-4d8e-8f0e-7a1c2b3d4e5f}"));
    return QUuid::createUuidV5(ns, d.udid + QLatin1Char('/') + QLatin1String(port)).toString(QUuid::WithoutBraces).toUpper();
}

QString displayPort(const Device &d, const char *name, int displayClass, int width, int height, double scale, bool on,
                    const char *type)
{
    return QStringLiteral("Port:\n"
                          "    UUID: %1\n"
                          "    Class: Display\n"
                          "    Name: %2\n"
                          "    Power state: %3\n"
                          "    Display class: %4\n"
                          "    Default width: %5\n"
                          "    Default height: %6\n"
                          "    Default pixel format: 'BGRA'\n"
                          "    Display type: %7\n"
                          "    Preferred UI Scale: %8\n")
        .arg(portUuid(d, name), QLatin1String(name), on ? QStringLiteral("On") : QStringLiteral("Off"))
        .arg(displayClass)
        .arg(width)
        .arg(height)
        .arg(QLatin1String(type), QString::number(scale));
}

QString enumerateText(const Device &d)
{
    QString text = displayPort(d, "LCD", 0, d.pixelWidth, d.pixelHeight, d.scale, true, "Embedded");
    text += QStringLiteral("    Display Rotation: 0\n    Display Orientation: Portrait\n");
    if (d.platform() != QLatin1String("watchOS"))
        text += displayPort(d, "TVOut", 1, 720, 480, 1, false, "External");
    text += QStringLiteral("Port:\n    UUID: %1\n    Class: HID\n    Name: Touch\n    Transport: com.apple.CoreSimulator.HID.LegacyHID\n")
                .arg(portUuid(d, "HID"));
    text += QStringLiteral("\nConnected Screens:\n"
                           "    (1) LCD:\n"
                           "        Screen ID: 1\n"
                           "        Device Name: primary\n"
                           "        Screen Type: Integrated\n"
                           "        Pixel Size: {%1, %2}\n"
                           "        Preferred UI Scale: %3\n"
                           "        UI Orientation: Portrait\n")
                .arg(d.pixelWidth)
                .arg(d.pixelHeight)
                .arg(QString::number(d.scale));
    return text;
}

QString detectedType(const QString &path, const QStringList &options)
{
    for (const QString &o : options)
        if (o.startsWith(QLatin1String("--type=")))
            return o.mid(7).toUpper();
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg"))
        return QStringLiteral("JPEG");
    if (suffix == QLatin1String("tif") || suffix == QLatin1String("tiff"))
        return QStringLiteral("TIFF");
    return QStringLiteral("PNG");
}

int screenshot(const QString &token, const QStringList &arguments)
{
    QStringList options;
    QString path;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &a = arguments[i];
        if (a.startsWith(QLatin1String("--")))
            options.append(a);
        else if (path.isEmpty())
            path = a;
        else
            throw usage(QStringLiteral("Unexpected argument: %1").arg(a));
    }
    if (path.isEmpty())
        throw usage(QStringLiteral("Usage: simctl io <device> screenshot [--type=<type>] [--display=<display>] [--mask=<policy>] <file or url>"));
    World world = StateStore::read();
    const Device &d = bootedDevice(world, token);
    const QImage image = DeviceScreen::render(d, world.faults);
    Console::err(QStringLiteral("Detected file type '%1' from extension\n").arg(detectedType(path, options)));
    if (const auto problem = DeviceScreen::save(image, path))
        throw error(QStringLiteral("NSCocoaErrorDomain"), 512, *problem);
    Console::out(QStringLiteral("Wrote screenshot to: %1\n").arg(path));
    return 0;
}

} // namespace

int io(const QStringList &arguments)
{
    requireArguments(arguments, 2, QStringLiteral("io <device> <operation> <arguments>"));
    const QString operation = arguments[1];
    if (operation == QLatin1String("enumerate")) {
        World world = StateStore::read();
        Console::out(enumerateText(bootedDevice(world, arguments[0])));
        return 0;
    }
    if (operation == QLatin1String("screenshot"))
        return screenshot(arguments[0], arguments.mid(2));
    throw usage(QStringLiteral("Unknown io operation '%1'").arg(operation));
}

} // namespace Simctl
