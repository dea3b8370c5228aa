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
    if (project.devices.isEmpty())
        adoptSoleBootedDevice();
    if (!project.devices.isEmpty())
        refreshInstalledApps();
    refreshReplayEngineAvailability();
    refreshReviewImages();
    refreshProjectSnapshots();
    syncManualScreensFromExistingCapturesIfNeeded();
    // Start-up lists the simulators once. Still without a device, the
    // preview has no screen to show and would only list them again, and its
    // complaint would hide why none could be adopted.
    if (!project.devices.isEmpty())
        refreshRecorderPreview();
    // Readiness tells when a generation device is not the size the flow was
    // recorded on; the preview has measured the first device already.
    if (project.recordedOn && !project.screens.isEmpty())
        for (const QString &device : project.devices)
            if (!devicePointSizes.contains(device))
                refreshDevicePointSize(device);
}
