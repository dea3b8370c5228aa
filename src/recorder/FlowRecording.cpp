// Starting, stopping and resetting a recorded flow, and how operations join
// it: every action is preceded by a wait measured from the previous one.

#include "model/AppModel.h"

#include "OperationDescription.h"
#include "model/AppError.h"

#include <algorithm>
#include <cmath>

namespace {

bool isInputAction(const OperationDraft &operation) { return !operation.isWait(); }

} // namespace

void AppModel::startFlowRecording()
{
    const ProjectChange change(*this);
    if (!activeDeviceID()) {
        setLastError(QStringLiteral("Attach to a booted simulator before recording."));
        return;
    }
    if (project.bundleId.isEmpty())
        refreshInstalledApps();
    if (project.bundleId.isEmpty()) {
        setLastError(QStringLiteral("Select the installed app before starting Record Flow."));
        return;
    }
    refreshReplayEngineAvailability();
    if (!replayEngineAvailable) {
        // The tool's own complaint means little to someone about to record.
        setLastError(QStringLiteral("Install the latest stable Xcode before recording. The app uses XCUITest "
                                    "to replay taps, swipes, and typed text."));
        return;
    }
    isRecordingFlow = true;
    project.screens.clear();
    project.manualScreens = QList<ManualScreenDraft>{};
    project.manualCaptureIndex = 1;
    pendingOperations.clear();
    // The first action is preceded by a wait measured from the start.
    lastRecordedActionAt = recordingClock();
    project.recordedOn.reset();
    saveProject();
    refreshRecorderPreview();
    // Taps and swipes are recorded in this device's points; the first
    // recorded action or checkpoint saves it with the flow.
    const QString device = project.devices.value(0);
    if (devicePointSizes.contains(device)) {
        const QSizeF size = devicePointSizes.value(device);
        project.recordedOn = RecordingDevice{displayNameForDeviceID(device), size.width(), size.height()};
    }
    startSimulatorEventMonitoring();
}

void AppModel::stopFlowRecording()
{
    const ProjectChange change(*this);
    isRecordingFlow = false;
    lastRecordedActionAt.reset();
    pendingOperations.clear();
    stopSimulatorEventMonitoring();
    saveProject();
}

void AppModel::stopFlowRecordingIfNeeded()
{
    // The project is about to be replaced (or its file is already gone), so
    // the recording ends without saving: what was pending belonged to it.
    if (!isRecordingFlow)
        return;
    isRecordingFlow = false;
    lastRecordedActionAt.reset();
    pendingOperations.clear();
    stopSimulatorEventMonitoring();
}

void AppModel::resetRecordedFlow()
{
    const ProjectChange change(*this);
    const bool wasRecording = isRecordingFlow;
    removeManualCheckpointFiles(); // while the checkpoints still name their images
    pendingOperations.clear();
    selectedScreenID.reset();
    simulatorMouseDown.reset();
    project.screens.clear();
    project.manualScreens = QList<ManualScreenDraft>{};
    project.manualCaptureIndex = 1;
    lastManualCaptureURL.reset();
    lastRecordedActionAt = wasRecording ? std::optional(recordingClock()) : std::nullopt;
    refreshReviewImages();
    saveProject();
    clearLastError();
    isRecordingFlow = wasRecording;
    if (wasRecording)
        startSimulatorEventMonitoring();
    else
        stopSimulatorEventMonitoring();
}

bool AppModel::canResetRecordedFlow() const
{
    return !project.screens.isEmpty() || !manualScreens().isEmpty() || !pendingOperations.isEmpty()
           || (project.manualCaptureIndex && *project.manualCaptureIndex >= 2) || lastManualCaptureURL.has_value();
}

std::optional<OperationDraft> AppModel::recordedDelayOperation(ReferenceSeconds actionDate) const
{
    if (!isRecordingFlow || !lastRecordedActionAt)
        return std::nullopt;
    const double interval = actionDate - *lastRecordedActionAt;
    if (interval < minimumRecordedDelay)
        return std::nullopt;
    // One decimal, never longer than the maximum.
    return OperationDraft::wait(std::round(std::min(interval, maximumRecordedDelay) * 10.0) / 10.0);
}

void AppModel::appendRecordedOperation(const OperationDraft &operation, ReferenceSeconds actionDate)
{
    const ProjectChange change(*this);
    if (const std::optional<OperationDraft> wait = recordedDelayOperation(actionDate))
        pendingOperations.append(*wait);
    pendingOperations.append(operation);
    lastRecordedActionAt = actionDate;
    saveProject();
}

qsizetype AppModel::recordedInputActionCount() const
{
    qsizetype count = std::count_if(pendingOperations.begin(), pendingOperations.end(), isInputAction);
    for (const ScreenDraft &screen : project.screens)
        count += std::count_if(screen.operations.begin(), screen.operations.end(), isInputAction);
    return count;
}

QStringList AppModel::pendingOperationDescriptions() const
{
    QStringList descriptions;
    for (const OperationDraft &operation : pendingOperations)
        descriptions.append(OperationDescription::text(operation));
    return descriptions;
}

bool AppModel::canSaveNextFlowCheckpoint() const
{
    // The first checkpoint needs no navigation; every later one does.
    return project.screens.isEmpty()
           || std::any_of(pendingOperations.begin(), pendingOperations.end(), isInputAction);
}
