// Moving the newest checkpoint image to the Trash: its records go with it,
// and when it was the last one its number is free for the next checkpoint.

#include "model/AppModel.h"

#include <QFileInfo>

void AppModel::deleteLastManualCapture()
{
    const ProjectChange change(*this);
    const std::optional<QString> last = existingLastManualCaptureURL();
    if (!last) {
        setLastError(QStringLiteral("There is no manual screenshot to delete."));
        return;
    }
    moveScreenshotToTrash(*last);
}

bool AppModel::canDeleteLastManualCapture() const
{
    return existingLastManualCaptureURL().has_value();
}

void AppModel::moveScreenshotToTrash(const QString &path)
{
    const ProjectChange change(*this);
    if (!QFileInfo::exists(path)) {
        setLastError(QStringLiteral("Screenshot no longer exists: ") + path);
        return;
    }
    const std::optional<qint64> number = manualCaptureNumber(path);
    const bool isCheckpoint = isManualCaptureURL(path);
    QString trashError;
    if (!platform().moveToTrash(path, &trashError)) {
        setLastError(QStringLiteral("Could not move screenshot to Trash: ") + trashError);
        return;
    }
    if (isCheckpoint && number) {
        removeManualScreen(*number);
        removeRecordedScreen(*number);
        if (m_project.manualCaptureIndex == *number + 1)
            m_project.manualCaptureIndex = *number; // the next checkpoint reuses the number
    }
    saveProject();
    refreshReviewImages();
    m_lastManualCaptureURL = existingLastManualCaptureURL();
    notifyChanged();
}
