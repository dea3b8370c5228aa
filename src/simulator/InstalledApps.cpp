// The user apps installed on the attached simulator, and choosing one of
// them as the project's app.

#include "InstalledAppParser.h"

#include "model/AppError.h"
#include "model/AppModel.h"

void AppModel::refreshInstalledApps()
{
    const ProjectChange change(*this);
    const std::optional<QString> device = activeDeviceID();
    if (!device) {
        setLastError(QStringLiteral("Attach to a booted simulator before detecting apps."));
        return;
    }
    ProcessRunner::Result result;
    try {
        result = ProcessRunner::run(QStringLiteral("xcrun"), {QStringLiteral("simctl"), QStringLiteral("listapps"), *device},
                                    packageRoot());
    } catch (const AppError &error) {
        reportError(QStringLiteral("Could not list installed apps: "), error);
        return;
    }
    m_installedApps = InstalledAppParser::parse(result.standardOutput);
    if (m_project.bundleId.isEmpty() && m_installedApps.size() == 1)
        selectInstalledApp(m_installedApps.first());
    clearLastError();
}

void AppModel::selectInstalledApp(const InstalledSimulatorApp &app)
{
    const ProjectChange change(*this);
    const QString oldBundleId = m_project.bundleId;
    m_project.bundleId = app.bundleId;
    m_project.appName = app.name;
    if (!m_project.attachedDeviceName && !m_project.devices.isEmpty()) {
        for (const SimulatorDevice &device : m_availableDevices) {
            if (device.udid == m_project.devices.first()) {
                m_project.attachedDeviceName = device.name;
                break;
            }
        }
    }
    const bool changed = oldBundleId != app.bundleId;
    ensureProjectIdentityAndOutputDirectory(app.name, changed);
    refreshReviewImages();
    saveProject();
    // The recorded flow is kept on purpose: it may still fit, and a user who
    // picked the wrong app should not lose it.
    if (!oldBundleId.isEmpty() && changed && !m_project.screens.isEmpty())
        appendLog(QStringLiteral("Selected a different app. Existing checkpoints were kept; re-record if this flow "
                                 "belongs to the previous app."));
    clearLastError();
}
