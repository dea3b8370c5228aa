#include "ScreenGeometry.h"

#include "World.h"

ScreenGeometry ScreenGeometry::forDevice(const Device &device)
{
    ScreenGeometry g;
    g.scale = device.scale > 0 ? device.scale : 1.0;
    g.width = device.pixelWidth / g.scale;
    g.height = device.pixelHeight / g.scale;
    g.isWatch = device.platform() == QLatin1String("watchOS");
    g.isPad = device.name.contains(QLatin1String("iPad"));
    const bool tallPhone = !g.isPad && g.height / g.width > 2.0;
    if (g.isWatch) {
        g.topInset = 0;
        g.bottomInset = 0;
    } else if (g.isPad) {
        g.topInset = 24;
        g.bottomInset = 20;
    } else if (tallPhone) {
        g.topInset = 59;
        g.bottomInset = 34;
    } else {
        g.topInset = 20;
        g.bottomInset = 0;
    }
    return g;
}
