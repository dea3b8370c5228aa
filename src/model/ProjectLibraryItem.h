#pragma once
// Entries of the project library and of the snapshot archive.

#include "ReferenceDate.h"

#include <QString>

struct ProjectLibraryItem
{
    QString id;  // projectID, or the file name without extension
    QString url; // the project file
    QString title;
    QString subtitle; // "3 languages · 1 checkpoint"
    ReferenceSeconds modifiedAt = 0;
    QString appName;
    QString bundleId;
    qsizetype checkpointCount = 0;
    qsizetype languageCount = 0;
    // False for a file that cannot be read as a project: it is listed (so
    // that it can be deleted) but cannot be opened.
    bool isReadable = true;
    bool operator==(const ProjectLibraryItem &) const = default;
};

struct ProjectSnapshotSummary
{
    QString url; // the snapshot file
    QString title;
    QString subtitle; // "1 languages, 4 checkpoints"
    ReferenceSeconds modifiedAt = 0;
    bool operator==(const ProjectSnapshotSummary &) const = default;
};
