// The library of projects in the workspace: listing, opening, renaming,
// deleting, and starting a new project.

#include "AppError.h"
#include "AppModel.h"
#include "AtomicFile.h"
#include "ProjectCoding.h"
#include "ProjectFileListing.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace {

QString plural(qsizetype count, const QString &word)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(word, count == 1 ? QString() : QStringLiteral("s"));
}

// A project file read as start-up reads it: decoded, then repaired.
ScreenshotProject readProjectFile(const AppModel &model, const QString &path)
{
    ScreenshotProject document = ProjectCoding::decode(AtomicFile::read(path));
    model.normalizeLoadedProject(document);
    return document;
}

// Says where a removed item went: the Trash, or nowhere when there is none.
void reportRemoval(AppModel &model, const QString &path, bool trashed)
{
    model.appendLog(trashed ? QStringLiteral("Moved %1 to the Trash.").arg(path)
                            : QStringLiteral("Deleted %1 for good: no Trash is available here.").arg(path));
}

bool isCurrentProject(const AppModel &model, const ProjectLibraryItem &item)
{
    const std::optional<QString> &id = model.project().projectID;
    return id && (*id == item.id || QDir::cleanPath(model.projectFileURL(*id)) == QDir::cleanPath(item.url));
}

} // namespace

void AppModel::switchToProject(const ScreenshotProject &document, const QString &logPrefix)
{
    const ScreenshotProject previous = m_project;
    m_project = document;
    try {
        writeCurrentProjectID();
    } catch (const AppError &) {
        m_project = previous;
        throw;
    }
    const bool saved = saveProject();
    resetProjectRuntimeState(logPrefix + displayName(m_project) + QLatin1Char('\n'));
    if (saved)
        clearLastError(); // a failed save keeps its message
}

void AppModel::refreshProjectLibrary()
{
    QList<ProjectLibraryItem> items;
    for (const QFileInfo &file : ProjectFileListing::jsonFiles(projectsDirectory()))
        if (auto item = projectLibraryItem(file.filePath()))
            items.append(*item);
    std::stable_sort(items.begin(), items.end(),
                     [](const auto &a, const auto &b) { return a.modifiedAt > b.modifiedAt; });
    m_projectLibrary = items;
    notifyChanged();
}

std::optional<ProjectLibraryItem> AppModel::projectLibraryItem(const QString &path) const
{
    const QFileInfo info(path);
    const std::optional<QByteArray> bytes = AtomicFile::readIfExists(path);
    if (!bytes)
        return std::nullopt;
    ScreenshotProject document;
    try {
        document = ProjectCoding::decode(*bytes);
    } catch (const std::exception &) {
        // Listed, never hidden: the user sees it is broken and can delete it.
        ProjectLibraryItem broken;
        broken.id = info.completeBaseName();
        broken.url = info.absoluteFilePath();
        broken.title = info.fileName();
        broken.subtitle = QStringLiteral("Cannot be read");
        broken.modifiedAt = ProjectFileListing::modificationDate(info);
        broken.isReadable = false;
        return broken;
    }
    const bool hadID = document.projectID.has_value();
    normalizeLoadedProject(document);

    ProjectLibraryItem item;
    item.id = hadID ? *document.projectID : info.completeBaseName();
    item.url = info.absoluteFilePath();
    item.title = displayName(document);
    item.checkpointCount = document.screens.size();
    item.languageCount = document.languages.size();
    item.subtitle = plural(item.languageCount, QStringLiteral("language")) + QStringLiteral(" \u00B7 ")
                    + plural(item.checkpointCount, QStringLiteral("checkpoint"));
    item.modifiedAt = document.updatedAt ? *document.updatedAt : ProjectFileListing::modificationDate(info);
    item.appName = document.appName;
    item.bundleId = document.bundleId;
    return item;
}

void AppModel::openProject(const ProjectLibraryItem &item)
{
    const ProjectChange change(*this);
    try {
        if (!QFileInfo::exists(item.url))
            throw AppError(QStringLiteral("Project file is missing."));
        const ScreenshotProject document = readProjectFile(*this, item.url);
        stopFlowRecordingIfNeeded();
        switchToProject(document, QStringLiteral("Opened project: "));
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not open project: ") + error.message());
    }
}

void AppModel::renameCurrentProject(const QString &name)
{
    const ProjectChange change(*this);
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty()) {
        setLastError(QStringLiteral("Project name cannot be empty."));
        return;
    }
    m_project.projectName = trimmed;
    if (saveProject())
        clearLastError();
}

void AppModel::deleteProject(const ProjectLibraryItem &item)
{
    const ProjectChange change(*this);
    try {
        // The document tells which output folder belongs to it.
        std::optional<ScreenshotProject> deleted;
        try {
            if (QFileInfo::exists(item.url))
                deleted = ProjectCoding::decode(AtomicFile::read(item.url));
        } catch (const AppError &) {
            // A file that cannot be read names no output folder; it goes alone.
        }
        const bool wasCurrent = isCurrentProject(*this, item);
        const qsizetype logBefore = m_runLog.size();
        reportRemoval(*this, item.url, trashOrRemove(item.url));
        if (deleted)
            deleteManagedOutputDirectoryIfSafe(*deleted);
        // Where the files went stays at the head of the new project's log.
        const QString removals = m_runLog.mid(logBefore);
        refreshProjectLibrary();
        if (!wasCurrent)
            return;

        stopFlowRecordingIfNeeded();
        for (const ProjectLibraryItem &next : std::as_const(m_projectLibrary)) {
            ScreenshotProject document;
            try {
                document = readProjectFile(*this, next.url);
            } catch (const AppError &) {
                continue; // gone or damaged since the listing: try the next one
            }
            switchToProject(document, removals + QStringLiteral("Deleted project and opened "));
            return;
        }
        configureBlankProject(QStringLiteral("Untitled Project"));
        resetProjectRuntimeState(removals + QStringLiteral("Deleted project and started a new local project.\n"));
        saveProject();
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not delete project: ") + error.message());
    }
}

void AppModel::deleteCurrentProjectAndCreateReplacement()
{
    if (m_project.projectID) {
        for (const ProjectLibraryItem &item : std::as_const(m_projectLibrary)) {
            if (item.id == *m_project.projectID) {
                deleteProject(ProjectLibraryItem(item)); // the library is rebuilt meanwhile
                return;
            }
        }
    }
    // Never saved to the library: the snapshot is all that keeps the old project.
    startNewProject(QStringLiteral("Untitled Project"));
}

void AppModel::startNewProject(const QString &name)
{
    const ProjectChange change(*this);
    stopFlowRecordingIfNeeded();
    // Without its archive copy the old project could be lost, so a failed
    // snapshot stops here with its message.
    if (!snapshotCurrentProject(QStringLiteral("before-new-project")))
        return;
    configureBlankProject(name);
    resetProjectRuntimeState(QStringLiteral("Started a new local project.\n"));
    if (saveProject())
        clearLastError();
}

void AppModel::deleteManagedOutputDirectoryIfSafe(const ScreenshotProject &deleted)
{
    // Only a folder strictly inside our own output root is ours to remove;
    // a folder the user chose, the root itself and look-alikes such as
    // "output-old" are left alone.
    if (deleted.outputDirectory.isEmpty())
        return;
    const QString folder = QDir::cleanPath(deleted.outputDirectory);
    const QString root = QDir::cleanPath(outputRootDirectory());
    if (!folder.startsWith(root + QLatin1Char('/')))
        return;
    const QFileInfo info(folder);
    if (!info.exists())
        return;
    // A link inside the root may lead anywhere; it counts only if it stays inside.
    const QString canonicalRoot = QFileInfo(root).canonicalFilePath();
    if (canonicalRoot.isEmpty() || !info.canonicalFilePath().startsWith(canonicalRoot + QLatin1Char('/')))
        return;
    reportRemoval(*this, folder, trashOrRemove(folder));
}

bool AppModel::trashOrRemove(const QString &path)
{
    QString reason;
    if (platform().moveToTrash(path, &reason))
        return true;
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return true;
    // No Trash here: the item goes for good (a link, not what it points to).
    const bool removed = info.isDir() && !info.isSymLink() ? QDir(path).removeRecursively() : QFile::remove(path);
    if (!removed)
        throw AppError(QStringLiteral("Could not remove %1.").arg(path));
    return false;
}
