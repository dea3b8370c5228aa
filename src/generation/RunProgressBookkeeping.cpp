// The progress map of a run: one entry per language and device, keyed
// "language|device". Every change happens on the main thread.

#include "model/AppModel.h"

#include <algorithm>

namespace {

// The expected count for a pair: one per screen, and never 0, so that a
// progress bar always has something to fill.
qint64 screenTotal(const ScreenshotProject &project)
{
    return std::max<qint64>(project.screens.size(), 1);
}

} // namespace

QHash<QString, RunProgress> AppModel::initializedRunProgress() const
{
    QHash<QString, RunProgress> progress;
    const qint64 total = screenTotal(m_project);
    for (const QString &device : m_project.devices)
        for (const QString &language : m_project.languages)
            progress.insert(RunProgress::key(language, device),
                            {language, device, 0, total, RunProgressState::queued});
    return progress;
}

void AppModel::updateRunProgress(const QString &language, const QString &deviceID, qint64 completed,
                                 RunProgressState state)
{
    assertMainThread();
    const QString key = RunProgress::key(language, deviceID);
    const auto existing = m_runProgress.constFind(key);
    const qint64 total = existing != m_runProgress.cend() ? existing->total : screenTotal(m_project);
    m_runProgress.insert(key, {language, deviceID, std::clamp<qint64>(completed, 0, total), total, state});
    notifyChanged();
}

void AppModel::incrementRunProgress(const QString &language, const QString &deviceID)
{
    assertMainThread();
    const QString key = RunProgress::key(language, deviceID);
    RunProgress entry
        = m_runProgress.value(key, {language, deviceID, 0, screenTotal(m_project), RunProgressState::idle});
    entry.completed = std::min(entry.completed + 1, entry.total);
    entry.state = RunProgressState::running;
    m_runProgress.insert(key, entry);
    notifyChanged();
}

void AppModel::markUnfinishedProgressIdle()
{
    assertMainThread();
    for (RunProgress &entry : m_runProgress)
        if (entry.state == RunProgressState::queued || entry.state == RunProgressState::running)
            entry.state = RunProgressState::idle;
    notifyChanged();
}

void AppModel::markRunningProgressFailed()
{
    assertMainThread();
    for (RunProgress &entry : m_runProgress)
        if (entry.state == RunProgressState::running)
            entry.state = RunProgressState::failed;
    notifyChanged();
}

qint64 AppModel::completedRunProgressCount() const
{
    qint64 sum = 0;
    for (const RunProgress &entry : m_runProgress)
        sum += entry.completed;
    return sum;
}
