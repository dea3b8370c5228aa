// What a checkpoint is called: the name the user typed, else the most
// prominent text on its screen, else a generic name.

#include "model/AppModel.h"

#include "AutoScreenshotNamer.h"

QString AppModel::defaultManualCaptureName() const
{
    return manualScreens().isEmpty() ? QStringLiteral("initial-screen") : QStringLiteral("screen");
}

QString AppModel::manualCaptureName(const QString &nameOverride) const
{
    const QString trimmed = nameOverride.trimmed();
    return trimmed.isEmpty() ? defaultManualCaptureName() : trimmed;
}

QString AppModel::manualCaptureFilenamePreview(const QString &nameOverride) const
{
    // Without a typed name the screen text decides after the capture.
    const QString name = nameOverride.trimmed().isEmpty() ? QStringLiteral("auto-name") : manualCaptureName(nameOverride);
    return checkpointFileName(nextManualCaptureIndex(), name);
}

QString AppModel::resolvedManualCaptureName(const QString &nameOverride, const QString &screenshotPath)
{
    const QString trimmed = nameOverride.trimmed();
    if (!trimmed.isEmpty())
        return trimmed;
    try {
        if (const std::optional<QString> suggested = AutoScreenshotNamer::suggestName(screenshotPath, platform()))
            if (!suggested->isEmpty())
                return *suggested;
    } catch (...) {
        // A recogniser failure only costs the automatic name.
    }
    return defaultManualCaptureName();
}
