// The archive of project snapshots: copies of the current project kept in
// workspace/project-snapshots, made before a project is replaced and on
// request, and restorable as new projects.

#include "AppError.h"
#include "AppModel.h"
#include "AtomicFile.h"
#include "Folder.h"
#include "PathSanitizer.h"
#include "ProjectCoding.h"
#include "ProjectFileListing.h"
#include "UuidText.h"

#include <QFileInfo>
#include <algorithm>

namespace {

ProjectSnapshotSummary snapshotSummary(const QFileInfo &file)
{
    ProjectSnapshotSummary summary;
    summary.url = file.absoluteFilePath();
    summary.modifiedAt = ProjectFileListing::modificationDate(file);
    summary.title = QStringLiteral("Archived Project");
    qsizetype languages = 0;
    qsizetype checkpoints = 0;
    try {
        const ScreenshotProject document = ProjectCoding::decode(AtomicFile::read(file.filePath()));
        if (document.projectName && !document.projectName->isEmpty())
            summary.title = *document.projectName;
        else if (!document.appName.isEmpty())
            summary.title = document.appName;
        languages = document.languages.size();
        checkpoints = document.screens.size();
    } catch (const AppError &) {
        // A damaged snapshot is still listed, so the user can see and remove it.
    }
    summary.subtitle = QStringLiteral("%1 languages, %2 checkpoints").arg(languages).arg(checkpoints);
    return summary;
}

// prefix-timestamp-slug.json; two snapshots within the same second get a
// counter rather than overwriting each other.
QString freeSnapshotPath(const QString &folder, const QString &prefix, const QString &slug)
{
    const QString stem = folder + QLatin1Char('/') + prefix + QLatin1Char('-') + AppModel::projectTimestamp()
                         + QLatin1Char('-') + slug;
    QString path = stem + QStringLiteral(".json");
    for (int counter = 2; QFileInfo::exists(path); ++counter)
        path = stem + QStringLiteral("-%1.json").arg(counter);
    return path;
}

} // namespace

void AppModel::refreshProjectSnapshots()
{
    QList<ProjectSnapshotSummary> summaries;
    for (const QFileInfo &file : ProjectFileListing::jsonFiles(snapshotsDirectory()))
        summaries.append(snapshotSummary(file));
    std::stable_sort(summaries.begin(), summaries.end(),
                     [](const auto &a, const auto &b) { return a.modifiedAt > b.modifiedAt; });
    m_projectSnapshots = summaries;
    notifyChanged();
}

std::optional<QString> AppModel::snapshotCurrentProject(const QString &prefix)
{
    try {
        Folder::ensure(snapshotsDirectory());
        ScreenshotProject copy = m_project;
        copy.updatedAt = ReferenceDate::now();
        const QString path = freeSnapshotPath(snapshotsDirectory(), prefix,
                                              PathSanitizer::component(displayName(m_project).toLower()));
        AtomicFile::write(path, ProjectCoding::encodeBytes(copy, ProjectCoding::Layout::PrettySorted));
        appendLog(QStringLiteral("Archived project snapshot: ") + QFileInfo(path).fileName() + QLatin1Char('\n'));
        return path;
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not archive project snapshot: ") + error.message());
        return std::nullopt;
    }
}

std::optional<QString> AppModel::archiveProjectSnapshot()
{
    const ProjectChange change(*this); // a copy of the newest saved project
    const std::optional<QString> path = snapshotCurrentProject(QStringLiteral("project-snapshot"));
    if (path)
        refreshProjectSnapshots();
    return path;
}

void AppModel::duplicateProjectSnapshot()
{
    if (const std::optional<QString> path = archiveProjectSnapshot())
        platform().revealInFileViewer(*path);
}

void AppModel::restoreProjectSnapshot(const ProjectSnapshotSummary &snapshot)
{
    const ProjectChange change(*this);
    ScreenshotProject restored;
    try {
        restored = ProjectCoding::decode(AtomicFile::read(snapshot.url));
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not restore project snapshot: ") + error.message());
        return;
    }
    // A new identity, so the restore never overwrites the project it came from.
    restored.projectID = UuidText::create();

    stopFlowRecordingIfNeeded();
    m_project = restored;
    ensureProjectIdentityAndOutputDirectory(displayName(m_project), false);
    m_pendingOperations.clear();
    m_lastManualCaptureURL = existingLastManualCaptureURL();
    refreshReviewImages();

    if (saveProject())
        clearLastError();
    appendLog(QStringLiteral("Restored archived project: ") + QFileInfo(snapshot.url).fileName() + QLatin1Char('\n'));
}
