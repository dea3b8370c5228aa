#pragma once
// Reads a replay runner project as the build would: every file the targets
// need must be there, and the UI-test source must compile as far as the
// stand-in can tell (its bundle identifier line and its step lines, with
// their string literals unescaped).

#include "RunnerProject.h"

namespace RunnerProjectReader {
// `projectPath` is the .xcodeproj folder. Throws BuildErrors.
RunnerProject read(const QString &projectPath);
}
