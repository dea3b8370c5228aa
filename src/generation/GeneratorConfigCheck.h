#pragma once
// What a generator configuration must also be on this machine before
// anything is made: its build an .app bundle on disk whose Info.plist names
// the configured bundle identifier, its devices simulators that exist.

#include "GeneratorConfig.h"
#include "simulator/SimulatorDevice.h"

#include <QList>

namespace GeneratorConfigCheck {

// The build at appPath (already resolved to an absolute path).
QList<ConfigProblem> buildProblems(const GeneratorConfig &config);

// Every device must be one of `available` (the iOS simulators the developer
// tools list as available).
QList<ConfigProblem> deviceProblems(const GeneratorConfig &config, const QList<SimulatorDevice> &available);

} // namespace GeneratorConfigCheck
