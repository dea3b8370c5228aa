// Choosing the project's app from a simulator .app bundle on disk.

#include "AppBundleInspector.h"

#include "model/AppError.h"
#include "model/AppModel.h"

#include <QDir>
#include <QFileInfo>

void AppModel::chooseAppBundle()
{
    if (const std::optional<QString> path =
            platform().chooseFile(QStringLiteral("Choose iOS Simulator .app"), {QStringLiteral("app")}))
        setAppBundle(*path);
}

void AppModel::setAppBundle(const QString &path)
{
    const ProjectChange change(*this);
    const QString bundlePath = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    if (QFileInfo(bundlePath).suffix() != QLatin1String("app")) {
        setLastError(QStringLiteral("Choose a simulator .app bundle."));
        return;
    }
    AppBundleInspector::Info info;
    try {
        info = AppBundleInspector::inspect(bundlePath);
    } catch (const AppError &error) {
        setLastError(error.message());
        return;
    }
    const bool changed = project.bundleId != info.bundleIdentifier || project.appPath != bundlePath;
    project.appPath = bundlePath;
    project.appName = info.displayName;
    project.bundleId = info.bundleIdentifier;
    project.isSimulatorBuild = info.isSimulatorBuild;
    project.attachedDeviceName.reset();
    ensureProjectIdentityAndOutputDirectory(info.displayName, changed);

    if (changed) {
        // A flow recorded for another app (or another build of it) would
        // replay against the wrong screens. The checkpoint images stay.
        project.globalLaunchArguments.clear();
        project.stateArgumentName = ScreenshotProject::defaultStateArgumentName;
        project.sampleNameArgumentName.clear();
        project.screens.clear();
        project.manualCaptureIndex = 1;
        lastManualCaptureURL.reset();
        pendingOperations.clear();
    }
    if (!info.localizations.isEmpty())
        project.languages = info.localizations;
    else if (project.languages.isEmpty())
        project.languages = {QStringLiteral("en-US")};
    saveProject();
    clearLastError();
}
