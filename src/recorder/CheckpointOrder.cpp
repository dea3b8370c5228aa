// Keeping checkpoint records and their image files in step when checkpoints
// are reordered or deleted: images are renumbered to their new positions,
// and each checkpoint keeps the navigation recorded before it.

#include "model/AppModel.h"

#include "CheckpointReorderJournal.h"
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

// A file at a new name that is none of the images being moved is no
// checkpoint's image (the user's own, or one whose record was lost): it goes
// to the Trash rather than being overwritten, and when there is no Trash the
// renumbering stops before anything moved.
void clearTheWay(AppModel &model, const QString &folder, const CheckpointReorderJournal &journal)
{
    QStringList moving;
    for (const CheckpointReorderJournal::Move &move : journal.moves)
        moving.append(move.from);
    for (const CheckpointReorderJournal::Move &move : journal.moves) {
        const QString target = folder + QLatin1Char('/') + move.to;
        if (moving.contains(move.to) || !QFileInfo(target).exists())
            continue;
        QString reason;
        if (!model.platform().moveToTrash(target, &reason))
            throw AppError(QStringLiteral("%1 is in the way and could not be moved to the Trash (%2). Move it out of "
                                          "the folder, then try again.").arg(target, reason));
    }
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
    m_project.manualScreens = screens;
}

void AppModel::removeManualScreen(qint64 index)
{
    if (m_project.manualScreens)
        m_project.manualScreens->removeIf([index](const ManualScreenDraft &s) { return s.index == index; });
}

void AppModel::removeRecordedScreen(qint64 index)
{
    if (index >= 1 && index <= m_project.screens.size())
        m_project.screens.removeAt(index - 1);
}

void AppModel::rewriteCheckpointOrder(QList<ManualScreenDraft> checkpoints)
{
    const ProjectChange change(*this);
    // Two passes, so that no image overwrites another whose number it takes:
    // first every image steps aside under a hidden name, then each moves to
    // its new number. The journal lets the next start finish or undo the
    // renumbering of a process killed half-way.
    const QString folder = manualCaptureDirectory();
    // Every name is checked before anything moves, so that a refused one
    // leaves the whole folder as it was.
    QStringList images;
    for (const ManualScreenDraft &checkpoint : checkpoints)
        images.append(checkedManualCaptureURL(checkpoint));

    CheckpointReorderJournal journal;
    QList<qint64> oldIndexes;
    QList<ManualScreenDraft> renumbered = checkpoints;
    for (qsizetype i = 0; i < renumbered.size(); ++i) {
        ManualScreenDraft &checkpoint = renumbered[i];
        oldIndexes.append(checkpoint.index);
        const QString filename = checkpointFileName(i + 1, checkpoint.name);
        if (QFileInfo::exists(images.at(i)))
            journal.moves.append({QFileInfo(images.at(i)).fileName(),
                                  QStringLiteral(".reorder-") + UuidText::create() + QStringLiteral(".png"), filename});
        checkpoint.index = i + 1;
        checkpoint.filename = filename;
        journal.after.append(filename);
    }
    clearTheWay(*this, folder, journal);

    const ScreenshotProject previous = m_project;
    if (!journal.moves.isEmpty()) {
        journal.write(folder);
        for (const CheckpointReorderJournal::Move &move : std::as_const(journal.moves))
            renameFile(folder + QLatin1Char('/') + move.from, folder + QLatin1Char('/') + move.parked);
        journal.phase = CheckpointReorderJournal::Phase::placing;
        journal.write(folder);
        journal.finish(folder);
    }

    // Each checkpoint takes along the navigation recorded before it; the
    // navigation of checkpoints no longer listed is dropped.
    QList<ScreenDraft> screens;
    for (const qint64 oldIndex : oldIndexes)
        if (oldIndex >= 1 && oldIndex <= m_project.screens.size())
            screens.append(m_project.screens.at(oldIndex - 1));
    m_project.screens = screens;
    m_project.manualScreens = renumbered;
    m_project.manualCaptureIndex = renumbered.size() + 1;
    // The save is the moment the new order counts; without it the images go
    // back to the names the saved project still has.
    if (!saveProject()) {
        m_project = previous;
        if (!journal.moves.isEmpty())
            journal.undo(folder);
        CheckpointReorderJournal::remove(folder);
        throw AppError(m_lastError.value_or(QString()));
    }
    CheckpointReorderJournal::remove(folder);
}

void AppModel::moveCheckpoint(const ManualScreenDraft &chosen, qint64 offset)
{
    const ManualScreenDraft checkpoint = chosen; // a copy: the change may take over a newer project
    const ProjectChange change(*this);
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

void AppModel::renameCheckpoint(const ManualScreenDraft &chosen, const QString &name)
{
    const ManualScreenDraft checkpoint = chosen; // a copy: the change may take over a newer project
    const ProjectChange change(*this);
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
    // A checkpoint without a stored file name has its image under its
    // present name: pin that before the name changes, so the image moves.
    if (!found->filename || found->filename->isEmpty())
        found->filename = QFileInfo(manualCaptureURL(*found)).fileName();
    found->name = trimmed;
    // The generated screenshots are named after the screen, so both change.
    const QList<ScreenDraft> screensBefore = m_project.screens;
    if (checkpoint.index >= 1 && checkpoint.index <= m_project.screens.size())
        m_project.screens[checkpoint.index - 1].name = trimmed;
    try {
        rewriteCheckpointOrder(checkpoints); // renames the image and saves
        refreshReviewImages();
        clearLastError();
    } catch (const std::exception &error) {
        m_project.screens = screensBefore;
        setLastError(QStringLiteral("Could not rename checkpoint: ") + describe(error));
    }
}

void AppModel::deleteCheckpoint(const ManualScreenDraft &chosen)
{
    const ManualScreenDraft checkpoint = chosen; // a copy: the change may take over a newer project
    const ProjectChange change(*this);
    try {
        // Every checkpoint is renumbered afterwards: a name that may not be
        // used stops the delete before the image goes.
        for (const ManualScreenDraft &other : manualScreens())
            checkedManualCaptureURL(other);
        const QString image = checkedManualCaptureURL(checkpoint);
        QString trashError;
        if (QFileInfo::exists(image) && !platform().moveToTrash(image, &trashError))
            throw AppError(trashError);
        QList<ManualScreenDraft> remaining = manualScreens();
        remaining.removeIf([&](const ManualScreenDraft &s) { return s.id == checkpoint.id; });
        rewriteCheckpointOrder(remaining);
        const QStringList images = manualCaptureURLs();
        m_lastManualCaptureURL = images.isEmpty() ? std::nullopt : std::optional(images.last());
        refreshReviewImages();
    } catch (const std::exception &error) {
        setLastError(QStringLiteral("Could not delete checkpoint: ") + describe(error));
    }
}

// A renumbering that a killed process left half-way: the saved project
// tells whether it had counted; either way no image is lost.
void AppModel::recoverInterruptedCheckpointOrder()
{
    try {
        checkManualCaptureDirectory();
    } catch (const AppError &) {
        return; // not the project's folder
    }
    const QString folder = manualCaptureDirectory();
    std::optional<CheckpointReorderJournal> journal = CheckpointReorderJournal::read(folder);
    if (!journal)
        return;
    QStringList saved;
    for (const ManualScreenDraft &checkpoint : manualScreens())
        saved.append(QFileInfo(manualCaptureURL(checkpoint)).fileName());
    try {
        // The saved project tells whether the renumbering had counted.
        if (journal->phase != CheckpointReorderJournal::Phase::restoring && saved == journal->after) {
            journal->finish(folder);
            appendLog(QStringLiteral("Finished renumbering the checkpoint images that an earlier Vantrel left "
                                     "half-way."));
        } else {
            journal->undo(folder);
            appendLog(QStringLiteral("Put back the checkpoint images of a renumbering that an earlier Vantrel left "
                                     "half-way."));
        }
        CheckpointReorderJournal::remove(folder);
    } catch (const AppError &error) {
        // The journal stays for the next try; the images keep their names.
        appendLog(QStringLiteral("Could not put the checkpoint images back in order: ") + error.message());
    }
}
