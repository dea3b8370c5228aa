// Clicks and drags in the real Simulator window become taps and swipes in
// device points. The platform delivers left-button presses and releases from
// anywhere on the desktop; only those on the simulated screen count.

#include "model/AppModel.h"

#include "OperationDescription.h"
#include "RecordedGesture.h"
#include "SimulatorScreenMapper.h"
#include "simulator/SimulatorWindowLocator.h"

#include <QPointer>
#include <QTimer>

namespace {

// The app needs a moment to react before the preview shows the new screen.
constexpr int previewDelayMilliseconds = 250;

} // namespace

void AppModel::startSimulatorEventMonitoring()
{
    stopSimulatorEventMonitoring(); // at most one monitor
    if (!m_observesDesktopClicks) {
        // Taps come from the front itself: no monitor to install, and no
        // permission prompt for a click source that is not used.
        m_simulatorEventRecordingStatus = QStringLiteral("Recording the taps, swipes and text entered here.");
        notifyChanged();
        return;
    }
    m_simulatorEventRecordingStatus = QStringLiteral(
        "Recording real Simulator clicks. Click or drag inside the Simulator window, then save checkpoints here.");
    if (!platform().requestAccessibilityTrust())
        // Without the permission the desktop may deliver no events at all;
        // recording goes on, the user is told where to allow it.
        m_simulatorEventRecordingStatus = QStringLiteral(
            "Recording real Simulator clicks. If nothing is recorded, allow this app in System Settings > "
            "Privacy & Security > Accessibility.");
    QPointer<AppModel> model(this);
    platform().setMouseMonitorEndHandler([model](const QString &reason) {
        if (model)
            model->handleSimulatorEventMonitorEnded(reason);
    });
    m_simulatorEventMonitorInstalled = platform().startMouseMonitor([model](const DesktopMouseEvent &event) {
        if (model)
            model->handleSimulatorMouseEvent(event);
    });
    if (!m_simulatorEventMonitorInstalled) {
        // The desktop says why no click will arrive (no display to watch).
        if (const std::optional<QString> problem = platform().mouseMonitorProblem())
            m_simulatorEventRecordingStatus = *problem;
    }
    notifyChanged();
}

void AppModel::handleSimulatorEventMonitorEnded(const QString &reason)
{
    m_simulatorEventMonitorInstalled = false; // nothing left to remove
    stopFlowRecordingBecause(reason);
}

void AppModel::stopFlowRecordingBecause(const QString &reason)
{
    if (m_isRecordingFlow)
        stopFlowRecording(); // the checkpoints saved so far stay
    setLastError(reason + QStringLiteral(" Recording stopped; the checkpoints saved so far are kept."));
}

void AppModel::refreshPreviewAfterRecordedAction()
{
    refreshRecorderPreview();
    const std::optional<QString> device = attachedDeviceID();
    if (!m_isRecordingFlow || !m_lastError || !device)
        return;
    // Only a failed preview costs the extra look at the device list.
    refreshDevices();
    if (deviceState(*device) != QLatin1String("Booted"))
        stopFlowRecordingBecause(displayNameForDeviceID(*device) + QStringLiteral(" is no longer booted."));
}

void AppModel::stopSimulatorEventMonitoring()
{
    if (m_simulatorEventMonitorInstalled)
        platform().stopMouseMonitor();
    m_simulatorEventMonitorInstalled = false;
    m_simulatorMouseDown.reset();
    m_simulatorEventRecordingStatus = idleRecordingStatus();
    notifyChanged();
}

void AppModel::handleSimulatorMouseEvent(const DesktopMouseEvent &event, ReferenceSeconds now)
{
    if (!m_isRecordingFlow)
        return;
    const QPointF pointer = event.location;
    std::optional<QPointF> devicePoint;
    const std::optional<QSizeF> size
        = SimulatorScreenMapper::deviceSize(m_recorderPreviewPixelSize, m_recorderPreviewScale);
    if (size) {
        if (const std::optional<QRectF> frame = SimulatorWindowLocator::windowFrame(platform()))
            devicePoint = SimulatorScreenMapper::devicePoint(pointer, *frame, *size);
    }
    if (!devicePoint) {
        // A press on the title strip or the letterbox cancels a pending press.
        if (event.type == MouseEventType::leftMouseDown)
            m_simulatorMouseDown.reset();
        return;
    }
    if (event.type == MouseEventType::leftMouseDown) {
        m_simulatorMouseDown = SimulatorMouseDown{pointer, *devicePoint, now};
        return;
    }
    if (!m_simulatorMouseDown)
        return;
    const SimulatorMouseDown press = *m_simulatorMouseDown;
    m_simulatorMouseDown.reset();
    const OperationDraft operation = RecordedGesture::fromPressAndRelease(
        {press.screenPoint, press.simulatorPoint, press.date}, {pointer, *devicePoint, now});
    appendRecordedOperation(operation, now);
    m_simulatorEventRecordingStatus = QStringLiteral("Recorded ") + OperationDescription::text(operation);
    notifyChanged();
    QTimer::singleShot(previewDelayMilliseconds, this, [this] { refreshPreviewAfterRecordedAction(); });
}
