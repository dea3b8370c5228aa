// Keeping checkpoint records and their image files in step when checkpoints
// are reordered or deleted: images are renumbered to their new positions,
// and each checkpoint keeps the navigation recorded before it.

#include "model/AppModel.h"

#include "model/AppError.h"
#include "model/UuidText.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <exception>

namespace {

void renameFile(const QString &source, const QString &target)
{
    QFile file(source);
    if (!file.rename(target))
        throw AppError(QStringLiteral("Could not move %1 to %2: %3").arg(source, target, file.errorString()));
}

void removeIfExists(const QString &path)
{
    QFile file(path);
    if (file.exists() && !file.remove())
        throw AppError(QStringLiteral("Could not remove %1: %2").arg(path, file.errorString()));
}

QString describe(const std::exception &error) { return QString::fromStdString(error.what()); }

} // namespace

void AppModel::upsertManualScreen(qint64 index, const QString &name, const QString &filename)
{
    QList<ManualScreenDraft> screens = manualScreens();
    screens.removeIf([index](const ManualScreenDraft &s) { return s.index == index; });
    screens.append({UuidText::create(), index, name, filename});
    std::stable_sort(screens.begin(), screens.end(),
                     [](const ManualScreenDraft &a, const ManualScreenDraft &b) { return a.index < b.index; });
    project.manualScreens = screens;
}

void AppModel::removeManualScreen(qint64 index)
{
    if (project.manualScreens)
        project.manualScreens->removeIf([index](const ManualScreenDraft &s) { return s.index == index; });
}

void AppModel::removeRecordedScreen(qint64 index)
{
    if (index >= 1 && index <= project.screens.size())
        project.screens.removeAt(index - 1);
}

void AppModel::rewriteCheckpointOrder(QList<ManualScreenDraft> checkpoints)
{
    // Two passes, so that no image overwrites another whose number it takes:
    // first every image steps aside under a hidden name, then each moves to
    // its new number.
    const QString folder = manualCaptureDirectory();
    QHash<QString, QString> parked; // checkpoint id -> hidden file
    for (const ManualScreenDraft &checkpoint : checkpoints) {
        const QString image = manualCaptureURL(checkpoint);
        if (!QFileInfo::exists(image))
            continue;
        const QString hidden = folder + QStringLiteral("/.reorder-") + UuidText::create() + QStringLiteral(".png");
        renameFile(image, hidden);
        parked.insert(checkpoint.id, hidden);
    }

    QList<qint64> oldIndexes;
    for (qsizetype i = 0; i < checkpoints.size(); ++i) {
        ManualScreenDraft &checkpoint = checkpoints[i];
        oldIndexes.append(checkpoint.index);
        const QString filename = checkpointFileName(i + 1, checkpoint.name);
        const QString target = folder + QLatin1Char('/') + filename;
        removeIfExists(target);
        if (parked.contains(checkpoint.id))
            renameFile(parked.value(checkpoint.id), target);
        checkpoint.index = i + 1;
        checkpoint.filename = filename;
    }

    // Each checkpoint takes along the navigation recorded before it; the
    // navigation of checkpoints no longer listed is dropped.
    QList<ScreenDraft> screens;
    for (const qint64 oldIndex : oldIndexes)
        if (oldIndex >= 1 && oldIndex <= project.screens.size())
            screens.append(project.screens.at(oldIndex - 1));
    project.screens = screens;
    project.manualScreens = checkpoints;
    project.manualCaptureIndex = checkpoints.size() + 1;
    saveProject();
}

void AppModel::moveCheckpoint(const ManualScreenDraft &checkpoint, qint64 offset)
{
    QList<ManualScreenDraft> checkpoints = manualScreens();
    const auto found = std::find_if(checkpoints.begin(), checkpoints.end(),
                                    [&](const ManualScreenDraft &s) { return s.id == checkpoint.id; });
    if (found == checkpoints.end())
        return;
    const qsizetype position = found - checkpoints.begin();
    const qint64 destination = position + offset;
    if (destination < 0 || destination >= checkpoints.size())
        return;
    checkpoints.move(position, destination);
    try {
        rewriteCheckpointOrder(checkpoints);
        refreshReviewImages();
    } catch (const std::exception &error) {
        setLastError(QStringLiteral("Could not reorder checkpoint: ") + describe(error));
    }
}

void AppModel::renameCheckpoint(const ManualScreenDraft &checkpoint, const QString &name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty()) {
        setLastError(QStringLiteral("Checkpoint name cannot be empty."));
        return;
    }
    QList<ManualScreenDraft> checkpoints = manualScreens();
    const auto found = std::find_if(checkpoints.begin(), checkpoints.end(),
                                    [&](const ManualScreenDraft &s) { return s.id == checkpoint.id; });
    if (found == checkpoints.end())
        return;
    found->name = trimmed;
    // The generated screenshots are named after the screen, so both change.
    const QList<ScreenDraft> screensBefore = project.screens;
    if (checkpoint.index >= 1 && checkpoint.index <= project.screens.size())
        project.screens[checkpoint.index - 1].name = trimmed;
    try {
        rewriteCheckpointOrder(checkpoints); // renames the image and saves
        refreshReviewImages();
        clearLastError();
    } catch (const std::exception &error) {
        project.screens = screensBefore;
        setLastError(QStringLiteral("Could not rename checkpoint: ") + describe(error));
    }
}

void AppModel::deleteCheckpoint(const ManualScreenDraft &checkpoint)
{
    try {
        const QString image = manualCaptureURL(checkpoint);
        QString trashError;
        if (QFileInfo::exists(image) && !platform().moveToTrash(image, &trashError))
            throw AppError(trashError);
        QList<ManualScreenDraft> remaining = manualScreens();
        remaining.removeIf([&](const ManualScreenDraft &s) { return s.id == checkpoint.id; });
        rewriteCheckpointOrder(remaining);
        const QStringList images = manualCaptureURLs();
        lastManualCaptureURL = images.isEmpty() ? std::nullopt : std::optional(images.last());
        refreshReviewImages();
    } catch (const std::exception &error) {
        setLastError(QStringLiteral("Could not delete checkpoint: ") + describe(error));
    }
}
