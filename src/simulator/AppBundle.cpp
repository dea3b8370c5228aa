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
    const bool changed = m_project.bundleId != info.bundleIdentifier || m_project.appPath != bundlePath;
    m_project.appPath = bundlePath;
    m_project.appName = info.displayName;
    m_project.bundleId = info.bundleIdentifier;
    m_project.isSimulatorBuild = info.isSimulatorBuild;
    m_project.attachedDeviceName.reset();
    ensureProjectIdentityAndOutputDirectory(info.displayName, changed);

    if (changed) {
        // A flow recorded for another app (or another build of it) would
        // replay against the wrong screens. The checkpoint images stay.
        m_project.globalLaunchArguments.clear();
        m_project.stateArgumentName = ScreenshotProject::defaultStateArgumentName;
        m_project.sampleNameArgumentName.clear();
        m_project.screens.clear();
        m_project.manualCaptureIndex = 1;
        m_lastManualCaptureURL.reset();
        m_pendingOperations.clear();
    }
    if (!info.localizations.isEmpty())
        m_project.languages = info.localizations;
    else if (m_project.languages.isEmpty())
        m_project.languages = {QStringLiteral("en-US")};
    saveProject();
    clearLastError();
}
