#pragma once
// The device types the stand-in knows by name, with their real screen size
// in pixels and their scale, so that screenshots come out at the size the
// real Simulator gives.

#include <QString>

struct DeviceType
{
    QString name;
    QString identifier; // com.apple.CoreSimulator.SimDeviceType....
    int pixelWidth = 1179;
    int pixelHeight = 2556;
    double scale = 3.0;
};

namespace DeviceCatalog {
// A known type by name; an unknown name gets an iPhone 15 Pro screen.
DeviceType find(const QString &name);
}
