#pragma once
// Progress of a generation run per language and device, and how the last run ended.

#include "model/ReferenceDate.h"

#include <QString>

enum class RunProgressState { idle, queued, running, done, failed };

QString runProgressStateName(RunProgressState state); // "idle", "queued", ...

struct RunProgress
{
    QString language;
    QString deviceID;
    qint64 completed = 0;
    qint64 total = 0;
    RunProgressState state = RunProgressState::idle;
    bool operator==(const RunProgress &) const = default;

    // The key of runProgress: language, "|", device identifier.
    static QString key(const QString &language, const QString &deviceID)
    {
        return language + QLatin1Char('|') + deviceID;
    }
};

enum class RunOutcomeKind { success, failed, cancelled };

struct RunOutcome
{
    RunOutcomeKind kind = RunOutcomeKind::success;
    QString title;
    QString detail;
    qint64 screenshotCount = 0;
    ReferenceSeconds finishedAt = 0;
    bool operator==(const RunOutcome &) const = default;
};
