// What must hold before a recorded run starts: a complete project and, when
// the flow drives the app, the UI-test build tool.

#include "model/AppError.h"
#include "model/AppModel.h"
#include "replay/XCUITestReplay.h"

#include <algorithm>

void AppModel::validateRecordedAttachedProject() const
{
    if (m_project.bundleId.isEmpty())
        throw AppError(QStringLiteral("Select the installed app bundle ID before running recorded automation."));
    if (m_project.devices.isEmpty())
        throw AppError(QStringLiteral("Attach to a booted simulator or select a device."));
    if (m_project.languages.isEmpty())
        throw AppError(QStringLiteral("Select at least one language."));
    if (m_project.screens.isEmpty())
        throw AppError(QStringLiteral("Record at least one checkpoint first."));
    if (const std::optional<QString> issue = recordedFlowReplayIssue())
        throw AppError(*issue);
}

bool AppModel::flowNeedsReplayEngine(const QList<ScreenDraft> &screens)
{
    // Waits alone are replayed without driving the app.
    return std::any_of(screens.begin(), screens.end(), [](const ScreenDraft &screen) {
        return std::any_of(screen.operations.begin(), screen.operations.end(),
                           [](const OperationDraft &operation) { return !operation.isWait(); });
    });
}

void AppModel::ensureXCUITestReplayAvailableIfNeeded(const QList<ScreenDraft> &screens)
{
    if (!flowNeedsReplayEngine(screens))
        return;
    try {
        XCUITestReplay::ensureAvailable();
    } catch (const std::exception &error) {
        throw AppError(QStringLiteral("Recorded taps, swipes, and typing require Xcode's XCUITest runner: ")
                       + QString::fromUtf8(error.what()));
    }
}
