#pragma once
// `devicesim ...`: setting up the stand-in's world for a test or a demo
// (init, shims, devices, faults) and running its personalities by name
// (devicesim xcrun ..., devicesim xcodebuild ..., devicesim open ...).

#include <QStringList>

namespace DevicesimCommand {
int run(const QStringList &arguments);
}
