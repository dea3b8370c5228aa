#pragma once
// The configuration the command-line generator runs from: what the
// configuration writer puts into generated-config.yaml (or a person writes by
// hand), read back. Screens carry their launch arguments ready-made; the
// project's state and sample argument names have already been applied.

#include "model/OperationDraft.h"

#include <QList>
#include <QString>
#include <QStringList>

// A place in the configuration file, 1-based; 0 when not known.
struct ConfigPosition
{
    qint64 line = 0;
    qint64 column = 0;
    bool operator==(const ConfigPosition &) const = default;
};

struct GeneratorScreen
{
    QString name;
    QStringList launchArguments; // after the configuration's own
    double launchWaitSeconds = 0; // 0: the configuration's wait applies
    QList<OperationDraft> operations;
    bool operator==(const GeneratorScreen &) const = default;
};

struct GeneratorConfig
{
    QString appPath;
    QString bundleId;
    QString outputDirectory;
    bool openSimulator = true;
    bool resetAppData = true;
    double launchWaitSeconds = 2.0;
    QStringList devices;
    QStringList languages;
    QStringList launchArguments;
    QList<GeneratorScreen> screens;

    // Where values stand in the file, for what later checks say about them.
    ConfigPosition appPathPosition;
    ConfigPosition bundleIdPosition;
    QList<ConfigPosition> devicePositions; // one per device

    qint64 screenshotCount() const { return qint64(devices.size()) * languages.size() * screens.size(); }
    // How long to wait after launching for a screen: its own wait when it
    // has one, else the configuration's.
    double launchWait(const GeneratorScreen &screen) const
    {
        return screen.launchWaitSeconds > 0 ? screen.launchWaitSeconds : launchWaitSeconds;
    }
    // Relative appPath and outputDirectory count from `directory` (the
    // configuration file's folder), so a file means the same wherever the
    // generator is started.
    void resolvePaths(const QString &directory);
};

struct ConfigProblem
{
    ConfigPosition position;
    QString message;
};

// A configuration the generator will not run, with every problem found.
struct ConfigRefusal
{
    QString fileName;
    QList<ConfigProblem> problems;

    // One line per problem: "FILE:LINE:COLUMN: message" ("FILE: message"
    // where the place is not known), each ending in a line feed.
    QString text() const;
};
