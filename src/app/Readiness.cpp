// Readiness before a run: pure, read-only values derived from the project
// and a few platform facts, recomputed on every read, so they change as soon
// as the project does.

#include "Readiness.h"

#include "model/AppModel.h"
#include "replay/XCUITestReplay.h"

#include <QFileInfo>
#include <QtNumeric>
#include <algorithm>

namespace {

bool isAction(const OperationDraft &operation) { return !operation.isWait(); }

} // namespace

std::optional<QString> AppModel::recordedFlowReplayIssue(const QList<ScreenDraft> &screens)
{
    // Reaching the first checkpoint needs no action, by design; every later
    // one must be reached by a tap, a swipe or typed text.
    for (qsizetype i = 1; i < screens.size(); ++i) {
        const QList<OperationDraft> &operations = screens.at(i).operations;
        if (std::any_of(operations.begin(), operations.end(), isAction))
            continue;
        return QStringLiteral("Checkpoint %1 has no recorded tap, swipe, or typed text. Click or drag inside "
                              "the real Simulator window before saving each later checkpoint.")
            .arg(i + 1, 2, 10, QLatin1Char('0'));
    }
    return std::nullopt;
}

std::optional<QString> AppModel::recordedFlowReplayIssue() const
{
    return recordedFlowReplayIssue(m_project.screens);
}

bool AppModel::isReplayEngineAvailable()
{
    try {
        XCUITestReplay::ensureAvailable();
        return true;
    } catch (...) {
        return false; // the reason is shown when a run needs the engine
    }
}

void AppModel::refreshReplayEngineAvailability()
{
    const bool available = isReplayEngineAvailable();
    if (available == m_replayEngineAvailable)
        return;
    m_replayEngineAvailable = available;
    notifyChanged();
}

QList<ProductPreflightCheck> AppModel::preflightChecks() const
{
    const ScreenshotProject &p = m_project;
    return {
        {QStringLiteral("Simulator attached"),
         p.attachedDeviceName.value_or(QStringLiteral("Attach a running iOS Simulator")), !p.devices.isEmpty()},
        {QStringLiteral("App detected"), p.appName.isEmpty() ? QStringLiteral("Detect the foreground app") : p.appName,
         !p.bundleId.isEmpty()},
        {QStringLiteral("Languages selected"), QString::number(p.languages.size()) + QStringLiteral(" locales"),
         !p.languages.isEmpty()},
        {QStringLiteral("Flow recorded"), QString::number(p.screens.size()) + QStringLiteral(" checkpoints"),
         !p.screens.isEmpty()},
        {QStringLiteral("Simulator click access"), QStringLiteral("Accessibility permission"),
         platform().isAccessibilityTrusted()},
        {QStringLiteral("Replay engine ready"), QStringLiteral("Xcode XCUITest runner"), m_replayEngineAvailable},
    };
}

bool AppModel::hasCompleteRunSelection() const
{
    return !m_project.bundleId.isEmpty() && !m_project.devices.isEmpty() && !m_project.languages.isEmpty()
           && !m_project.screens.isEmpty();
}

bool AppModel::canRunAutomatedCapture() const
{
    return !m_project.appPath.isEmpty() && QFileInfo::exists(m_project.appPath) && hasCompleteRunSelection();
}

bool AppModel::canRunRecordedAttachedCapture() const
{
    return m_project.appPath.isEmpty() && hasCompleteRunSelection() && !recordedFlowReplayIssue();
}

QString AppModel::runReadinessMessage() const
{
    if (canRunAutomatedCapture())
        return QStringLiteral("Ready to generate from the selected .app build and recorded screen flow.");
    if (canRunRecordedAttachedCapture())
        return QStringLiteral("Ready to generate by replaying the recorded simulator flow for every selected language.");
    if (m_project.devices.isEmpty())
        return QStringLiteral("Attach to a booted simulator or select a device first.");
    if (m_project.languages.isEmpty())
        return QStringLiteral("Select at least one language.");
    if (m_project.screens.isEmpty())
        return QStringLiteral("Record a flow and save at least one checkpoint in Recorder.");
    if (const std::optional<QString> issue = recordedFlowReplayIssue())
        return *issue;
    if (!m_project.bundleId.isEmpty())
        return QStringLiteral("Runs is not ready yet. Check Recorder, Languages, and Devices.");
    return QStringLiteral("Select the installed app bundle ID in Recorder so the app can relaunch for each language.");
}

qint64 AppModel::runDeviceCount() const
{
    return m_project.devices.isEmpty() ? 1 : m_project.devices.size();
}

std::optional<QString> AppModel::recordedDeviceNote(const QString &device) const
{
    if (!m_project.recordedOn || m_project.screens.isEmpty() || !m_devicePointSizes.contains(device))
        return std::nullopt;
    const RecordingDevice &recorded = *m_project.recordedOn;
    const QSizeF size = m_devicePointSizes.value(device);
    // Sizes come from whole pixels over the scale; a hundredth of a point is no difference.
    if (qAbs(size.width() - recorded.width) < 0.01 && qAbs(size.height() - recorded.height) < 0.01)
        return std::nullopt;
    const auto points = [](double width, double height) {
        return QString::number(width) + QStringLiteral(" \u00d7 ") + QString::number(height);
    };
    return QStringLiteral("Taps were recorded on %1 (%2 points); %3 is %4 points, so the flow may tap other places.")
        .arg(recorded.name, points(recorded.width, recorded.height), displayNameForDeviceID(device),
             points(size.width(), size.height()));
}

QStringList AppModel::recordedDeviceNotes() const
{
    QStringList notes;
    for (const QString &device : m_project.devices)
        if (const std::optional<QString> note = recordedDeviceNote(device); note && !notes.contains(*note))
            notes.append(*note);
    return notes;
}

qint64 AppModel::runTotalCount() const
{
    qint64 perDevice = 0;
    qint64 total = 0;
    if (qMulOverflow(runDeviceCount(), qint64(m_project.languages.size()), &perDevice)
        || qMulOverflow(perDevice, qint64(m_project.screens.size()), &total))
        qFatal("The run's screenshot count does not fit in a 64-bit integer.");
    return total;
}
