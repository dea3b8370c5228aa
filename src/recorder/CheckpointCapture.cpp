// Taking a checkpoint's reference screenshot from the Simulator: a new
// checkpoint at the end of the flow, or a retake of an existing one. The
// screenshot lands under a hidden temporary name first and is renamed into
// place only once it is complete and named.

#include "model/AppModel.h"

#include "model/AppError.h"
#include "model/Folder.h"
#include "model/UuidText.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <exception>

namespace {

QString hiddenTemporaryPath(const QString &folder, const QString &prefix)
{
    return folder + QLatin1Char('/') + prefix + UuidText::create() + QStringLiteral(".png");
}

// Replaces whatever is at `target` with the file at `source`.
void moveReplacing(const QString &source, const QString &target)
{
    if (QFileInfo::exists(target) && !QFile::remove(target))
        throw AppError(QStringLiteral("Could not replace %1.").arg(target));
    QFile file(source);
    if (!file.rename(target))
        throw AppError(file.errorString());
}

} // namespace

void AppModel::takeSimulatorScreenshot(const QString &device, const QString &path)
{
    // Blocking, like the preview's screenshot: a short query, and the image
    // shows the screen the user asked for, before any click that arrives
    // meanwhile is handled.
    ProcessRunner::run(QStringLiteral("xcrun"),
                       {QStringLiteral("simctl"), QStringLiteral("io"), device, QStringLiteral("screenshot"), path},
                       packageRoot());
    if (!QFileInfo(path).isFile())
        throw AppError(QStringLiteral("The Simulator wrote no screenshot to %1.").arg(path));
    // A reference that is no picture could never be compared later.
    QImageReader reader(path, "png");
    if (reader.read().isNull())
        throw AppError(QStringLiteral("The Simulator's screenshot is not a readable PNG image (%1).")
                           .arg(reader.errorString()));
}

void AppModel::captureManualScreenshot(const QString &nameOverride)
{
    const ProjectChange change(*this);
    if (m_isRecordingFlow && !canSaveNextFlowCheckpoint()) {
        setLastError(QStringLiteral("No recorded navigation since the previous checkpoint. Click or drag inside "
                                    "the real Simulator window, or use Type, before saving the next checkpoint."));
        return;
    }
    const std::optional<QString> device = activeDeviceID();
    if (!device) {
        setLastError(QStringLiteral("Attach to a booted simulator before saving a checkpoint."));
        return;
    }
    const QString folder = manualCaptureDirectory();
    const QString temporary = hiddenTemporaryPath(folder, QStringLiteral(".capture-"));
    try {
        checkManualCaptureDirectory();
        Folder::ensure(folder);
        const ReferenceSeconds actionDate = m_recordingClock();
        const std::optional<OperationDraft> wait
            = m_isRecordingFlow ? recordedDelayOperation(actionDate) : std::nullopt;
        takeSimulatorScreenshot(*device, temporary);
        const QString name = resolvedManualCaptureName(nameOverride, temporary);
        const qint64 index = nextManualCaptureIndex();
        const QString target = folder + QLatin1Char('/') + checkpointFileName(index, name);
        moveReplacing(temporary, target);
        upsertManualScreen(index, name, QFileInfo(target).fileName());
        if (m_isRecordingFlow) {
            if (wait)
                m_pendingOperations.append(*wait);
            m_project.screens.append(
                ScreenDraft{.id = UuidText::create(), .name = name, .operations = m_pendingOperations});
            m_pendingOperations.clear();
            // Measured after the capture, so its own duration never becomes a wait.
            m_lastRecordedActionAt = m_recordingClock();
        }
        m_project.manualCaptureIndex = index + 1;
        m_lastManualCaptureURL = target;
        refreshReviewImages();
        if (saveProject())
            clearLastError();
    } catch (const std::exception &error) {
        QFile::remove(temporary);
        reportError(QStringLiteral("Could not capture current simulator: "), error);
    }
}

void AppModel::retakeCheckpoint(const ManualScreenDraft &chosen)
{
    const ManualScreenDraft checkpoint = chosen; // a copy: the change may take over a newer project
    const ProjectChange change(*this);
    const std::optional<QString> device = activeDeviceID();
    if (!device) {
        setLastError(QStringLiteral("Attach to a booted simulator before retaking a checkpoint."));
        return;
    }
    const QString folder = manualCaptureDirectory();
    const QString temporary = hiddenTemporaryPath(folder, QStringLiteral(".retake-"));
    try {
        const QString target = checkedManualCaptureURL(checkpoint);
        Folder::ensure(folder);
        takeSimulatorScreenshot(*device, temporary);
        moveReplacing(temporary, target);
        // The navigation that leads to the checkpoint stays as recorded.
        upsertManualScreen(checkpoint.index, checkpoint.name, QFileInfo(target).fileName());
        if (saveProject())
            clearLastError();
        refreshReviewImages();
    } catch (const std::exception &error) {
        QFile::remove(temporary);
        reportError(QStringLiteral("Could not retake checkpoint: "), error);
    }
}
