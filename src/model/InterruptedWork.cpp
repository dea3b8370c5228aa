// What a process that was killed mid-way leaves in the workspace and the
// output folder is put right by the next one, under the workspace lock (so
// that no other process is in the middle of the same work).

#include "AppModel.h"

#include "AppError.h"
#include "replay/AtomicWrite.h"

#include <QDir>
#include <QFile>
#include <functional>

void AppModel::recoverInterruptedWork()
{
    recoverInterruptedCheckpointOrder();
    removeLeftoverTemporaryFiles();
}

void AppModel::removeLeftoverTemporaryFiles()
{
    const auto removeMatching = [](const QString &folder, const std::function<bool(const QString &)> &isLeftover) {
        for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System))
            if (isLeftover(name))
                QFile::remove(QDir(folder).filePath(name));
    };
    for (const QString &folder : {workspaceDirectory(), projectsDirectory(), snapshotsDirectory()})
        removeMatching(folder, AtomicWrite::isLeftover);
    try {
        checkManualCaptureDirectory();
    } catch (const AppError &) {
        return;
    }
    // Unfinished screenshots; an image parked by a renumbering is never
    // removed (the journal puts it back).
    removeMatching(manualCaptureDirectory(), [](const QString &name) {
        return AtomicWrite::isLeftover(name)
               || ((name.startsWith(QLatin1String(".capture-")) || name.startsWith(QLatin1String(".retake-")))
                   && name.endsWith(QLatin1String(".png")));
    });
}
