#pragma once
// What the `simctl` subcommands share: finding the device an argument
// names ("booted", a UDID or a device name) and failing with the texts and
// exit statuses the real tool uses.

#include "ToolFailure.h"
#include "World.h"

#include <QStringList>

namespace Simctl {

// "An error was encountered processing the command (domain=..., code=...):"
// followed by the message; the exit status is the code's low byte.
ToolFailure error(const QString &domain, int code, const QString &message);
ToolFailure usage(const QString &message);

// The device named by `token`: "booted" (the first booted device), a UDID
// or a device name. Fails like the real tool when there is none.
Device &device(World &world, const QString &token);
// The same, and fails unless that device is booted.
Device &bootedDevice(World &world, const QString &token);
// Fails unless `arguments` has at least `count` entries.
void requireArguments(const QStringList &arguments, int count, const QString &usageText);

// The subcommands, one per file group.
int list(const QStringList &arguments);
int io(const QStringList &arguments);
int listApps(const QStringList &arguments);
int getAppContainer(const QStringList &arguments);
int install(const QStringList &arguments);
int uninstall(const QStringList &arguments);
int launch(const QStringList &arguments);
int terminate(const QStringList &arguments);
int boot(const QStringList &arguments);
int shutdown(const QStringList &arguments);
int bootStatus(const QStringList &arguments);
int statusBar(const QStringList &arguments);

} // namespace Simctl
