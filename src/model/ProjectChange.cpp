// Several Vantrel processes may share one data root: two terminals, the
// desktop application and a script. Each change of the project reads,
// modifies and writes the project file; the workspace lock makes those
// steps of one process one whole, and the reload at the start makes every
// change build on the newest saved project instead of an older copy.

#include "AppModel.h"

#include "AppError.h"
#include "AtomicFile.h"
#include "Folder.h"
#include "ProjectCoding.h"

#include <QLockFile>

namespace {

// Long enough for any other process's change (a checkpoint capture with its
// screenshot and text recognition is the longest); a process that holds the
// lock longer is stuck, and waiting on would hang this one as well.
constexpr int lockWaitMilliseconds = 60000;

} // namespace

QString AppModel::workspaceLockFile() const { return workspaceDirectory() + QStringLiteral("/.workspace.lock"); }

AppModel::ProjectChange::ProjectChange(AppModel &model, bool takeOverSaved) : m_model(model)
{
    model.assertMainThread();
    if (model.m_projectChangeDepth++ > 0)
        return;
    model.m_workspaceLockFailed = false;
    try {
        Folder::ensure(model.workspaceDirectory());
    } catch (const AppError &) {
        return; // the save that follows reports why the workspace cannot be written
    }
    auto lock = std::make_unique<QLockFile>(model.workspaceLockFile());
    // A lock left by a process that died is taken over at once; a live
    // holder is waited for, however long its change takes.
    lock->setStaleLockTime(0);
    if (!lock->tryLock(lockWaitMilliseconds)) {
        qint64 pid = 0;
        QString host;
        QString application;
        lock->getLockInfo(&pid, &host, &application);
        model.m_workspaceLockFailed = true;
        model.setLastError(QStringLiteral("Another Vantrel process (process %1) has been changing this workspace for "
                                          "over a minute, so nothing was changed. Try again once it has finished.")
                               .arg(pid));
        return;
    }
    model.m_workspaceLock = std::move(lock);
    if (takeOverSaved)
        model.reloadProjectIfChangedOnDisk();
}

AppModel::ProjectChange::~ProjectChange()
{
    if (--m_model.m_projectChangeDepth > 0)
        return;
    m_model.m_workspaceLock.reset(); // unlocks
    m_model.m_workspaceLockFailed = false;
}

void AppModel::reloadProjectIfChangedOnDisk()
{
    if (!m_project.projectID)
        return;
    const std::optional<QByteArray> bytes = AtomicFile::readIfExists(projectFileURL(*m_project.projectID));
    if (!bytes || *bytes == m_savedProjectBytes)
        return;
    try {
        ScreenshotProject saved = ProjectCoding::decode(*bytes);
        normalizeLoadedProject(saved);
        m_project = saved;
        m_savedProjectBytes = *bytes;
        emit changed();
    } catch (const AppError &) {
        // A damaged file is not taken over: this process's copy is the
        // better one, and the next save replaces the damage.
    }
}
