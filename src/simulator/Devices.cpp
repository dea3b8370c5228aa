// The simulators the developer tools know, and the one the project is
// attached to.

#include "SimctlDeviceList.h"

#include "model/AppError.h"
#include "model/AppModel.h"

#include <QTimer>

namespace {

const QString bootedState = QStringLiteral("Booted");
const QString attachedSimulatorAppName = QStringLiteral("Attached Simulator");

QList<SimulatorDevice> bootedDevices(const QList<SimulatorDevice> &devices)
{
    QList<SimulatorDevice> booted;
    for (const SimulatorDevice &device : devices)
        if (device.state == bootedState)
            booted.append(device);
    return booted;
}

} // namespace

void AppModel::refreshDevices()
{
    try {
        const ProcessRunner::Result result = ProcessRunner::run(
            QStringLiteral("xcrun"),
            {QStringLiteral("simctl"), QStringLiteral("list"), QStringLiteral("devices"), QStringLiteral("--json")},
            packageRoot());
        m_availableDevices = SimctlDeviceList::decode(result.standardOutput.toUtf8()).iOSDevices();
    } catch (const AppError &error) {
        reportError(QStringLiteral("Could not load simulators: "), error);
        return;
    }
    clearLastError();
}

void AppModel::attachToBootedSimulator()
{
    const ProjectChange change(*this);
    refreshDevices();
    if (m_lastError)
        return; // the tool's own reason, not a guess that no simulator runs
    const QList<SimulatorDevice> booted = bootedDevices(m_availableDevices);
    if (booted.isEmpty()) {
        setLastError(QStringLiteral("Open Simulator, launch your app, then click Attach again."));
        return;
    }
    std::optional<SimulatorDevice> chosen;
    if (booted.size() == 1) {
        chosen = booted.first();
    } else {
        // Several are booted: the project's own device settles it, if it is
        // exactly one of them.
        QList<SimulatorDevice> known;
        for (const SimulatorDevice &device : booted)
            if (m_project.devices.contains(device.udid))
                known.append(device);
        if (known.size() == 1)
            chosen = known.first();
    }
    if (!chosen) {
        setLastError(QStringLiteral("Multiple simulators are booted. Close the extras or keep only one simulator "
                                    "running, then click Attach again."));
        return;
    }

    // Attaching means working with what runs on that simulator, so a bundle
    // chosen on disk before no longer applies.
    m_project.devices = {chosen->udid};
    m_project.appPath.clear();
    if (m_project.appName.isEmpty())
        m_project.appName = attachedSimulatorAppName;
    m_project.isSimulatorBuild = false;
    m_project.attachedDeviceName = chosen->name;
    saveProject();
    clearLastError();

    QTimer::singleShot(0, this, &AppModel::refreshAfterAttach);
}

void AppModel::refreshAfterAttach()
{
    refreshInstalledApps();
    refreshRecorderPreview();
}

std::optional<QString> AppModel::activeDeviceID()
{
    if (const std::optional<QString> attached = attachedDeviceID())
        return attached; // not checked: it may have been shut down since
    refreshDevices();
    return adoptSoleBootedDevice();
}

std::optional<QString> AppModel::attachedDeviceID() const
{
    if (m_project.devices.isEmpty())
        return std::nullopt;
    return m_project.devices.first();
}

QString AppModel::deviceState(const QString &udid) const
{
    for (const SimulatorDevice &device : m_availableDevices)
        if (device.udid == udid)
            return device.state;
    return QString();
}

std::optional<QString> AppModel::adoptSoleBootedDevice()
{
    const ProjectChange change(*this);
    const QList<SimulatorDevice> booted = bootedDevices(m_availableDevices);
    if (booted.size() != 1)
        return std::nullopt;
    // A quiet attach: unlike attachToBootedSimulator, a chosen bundle stays
    // and nothing is refreshed afterwards.
    const SimulatorDevice &device = booted.first();
    m_project.devices = {device.udid};
    if (m_project.appName.isEmpty())
        m_project.appName = attachedSimulatorAppName;
    m_project.attachedDeviceName = device.name;
    saveProject();
    return device.udid;
}

QString AppModel::displayNameForDeviceID(const QString &udid) const
{
    for (const SimulatorDevice &device : m_availableDevices)
        if (device.udid == udid)
            return device.name;
    if (!m_project.devices.isEmpty() && m_project.devices.first() == udid && m_project.attachedDeviceName)
        return *m_project.attachedDeviceName;
    return udid;
}
