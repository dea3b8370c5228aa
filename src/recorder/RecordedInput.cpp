// Input entered from the application rather than clicked in the Simulator
// window: typed text (and, for the scriptable recorder, taps and swipes) is
// sent to the app on the device at once, then recorded. Also the immediate
// replay that carries it there.

#include "model/AppModel.h"

#include "model/Await.h"
#include "replay/XCUITestReplay.h"

#include <exception>


void AppModel::addRecordedType(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return;
    recordPerformedOperation(OperationDraft::type(trimmed),
                             QStringLiteral("Attach to a booted simulator before typing."),
                             QStringLiteral("Could not record typed text: "));
}

void AppModel::addRecordedGesture(const OperationDraft &operation)
{
    recordPerformedOperation(operation, QStringLiteral("Attach to a booted simulator before recording."),
                             QStringLiteral("Could not record ") + operation.caseName() + QStringLiteral(": "));
}

void AppModel::recordPerformedOperation(const OperationDraft &operation, const QString &noDeviceMessage,
                                        const QString &failurePrefix)
{
    const std::optional<QString> device = activeDeviceID();
    if (!device) {
        setLastError(noDeviceMessage);
        return;
    }
    // The wait is measured up to the moment the user acted, not to the end
    // of the replay that carries the action to the device.
    const ReferenceSeconds actionDate = m_recordingClock();
    const std::optional<OperationDraft> wait = recordedDelayOperation(actionDate);
    try {
        perform({operation}, *device);
    } catch (const std::exception &error) {
        reportError(failurePrefix, error);
        return;
    }
    // Only now: the replay above can take long, and other processes need
    // not wait for it.
    const ProjectChange change(*this);
    if (wait)
        m_pendingOperations.append(*wait);
    m_pendingOperations.append(operation);
    m_lastRecordedActionAt = actionDate;
    // The status line speaks of clicks in the Simulator window only.
    saveProject();
    refreshRecorderPreview();
}

void AppModel::perform(const QList<OperationDraft> &operations, const QString &device)
{
    QList<OperationDraft> collected;
    const auto flush = [&] {
        if (collected.isEmpty())
            return;
        // The generation run's conversion, without its screenshot step.
        QList<XCTestReplayStep> steps = replaySteps({ScreenDraft{.operations = collected}});
        steps.removeLast();
        collected.clear();
        const QString bundleId = m_project.bundleId;
        const QString workspace = workspaceDirectory();
        awaitBackground([steps, bundleId, device, workspace] {
            XCUITestReplay::run(steps, bundleId, device, workspace, std::nullopt, nullptr);
        });
    };
    for (const OperationDraft &operation : operations) {
        if (const auto *wait = operation.as<WaitOperation>()) {
            flush();
            awaitDelay(wait->seconds);
        } else {
            collected.append(operation);
        }
    }
    flush();
}
