#pragma once
// `xcodebuild`: builds and runs the replay runner project's UI test on a
// simulated device. It checks the project and the destination the way the
// real tool does, "builds" (a pause, or a compile error), then runs the
// test steps against the app on that device.

#include <QStringList>

namespace XcodebuildCommand {
int run(const QStringList &arguments);
}
