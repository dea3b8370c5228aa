#pragma once
// One user-installed app found on the attached simulator.

#include <QString>

struct InstalledSimulatorApp
{
    QString name;
    QString bundleId;
    bool operator==(const InstalledSimulatorApp &) const = default;
};
