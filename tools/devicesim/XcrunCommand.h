#pragma once
// `xcrun`: finds developer tools (--find) and runs `simctl` and
// `xcodebuild` through itself, as the real xcrun does.

#include <QStringList>

namespace XcrunCommand {
int run(const QStringList &arguments);
}
