#pragma once
// The device list that `xcrun simctl list devices --json` prints, and the
// iOS and iPadOS simulators the product offers from it.

#include "SimulatorDevice.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <optional>

struct SimctlDevice
{
    QString name;
    QString udid;
    std::optional<QString> state;
    std::optional<bool> isAvailable;
};

struct SimctlDeviceList
{
    // Runtime identifier ("com.apple.CoreSimulator.SimRuntime.iOS-17-5")
    // with the devices listed under it.
    QList<QPair<QString, QList<SimctlDevice>>> devices;

    // Throws AppError when the text is not JSON of this shape: `devices`
    // is required, and so are each device's `name` and `udid`; unknown keys
    // are ignored.
    static SimctlDeviceList decode(const QByteArray &json);

    // The available devices of iOS and iPadOS runtimes (watch, TV, vision
    // and other runtimes are skipped whole), sorted by name, then runtime.
    QList<SimulatorDevice> iOSDevices() const;

    // "com.apple.CoreSimulator.SimRuntime.iOS-17-5" -> "iOS 17 5".
    static QString runtimeText(const QString &runtimeKey);
};
