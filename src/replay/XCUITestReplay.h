#pragma once
// Replays recorded steps on the attached Simulator: writes a small UI-test
// runner project into the workspace, runs `xcodebuild test` on it and streams
// the paths of finished screenshots back while the build runs.
//
// Every operation blocks its thread for the whole build and test (minutes),
// so callers run it on a worker thread, never on the user-interface thread.
// This library depends on Qt Core only and knows nothing of the application.

#include "XCTestReplayError.h"
#include "XCTestReplayStep.h"

#include <QList>
#include <QString>
#include <functional>
#include <optional>

namespace XCUITestReplay {

// The UI test reads these to learn where screenshots go and where to append
// one line per finished screenshot.
inline constexpr QLatin1String outputDirectoryEnvironmentKey{"QUILLMARK_OUTPUT_DIR"};
inline constexpr QLatin1String progressFileEnvironmentKey{"QUILLMARK_PROGRESS_FILE"};

// Called with the output path of each finished screenshot, on the thread that
// runs the replay; the caller hops to its own thread itself.
using ProgressHandler = std::function<void(const QString &outputPath)>;

// Writes the runner project under `workspaceDirectory`/XCUITestReplayRunner and
// runs it on the device. Returns at once for an empty step list. Throws
// XCTestReplayError (missing bundle identifier, build tool missing or failing,
// cancelled) or the file-system error of a project file that cannot be written.
void run(const QList<XCTestReplayStep> &steps, const QString &bundleIdentifier,
         const QString &deviceUDID, const QString &workspaceDirectory,
         const std::optional<QString> &outputDirectory = std::nullopt,
         const ProgressHandler &progressHandler = {});

// Throws XCTestReplayError when `xcrun --find xcodebuild` fails.
void ensureAvailable();

// Asks every running build started by run() to terminate; the pending run()
// then throws its command error. Safe from any thread, never blocks on a build.
void cancelActiveRuns() noexcept;

} // namespace XCUITestReplay
