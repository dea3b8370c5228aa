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
    if (m_project.bundleId.isEmpty())
        refreshInstalledApps();
    if (m_project.bundleId.isEmpty()) {
        setLastError(QStringLiteral("Select the installed app before starting Record Flow."));
        return;
    }
    refreshReplayEngineAvailability();
    if (!m_replayEngineAvailable) {
        // The tool's own complaint means little to someone about to record.
        setLastError(QStringLiteral("Install the latest stable Xcode before recording. The app uses XCUITest "
                                    "to replay taps, swipes, and typed text."));
        return;
    }
    m_isRecordingFlow = true;
    m_project.screens.clear();
    m_project.manualScreens = QList<ManualScreenDraft>{};
    m_project.manualCaptureIndex = 1;
    m_pendingOperations.clear();
    // The first action is preceded by a wait measured from the start.
    m_lastRecordedActionAt = m_recordingClock();
    m_project.recordedOn.reset();
    saveProject();
    refreshRecorderPreview();
    // Taps and swipes are recorded in this device's points; the first
    // recorded action or checkpoint saves it with the flow.
    const QString device = m_project.devices.value(0);
    if (m_devicePointSizes.contains(device)) {
        const QSizeF size = m_devicePointSizes.value(device);
        m_project.recordedOn = RecordingDevice{displayNameForDeviceID(device), size.width(), size.height()};
    }
    startSimulatorEventMonitoring();
}

void AppModel::stopFlowRecording()
{
    const ProjectChange change(*this);
    m_isRecordingFlow = false;
    m_lastRecordedActionAt.reset();
    m_pendingOperations.clear();
    stopSimulatorEventMonitoring();
    saveProject();
}

void AppModel::stopFlowRecordingIfNeeded()
{
    // The project is about to be replaced (or its file is already gone), so
    // the recording ends without saving: what was pending belonged to it.
    if (!m_isRecordingFlow)
        return;
    m_isRecordingFlow = false;
    m_lastRecordedActionAt.reset();
    m_pendingOperations.clear();
    stopSimulatorEventMonitoring();
}

void AppModel::resetRecordedFlow()
{
    const ProjectChange change(*this);
    const bool wasRecording = m_isRecordingFlow;
    removeManualCheckpointFiles(); // while the checkpoints still name their images
    m_pendingOperations.clear();
    m_simulatorMouseDown.reset();
    m_project.screens.clear();
    m_project.manualScreens = QList<ManualScreenDraft>{};
    m_project.manualCaptureIndex = 1;
    m_lastManualCaptureURL.reset();
    m_lastRecordedActionAt = wasRecording ? std::optional(m_recordingClock()) : std::nullopt;
    refreshReviewImages();
    saveProject();
    clearLastError();
    m_isRecordingFlow = wasRecording;
    if (wasRecording)
        startSimulatorEventMonitoring();
    else
        stopSimulatorEventMonitoring();
}

bool AppModel::canResetRecordedFlow() const
{
    return !m_project.screens.isEmpty() || !manualScreens().isEmpty() || !m_pendingOperations.isEmpty()
        || (m_project.manualCaptureIndex && *m_project.manualCaptureIndex >= 2) || m_lastManualCaptureURL.has_value();
}

std::optional<OperationDraft> AppModel::recordedDelayOperation(ReferenceSeconds actionDate) const
{
    if (!m_isRecordingFlow || !m_lastRecordedActionAt)
        return std::nullopt;
    const double interval = actionDate - *m_lastRecordedActionAt;
    if (interval < minimumRecordedDelay)
        return std::nullopt;
    // One decimal, never longer than the maximum.
    return OperationDraft::wait(std::round(std::min(interval, maximumRecordedDelay) * 10.0) / 10.0);
}

void AppModel::appendRecordedOperation(const OperationDraft &operation, ReferenceSeconds actionDate)
{
    const ProjectChange change(*this);
    if (const std::optional<OperationDraft> wait = recordedDelayOperation(actionDate))
        m_pendingOperations.append(*wait);
    m_pendingOperations.append(operation);
    m_lastRecordedActionAt = actionDate;
    saveProject();
}

qsizetype AppModel::recordedInputActionCount() const
{
    qsizetype count = std::count_if(m_pendingOperations.begin(), m_pendingOperations.end(), isInputAction);
    for (const ScreenDraft &screen : m_project.screens)
        count += std::count_if(screen.operations.begin(), screen.operations.end(), isInputAction);
    return count;
}

QStringList AppModel::pendingOperationDescriptions() const
{
    QStringList descriptions;
    for (const OperationDraft &operation : m_pendingOperations)
        descriptions.append(OperationDescription::text(operation));
    return descriptions;
}

bool AppModel::canSaveNextFlowCheckpoint() const
{
    // The first checkpoint needs no navigation; every later one does.
    return m_project.screens.isEmpty()
           || std::any_of(m_pendingOperations.begin(), m_pendingOperations.end(), isInputAction);
}
