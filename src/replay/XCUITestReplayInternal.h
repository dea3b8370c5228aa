#pragma once
// The replay runner's inner steps, shared between its own source files and
// reachable by its tests; not part of the library's interface.

#include "XCUITestReplay.h"

#include <QHash>
#include <QStringList>

namespace XCUITestReplay {

struct CommandResult
{
    QString standardOutput; // empty when the bytes are not valid UTF-8
    QString standardError;
};

// Writes the four project files below `root` (creating folders as needed),
// overwriting earlier ones; leaves everything else under `root` alone.
// Throws the first file-system error.
void writeRunnerProject(const QString &root, const QString &bundleIdentifier,
                        const QList<XCTestReplayStep> &steps);

// The UI-test source with the bundle identifier, marker path and steps spliced in.
QString uiTestSource(const QString &root, const QString &bundleIdentifier,
                     const QList<XCTestReplayStep> &steps);

// A double-quoted string literal of the test source's language holding `text`.
QString sourceStringLiteral(const QString &text);

// What the UI test is told through its environment: the output directory when
// there is one, and the progress file only when someone listens for progress.
QHash<QString, QString> replayEnvironment(const std::optional<QString> &outputDirectory,
                                          const QString &progressFile,
                                          const ProgressHandler &progressHandler);

// Runs `command arguments...` through /usr/bin/env with the developer-tool
// folders first on PATH and `environment` laid over the application's own.
// Polls `progressFile` for new lines while the child runs when a handler is
// given. Throws XCTestReplayError when the child cannot start or exits non-zero.
CommandResult runCommand(const QString &command, const QStringList &arguments,
                         const QString &currentDirectory,
                         const QHash<QString, QString> &environment,
                         const std::optional<QString> &progressFile,
                         const ProgressHandler &progressHandler);

// Writes `bytes` so that the file is either the old or the new one, never half.
// Throws std::runtime_error with the file system's description.
void writeFileAtomically(const QString &path, const QByteArray &bytes);

} // namespace XCUITestReplay
