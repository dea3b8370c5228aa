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
    refreshReviewImages();
    refreshProjectSnapshots();
    syncManualScreensFromExistingCapturesIfNeeded();
    refreshRecorderPreview();
}
