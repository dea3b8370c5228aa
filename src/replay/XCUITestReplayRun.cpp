// One replay: check the inputs and the build tool, write the runner project,
// tell the UI test where screenshots go, and build and test it on the device.
#include "XCUITestReplayInternal.h"

#include <QDir>
#include <QFile>

namespace XCUITestReplay {

namespace {

// The marker is the UI test's fallback for the output directory; without one
// the test resolves relative paths against its own working directory.
void updateOutputDirectoryMarker(const QString &markerPath, const std::optional<QString> &outputDirectory)
{
    if (outputDirectory)
        writeFileAtomically(markerPath, outputDirectory->toUtf8());
    else
        QFile::remove(markerPath);
}

QStringList buildArguments(const QDir &root, const QString &deviceUDID)
{
    return {QStringLiteral("test"),
            QStringLiteral("-project"), root.filePath(QStringLiteral("AutomationRunner.xcodeproj")),
            QStringLiteral("-scheme"), QStringLiteral("AutomationHost"),
            QStringLiteral("-destination"), QStringLiteral("id=") + deviceUDID,
            QStringLiteral("-derivedDataPath"), root.filePath(QStringLiteral("DerivedData")),
            QStringLiteral("-quiet"),
            QStringLiteral("CODE_SIGNING_ALLOWED=NO")};
}

} // namespace

void run(const QList<XCTestReplayStep> &steps, const QString &bundleIdentifier,
         const QString &deviceUDID, const QString &workspaceDirectory,
         const std::optional<QString> &outputDirectory, const ProgressHandler &progressHandler)
{
    if (steps.isEmpty())
        return;
    if (bundleIdentifier.trimmed().isEmpty())
        throw XCTestReplayError(QStringLiteral("Bundle ID is required for XCUITest replay."));
    ensureAvailable();

    const QDir root(QDir(workspaceDirectory).absoluteFilePath(QStringLiteral("XCUITestReplayRunner")));
    writeRunnerProject(root.path(), bundleIdentifier, steps);
    updateOutputDirectoryMarker(root.filePath(QStringLiteral("current-output-directory.txt")), outputDirectory);
    // Every run starts without progress lines, so only this run's screenshots are reported.
    const QString progressFile = root.filePath(QStringLiteral("progress.log"));
    QFile::remove(progressFile);

    runCommand(QStringLiteral("xcodebuild"), buildArguments(root, deviceUDID), root.path(),
               replayEnvironment(outputDirectory, progressFile, progressHandler),
               progressHandler ? std::optional<QString>(progressFile) : std::nullopt, progressHandler);
}

void ensureAvailable()
{
    runCommand(QStringLiteral("xcrun"), {QStringLiteral("--find"), QStringLiteral("xcodebuild")},
               QDir::tempPath(), {}, std::nullopt, {});
}

QHash<QString, QString> replayEnvironment(const std::optional<QString> &outputDirectory,
                                          const QString &progressFile,
                                          const ProgressHandler &progressHandler)
{
    QHash<QString, QString> environment;
    // `xcodebuild test` hands the UI-test runner only the variables named
    // TEST_RUNNER_<NAME>, with that prefix stripped; each value is therefore
    // set under both names, so the test sees it however it is started.
    const auto set = [&environment](const QString &name, const QString &value) {
        environment.insert(name, value);
        environment.insert(QStringLiteral("TEST_RUNNER_") + name, value);
    };
    if (outputDirectory)
        set(outputDirectoryEnvironmentKey, *outputDirectory);
    if (progressHandler)
        set(progressFileEnvironmentKey, progressFile);
    return environment;
}

} // namespace XCUITestReplay
