#pragma once
// `xcrun simctl ...`: the subcommands the product uses to find, prepare and
// drive simulators, answering with the real tool's output formats.

#include <QStringList>

namespace SimctlCommand {
// `arguments` are those after "simctl"; returns the exit status.
int run(const QStringList &arguments);
}
