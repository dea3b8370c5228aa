// Starting the project's app on a simulator in a given language, and the
// device preparations generation needs around it.

#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/Await.h"
#include "model/LanguageCatalog.h"
#include "replay/ChildProcess.h"
#include "simulator/SimctlArguments.h"

namespace {

const QString xcrun = QStringLiteral("xcrun");
const QString simctl = QStringLiteral("simctl");

QString appLabel(const ScreenshotProject &project)
{
    return project.appName.isEmpty() ? project.bundleId : project.appName;
}

} // namespace

void AppModel::openTargetApp()
{
    // As attaching does: messages name the device as the Simulator lists it
    // now, not by the name stored when it was attached.
    refreshDevices();
    const std::optional<QString> device = activeDeviceID();
    if (!device) {
        setLastError(QStringLiteral("Attach to a booted simulator before opening the target app."));
        return;
    }
    if (m_project.bundleId.isEmpty()) {
        refreshInstalledApps();
        if (m_project.bundleId.isEmpty()) {
            setLastError(QStringLiteral("Select the installed app before opening it."));
            return;
        }
    }
    const QString language = m_project.languages.value(0, QStringLiteral("en-US"));
    try {
        launchRecordedApp(*device, language);
    } catch (const AppError &error) {
        reportError(QStringLiteral("Could not open target app: "), error);
        return;
    }
    awaitDelay(0.8); // let the first screen appear before the preview is taken
    refreshRecorderPreview();
    clearLastError();
}

void AppModel::ensureRecordedAppInstalled(const QString &device)
{
    if (m_project.bundleId.isEmpty())
        throw AppError(QStringLiteral("Select the installed app before generating screenshots."));
    try {
        runProcessOffMain(xcrun, {simctl, QStringLiteral("get_app_container"), device, m_project.bundleId,
                                  QStringLiteral("app")});
    } catch (const AppError &) {
        // simctl's own complaint says less than this does.
        throw AppError(appLabel(m_project) + QStringLiteral(" is not installed on ") + displayNameForDeviceID(device)
                       + QStringLiteral(".\nInstall or open the app on that Simulator first, then click Project > "
                                        "Attach Simulator and Detect. Recorded checkpoints are still saved."));
    }
}

void AppModel::launchRecordedApp(const QString &device, const QString &language)
{
    ensureRecordedAppInstalled(device);
    try {
        runProcessOffMain(xcrun, {simctl, QStringLiteral("terminate"), device, m_project.bundleId});
    } catch (const AppError &) {
        // Not running is the usual reason, and fine.
    }
    // The launch arguments force the language and the region formats, so
    // the app shows that locale whatever the simulator's own settings.
    QStringList arguments{simctl, QStringLiteral("launch"), QStringLiteral("--terminate-running-process"), device,
                          m_project.bundleId};
    arguments += SimctlArguments::languageLaunchArguments(language);
    arguments += m_project.globalLaunchArguments;
    try {
        runProcessOffMain(xcrun, arguments);
    } catch (const AppError &error) {
        throw AppError(appLabel(m_project) + QStringLiteral(" is installed on ") + displayNameForDeviceID(device)
                       + QStringLiteral(", but Simulator could not launch it for ") + LanguageCatalog::label(language)
                       + QStringLiteral(".\nOpen the app manually once in Simulator. If it closes immediately, the "
                                        "app is crashing for that locale. Raw launch error: ")
                       + error.message());
    }
}

void AppModel::overrideStatusBar(const QString &device)
{
    runProcessOffMain(xcrun, SimctlArguments::statusBarOverride(device));
}

void AppModel::resetStatusBar(const QString &device)
{
    // The device gets its own status bar back even when Ctrl-C ended the run.
    const ChildProcess::Cleanup cleanup;
    runProcessOffMain(xcrun, SimctlArguments::statusBarClear(device));
}
