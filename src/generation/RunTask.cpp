// What every generation run shares: one worker at a time in a pool of its
// own, started after the previous run has wound down, one run per workspace
// across processes, and the three endings that free the model for the next
// run.

#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/Await.h"
#include "model/Folder.h"
#include "replay/ChildProcess.h"
#include "replay/XCUITestReplay.h"

#include <QLockFile>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

namespace {

// Runs of their own, so that a run blocking for minutes never starves the
// shared pool that main-thread operations await their device commands on.
// One thread: a run starts only once the previous one has wound down.
// Never destroyed: a run still winding down must not hold up the exit.
QThreadPool &runPool()
{
    static QThreadPool *pool = [] {
        auto *threads = new QThreadPool;
        threads->setMaxThreadCount(1);
        return threads;
    }();
    return *pool;
}

} // namespace

bool AppModel::takeGenerationLock()
{
    try {
        Folder::ensure(workspaceDirectory());
    } catch (const AppError &error) {
        setLastError(error.message());
        return false;
    }
    auto lock = std::make_unique<QLockFile>(generationLockFile());
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0)) {
        qint64 pid = 0;
        QString host;
        QString application;
        lock->getLockInfo(&pid, &host, &application);
        setLastError(QStringLiteral("Another generation is running in this workspace (process %1). Wait for it "
                                    "to finish or cancel it, then start again.")
                         .arg(pid));
        return false;
    }
    m_generationLock = std::move(lock);
    return true;
}

QString AppModel::generationLockFile() const
{
    return workspaceDirectory() + QStringLiteral("/.generation.lock");
}

void AppModel::startRunTask(RunJob job)
{
    assertMainThread();
    // One run at a time: a previous one is ended and allowed to wind down
    // (it reports its own cancellation) before the next one starts. It may
    // no longer be in runTask when a cancel cleared it, so the pool tells.
    if (m_runTask.isRunning()) {
        m_runCancelRequested->store(true);
        if (m_runProcess)
            m_runProcess->terminate();
        XCUITestReplay::cancelActiveRuns();
    }
    while (runPool().activeThreadCount() > 0)
        awaitDelay(0.02);
    if (!takeGenerationLock())
        return;
    m_runCancelRequested = std::make_shared<std::atomic_bool>(false);
    m_lastRunLogStart = m_runLog.size();
    m_runTask = QtConcurrent::run(&runPool(), job, QPointer<AppModel>(this), m_runCancelRequested);
    notifyChanged();
}

// Every ending shows the gallery as the run left it, and frees the model for
// the next run. No other run can have started meanwhile: a new one waits
// until this worker has ended.
void AppModel::endRun(const RunOutcome &outcome)
{
    assertMainThread();
    m_lastRunOutcome = outcome;
    refreshReviewImages();
    m_isRunning = false;
    m_runTask = QFuture<void>();
    m_generationLock.reset();
    notifyChanged();
}

void AppModel::endRunSucceeded(const QString &detail)
{
    const qint64 completed = completedRunProgressCount();
    endRun(RunOutcome{RunOutcomeKind::success, QStringLiteral("Generation complete"), detail, completed,
                      ReferenceDate::now()});
}

void AppModel::endRunCancelled()
{
    markUnfinishedProgressIdle();
    appendLog(QStringLiteral("Generation cancelled."));
    endRun(cancelledOutcome(completedRunProgressCount(), runTotalCount()));
}

void AppModel::endRunFailed(const QString &description)
{
    markRunningProgressFailed();
    setLastError(description);
    endRun(RunOutcome{RunOutcomeKind::failed, QStringLiteral("Generation failed"), description,
                      completedRunProgressCount(), ReferenceDate::now()});
}

void AppModel::markRunStarted()
{
    assertMainThread();
    m_runProgress = initializedRunProgress();
    m_isRunning = true;
    notifyChanged();
}

void AppModel::adoptRunProcess(std::shared_ptr<ChildProcess> process)
{
    assertMainThread();
    m_runProcess = std::move(process);
}

void AppModel::releaseRunProcess(const std::shared_ptr<ChildProcess> &process)
{
    assertMainThread();
    if (m_runProcess == process)
        m_runProcess.reset();
}
