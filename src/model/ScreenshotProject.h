#pragma once
// The persisted screenshot project and its parts. A checkpoint is the i-th
// ScreenDraft of `screens` (the navigation since the previous checkpoint)
// together with the ManualScreenDraft whose `index` is i (its image file).

#include "OperationDraft.h"
#include "ReferenceDate.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

struct ScreenDraft
{
    QString id; // upper-case UUID
    QString name;
    QString state;
    QString sampleName;
    double launchWaitSeconds = 0;
    QList<OperationDraft> operations;

    bool operator==(const ScreenDraft &) const = default;
};

struct ManualScreenDraft
{
    QString id; // upper-case UUID
    qint64 index = 1;
    QString name;
    std::optional<QString> filename;

    bool operator==(const ManualScreenDraft &) const = default;
};

// The device a flow was recorded on and its screen in points: the space
// that recorded taps and swipes are in.
struct RecordingDevice
{
    QString name;
    double width = 0;  // points
    double height = 0; // points

    bool operator==(const RecordingDevice &) const = default;
};

struct ScreenshotProject
{
    static constexpr qint64 currentSchemaVersion = 2;
    static inline const QString defaultStateArgumentName = QStringLiteral("vantrel.screen");

    std::optional<qint64> schemaVersion = currentSchemaVersion;
    std::optional<QString> projectID;
    std::optional<QString> projectName;
    std::optional<ReferenceSeconds> createdAt;
    std::optional<ReferenceSeconds> updatedAt;
    QString appPath;
    QString appName;
    QString bundleId;
    std::optional<QString> attachedDeviceName;
    bool isSimulatorBuild = false;
    QString outputDirectory;
    QStringList devices;
    QStringList languages{QStringLiteral("en-US")};
    bool openSimulator = true;
    bool resetAppData = true;
    double launchWaitSeconds = 2.0;
    QStringList globalLaunchArguments;
    QString stateArgumentName = defaultStateArgumentName;
    QString sampleNameArgumentName;
    QList<ScreenDraft> screens;
    std::optional<qint64> manualCaptureIndex = 1;
    std::optional<QList<ManualScreenDraft>> manualScreens = QList<ManualScreenDraft>{};
    std::optional<RecordingDevice> recordedOn; // absent until a recording knew its device

    bool operator==(const ScreenshotProject &) const = default;
};
