// Start-up, in order: the saved project, then everything derived from it.

#include "AppModel.h"

void AppModel::bootstrap()
{
    loadSavedProject();
    refreshAfterLoad();
}

void AppModel::refreshAfterLoad()
{
    // A project without a device adopts the one booted simulator, if any.
    refreshDevices();
    if (m_project.devices.isEmpty())
        adoptSoleBootedDevice();
    if (!m_project.devices.isEmpty())
        refreshInstalledApps();
    refreshReplayEngineAvailability();
    refreshReviewImages();
    refreshProjectSnapshots();
    syncManualScreensFromExistingCapturesIfNeeded();
    // Start-up lists the simulators once. Still without a device, the
    // preview has no screen to show and would only list them again, and its
    // complaint would hide why none could be adopted.
    if (!m_project.devices.isEmpty())
        refreshRecorderPreview();
    // Readiness tells when a generation device is not the size the flow was
    // recorded on; the preview has measured the first device already.
    if (m_project.recordedOn && !m_project.screens.isEmpty())
        for (const QString &device : m_project.devices)
            if (!m_devicePointSizes.contains(device))
                refreshDevicePointSize(device);
}
