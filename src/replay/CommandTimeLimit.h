#pragma once
// How long an external command may run before it is ended. A simulator
// tool that hangs must not hang Vantrel: short queries get 30 seconds;
// launching, installing, booting and the status bar, which wait for the
// device, get 120. A build and test has no limit: it may take long, and the
// user can cancel it.

#include <QString>
#include <QStringList>
#include <optional>

namespace CommandTimeLimit {

constexpr int shortQuerySeconds = 30;
constexpr int deviceActionSeconds = 120;

// Seconds, or nothing for no limit.
std::optional<int> seconds(const QString &command, const QStringList &arguments);

// "xcrun simctl list devices --json did not finish within 30 seconds and was ended."
QString exceededMessage(const QString &command, const QStringList &arguments, int seconds);

} // namespace CommandTimeLimit
