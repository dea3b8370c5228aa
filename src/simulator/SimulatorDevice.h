#pragma once
// A simulator as the developer tools list it. A run-time record only: the
// project document keeps UDID strings.

#include <QString>

struct SimulatorDevice
{
    QString name;
    QString udid;
    QString runtime; // e.g. "iOS 17 5": the key's version parts separated by blanks
    QString state;   // "Booted", "Shutdown", ... or "Unknown"
    bool operator==(const SimulatorDevice &) const = default;
};
