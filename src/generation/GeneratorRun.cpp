#include "GeneratorRun.h"

#include "BuildCanceller.h"
#include "GeneratorConfigCheck.h"
#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/Folder.h"
#include "model/PathSanitizer.h"
#include "replay/ChildProcess.h"
#include "replay/XCUITestReplay.h"
#include "simulator/ProcessRunner.h"
#include "simulator/SimctlArguments.h"
#include "simulator/SimctlDeviceList.h"

#include <QFileInfo>

namespace {

const QString bootedState = QStringLiteral("Booted");


} // namespace

GeneratorRun::GeneratorRun(GeneratorConfig config, QString workspaceDirectory, QString workingDirectory,
                           Listener listener, std::shared_ptr<std::atomic_bool> cancelled)
    : m_config(std::move(config)),
      m_workspace(std::move(workspaceDirectory)),
      m_workingDirectory(std::move(workingDirectory)),
      m_listener(std::move(listener)),
      m_cancelled(std::move(cancelled))
{
}

QList<ConfigProblem> GeneratorRun::check()
{
    QList<ConfigProblem> problems = GeneratorConfigCheck::buildProblems(m_config);
    const ProcessRunner::Result listed = ProcessRunner::run(
        QStringLiteral("xcrun"),
        {QStringLiteral("simctl"), QStringLiteral("list"), QStringLiteral("devices"), QStringLiteral("--json")},
        m_workingDirectory);
    const QList<SimulatorDevice> available = SimctlDeviceList::decode(listed.standardOutput.toUtf8()).iOSDevices();
    problems += GeneratorConfigCheck::deviceProblems(m_config, available);
    for (const SimulatorDevice &device : available)
        m_devices.insert(device.udid, device);
    return problems;
}

GeneratorRun::Result GeneratorRun::run()
{
    Result result;
    result.total = m_config.screenshotCount();
    try {
        for (const QString &udid : m_config.devices) {
            const SimulatorDevice device = m_devices.value(udid, SimulatorDevice{udid, udid, {}, {}});
            checkCancelled();
            prepareDevice(device);
            for (qsizetype i = 0; i < m_config.languages.size(); ++i) {
                checkCancelled();
                // Without a reset, the build installed for the first language serves the others.
                runLanguage(device, m_config.languages.at(i), m_config.resetAppData || i == 0);
            }
        }
        checkCancelled();
    } catch (const Cancelled &) {
        result.ending = Ending::cancelled;
    } catch (const std::exception &error) {
        // A command ended by a cancel fails like any other; the flag tells them apart.
        result.ending = m_cancelled->load() ? Ending::cancelled : Ending::failed;
        result.failure = QStringLiteral("Failed while %1:\n%2").arg(m_doing, QString::fromUtf8(error.what()));
    }
    result.completed = m_completed;
    return result;
}

void GeneratorRun::log(const QString &message) const
{
    if (m_listener.log)
        m_listener.log(message);
}

void GeneratorRun::checkCancelled() const
{
    if (m_cancelled->load())
        throw Cancelled{};
}

void GeneratorRun::xcrun(const QStringList &arguments) const
{
    ProcessRunner::run(QStringLiteral("xcrun"), arguments, m_workingDirectory, m_cancelled);
}

void GeneratorRun::prepareDevice(const SimulatorDevice &device)
{
    const QString &udid = device.udid;
    m_doing = QStringLiteral("preparing ") + device.name;
    log(QStringLiteral("Preparing ") + device.name);
    if (device.state != bootedState) {
        try {
            xcrun({QStringLiteral("simctl"), QStringLiteral("boot"), udid});
        } catch (const AppError &) {
            // Booted meanwhile, or it cannot boot: bootstatus below says which.
            checkCancelled();
        }
    }
    xcrun({QStringLiteral("simctl"), QStringLiteral("bootstatus"), udid, QStringLiteral("-b")});
    // Asked for, the Simulator must come up, as in the recorded run: a run
    // never ends complete on a Simulator that was not shown as configured.
    if (m_config.openSimulator) {
        m_doing = QStringLiteral("showing ") + device.name + QStringLiteral(" in Simulator");
        ProcessRunner::run(QStringLiteral("open"),
                           {QStringLiteral("-a"), QStringLiteral("Simulator"), QStringLiteral("--args"),
                            QStringLiteral("-CurrentDeviceUDID"), udid},
                           m_workingDirectory, m_cancelled);
    }
}

void GeneratorRun::runLanguage(const SimulatorDevice &device, const QString &language, bool installNeeded)
{
    const QString &udid = device.udid;
    const QString where = device.name + QStringLiteral(" for ") + language;
    log(QStringLiteral("Running ") + device.name + QStringLiteral(" / ") + language);
    if (m_config.resetAppData) {
        m_doing = QStringLiteral("removing the app from ") + where;
        try {
            xcrun({QStringLiteral("simctl"), QStringLiteral("uninstall"), udid, m_config.bundleId});
        } catch (const AppError &) {
            // Not installed yet: already clean.
            checkCancelled();
        }
    }
    if (installNeeded) {
        m_doing = QStringLiteral("installing the build on ") + where;
        xcrun({QStringLiteral("simctl"), QStringLiteral("install"), udid, m_config.appPath});
    }
    checkCancelled();
    m_doing = QStringLiteral("overriding the status bar on ") + where;
    xcrun(SimctlArguments::statusBarOverride(udid));
    try {
        replay(device, language);
    } catch (...) {
        resetStatusBar(udid);
        throw;
    }
    resetStatusBar(udid);
}

void GeneratorRun::replay(const SimulatorDevice &device, const QString &language)
{
    const QString outputDirectory = m_config.outputDirectory + QLatin1Char('/') + PathSanitizer::component(language)
                                    + QLatin1Char('/') + PathSanitizer::component(device.name);
    const QString pair = device.name + QStringLiteral(" in ") + language;
    qsizetype done = 0;
    m_doing = screenDescription(done) + QStringLiteral(" on ") + pair;
    Folder::ensure(outputDirectory);
    log(QStringLiteral("Replaying %1 screens for %2").arg(m_config.screens.size()).arg(language));
    {
        // The build also ends when a cancel comes in just before it starts.
        BuildCanceller canceller(m_cancelled);
        XCUITestReplay::run(AppModel::replaySteps(m_config, language), m_config.bundleId, device.udid, m_workspace,
                            outputDirectory, [&](const QString &path) {
                                ++done;
                                ++m_completed;
                                if (m_listener.screenshotSaved)
                                    m_listener.screenshotSaved({m_completed, m_config.screenshotCount(), language,
                                                                device.name, QFileInfo(path).fileName()});
                                m_doing = screenDescription(done) + QStringLiteral(" on ") + pair;
                            });
    }
    checkCancelled();
    if (done < m_config.screens.size())
        throw AppError(QStringLiteral("The UI test ended after %1 of %2 screenshots.")
                           .arg(done)
                           .arg(m_config.screens.size()));
}

void GeneratorRun::resetStatusBar(const QString &device) const
{
    // Not cancellable: a cancelled or interrupted run still leaves the status
    // bar as it found it.
    const ChildProcess::Cleanup cleanup;
    try {
        ProcessRunner::run(QStringLiteral("xcrun"), SimctlArguments::statusBarClear(device), m_workingDirectory);
    } catch (const AppError &error) {
        log(QStringLiteral("note: could not reset the status bar: ") + error.message());
    }
}

QString GeneratorRun::screenDescription(qsizetype index) const
{
    if (index >= m_config.screens.size())
        return QStringLiteral("finishing the replay");
    return QStringLiteral("generating screen %1 of %2 (%3)")
        .arg(index + 1)
        .arg(m_config.screens.size())
        .arg(m_config.screens.at(index).name);
}
