// The library of projects in the workspace and the archive of snapshots.

#include "AppModel.h"
#include "AtomicFile.h"
#include "ProjectCoding.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace {

QString plural(qsizetype count, const QString &word)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(word, count == 1 ? QString() : QStringLiteral("s"));
}

// The ".json" files of a folder, in listing order (by name).
QFileInfoList jsonFiles(const QString &folder)
{
    QFileInfoList result;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files | QDir::Hidden, QDir::Name);
    for (const QFileInfo &entry : entries)
        if (entry.suffix().toLower() == QLatin1String("json"))
            result.append(entry);
    return result;
}

ReferenceSeconds fileModificationDate(const QFileInfo &info)
{
    const QDateTime modified = info.lastModified();
    // The distant past when the file system cannot tell.
    return modified.isValid() ? ReferenceDate::fromDateTime(modified) : -6.3e10;
}

} // namespace

void AppModel::refreshProjectLibrary()
{
    QList<ProjectLibraryItem> items;
    for (const QFileInfo &file : jsonFiles(projectsDirectory()))
        if (auto item = projectLibraryItem(file.filePath()))
            items.append(*item);
    std::stable_sort(items.begin(), items.end(),
                     [](const auto &a, const auto &b) { return a.modifiedAt > b.modifiedAt; });
    projectLibrary = items;
    emit changed();
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
        return std::nullopt; // unreadable library files are skipped silently
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
    item.modifiedAt = document.updatedAt.value_or(fileModificationDate(info));
    item.appName = document.appName;
    item.bundleId = document.bundleId;
    return item;
}

void AppModel::refreshProjectSnapshots()
{
    QList<ProjectSnapshotSummary> summaries;
    for (const QFileInfo &file : jsonFiles(snapshotsDirectory())) {
        ProjectSnapshotSummary summary;
        summary.url = file.absoluteFilePath();
        summary.modifiedAt = fileModificationDate(file);
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
        } catch (const std::exception &) {
            // A damaged snapshot is still listed, so the user can see and remove it.
        }
        summary.subtitle = QStringLiteral("%1 languages, %2 checkpoints").arg(languages).arg(checkpoints);
        summaries.append(summary);
    }
    std::stable_sort(summaries.begin(), summaries.end(),
                     [](const auto &a, const auto &b) { return a.modifiedAt > b.modifiedAt; });
    projectSnapshots = summaries;
    emit changed();
}
