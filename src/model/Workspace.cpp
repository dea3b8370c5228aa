// Where projects live and how the current one is chosen, loaded and saved.

#include "AppError.h"
#include "AppModel.h"
#include "AtomicFile.h"
#include "Folder.h"
#include "PathSanitizer.h"
#include "ProjectCoding.h"
#include "UuidText.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace {

// The file the current project is loaded from at start: the one the identity
// file names, else the legacy single-project file, else the newest readable library
// entry (which needs the library listed); nothing on a first start.
std::optional<QString> savedProjectSource(AppModel &model, bool &libraryListed)
{
    // An identity file that cannot be read counts as absent.
    const std::optional<QByteArray> idBytes =
        AtomicFile::readIfExists(model.workspaceDirectory() + QStringLiteral("/current-project-id.txt"));
    const QString currentID = idBytes ? QString::fromUtf8(*idBytes).trimmed() : QString();
    if (!currentID.isEmpty() && QFileInfo::exists(model.projectFileURL(currentID)))
        return model.projectFileURL(currentID);
    const QString legacyFile = model.workspaceDirectory() + QStringLiteral("/project.json");
    if (QFileInfo::exists(legacyFile))
        return legacyFile;
    model.refreshProjectLibrary();
    libraryListed = true;
    for (const ProjectLibraryItem &item : std::as_const(model.projectLibrary()))
        if (item.isReadable && QFileInfo::exists(item.url))
            return item.url;
    return std::nullopt;
}

// Whether the project just loaded from `source` is already saved exactly as
// a save would write it: its own file, the mirror and the current identity.
bool isSavedAsLoaded(AppModel &model, const QString &source, const QByteArray &bytes)
{
    const QString id = model.project().projectID.value_or(QString());
    if (source != model.projectFileURL(id) || ProjectCoding::encodeBytes(model.project()) != bytes)
        return false;
    const QString workspace = model.workspaceDirectory();
    return AtomicFile::readIfExists(workspace + QStringLiteral("/project.json")) == bytes
           && AtomicFile::readIfExists(workspace + QStringLiteral("/current-project-id.txt")) == id.toUtf8();
}

} // namespace

QString AppModel::workspaceDirectory() const { return m_packageRoot + QStringLiteral("/.quillmark"); }
QString AppModel::projectsDirectory() const { return workspaceDirectory() + QStringLiteral("/projects"); }
QString AppModel::snapshotsDirectory() const { return workspaceDirectory() + QStringLiteral("/project-snapshots"); }
QString AppModel::outputRootDirectory() const { return m_packageRoot + QStringLiteral("/output"); }

QString AppModel::projectFileURL(const QString &projectID) const
{
    return projectsDirectory() + QLatin1Char('/') + PathSanitizer::component(projectID) + QStringLiteral(".json");
}

QString AppModel::defaultOutputDirectory(const std::optional<QString> &projectID, const QString &name) const
{
    const QString slug = PathSanitizer::component(name.toLower());
    const QString id8 = (projectID ? *projectID : UuidText::create()).left(8).toLower();
    return outputRootDirectory() + QLatin1Char('/') + slug + QLatin1Char('-') + id8;
}

QString AppModel::displayName(const ScreenshotProject &project)
{
    if (project.projectName) {
        const QString trimmed = project.projectName->trimmed();
        if (!trimmed.isEmpty())
            return trimmed;
    }
    if (!project.appName.isEmpty())
        return project.appName;
    return QStringLiteral("Untitled Project");
}

void AppModel::normalizeLoadedProject(ScreenshotProject &p) const
{
    if (!p.schemaVersion) {
        // A legacy document: its launch settings and screens meant something
        // else then, so they are dropped rather than misread.
        p.globalLaunchArguments.clear();
        p.stateArgumentName = ScreenshotProject::defaultStateArgumentName;
        p.sampleNameArgumentName.clear();
        p.screens.clear();
        p.schemaVersion = ScreenshotProject::currentSchemaVersion;
    }
    if (!p.projectID)
        p.projectID = UuidText::create();
    if (p.manualCaptureIndex && *p.manualCaptureIndex < 1)
        p.manualCaptureIndex = 1;
    if (p.outputDirectory.isEmpty())
        p.outputDirectory = defaultOutputDirectory(p.projectID, displayName(p));
}

bool AppModel::saveProject()
{
    assertMainThread();
    const ProjectChange change(*this, false);
    if (m_workspaceLockFailed)
        return false; // lastError says which process holds the workspace
    try {
        Folder::ensure(projectsDirectory());
        if (!m_project.projectID)
            m_project.projectID = UuidText::create();
        const ReferenceSeconds now = ReferenceDate::now();
        m_project.updatedAt = now;
        if (!m_project.createdAt)
            m_project.createdAt = now;
        if (m_project.outputDirectory.isEmpty())
            m_project.outputDirectory = defaultOutputDirectory(m_project.projectID, displayName(m_project));

        const QByteArray bytes = ProjectCoding::encodeBytes(m_project);
        AtomicFile::write(projectFileURL(*m_project.projectID), bytes);
        m_savedProjectBytes = bytes;
        AtomicFile::write(workspaceDirectory() + QStringLiteral("/project.json"), bytes);
        writeCurrentProjectID();
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not save project: ") + error.message());
        return false;
    }
    refreshProjectLibrary();
    notifyChanged();
    return true;
}

void AppModel::writeCurrentProjectID()
{
    if (!m_project.projectID)
        return;
    Folder::ensure(workspaceDirectory());
    AtomicFile::write(workspaceDirectory() + QStringLiteral("/current-project-id.txt"),
                      m_project.projectID->toUtf8());
}

bool AppModel::loadSavedProject()
{
    assertMainThread();
    // The library is read once per load: by the save that ends a load, or
    // here when the newest library entry is the last source to try or the
    // load ends without a save. Every extra listing re-reads every project.
    bool libraryListed = false;
    bool savedAsLoaded = false;
    const ProjectChange change(*this);
    try {
        Folder::ensure(projectsDirectory());
        if (const std::optional<QString> source = savedProjectSource(*this, libraryListed)) {
            const QByteArray bytes = AtomicFile::read(*source);
            ScreenshotProject loaded = ProjectCoding::decode(bytes);
            normalizeLoadedProject(loaded);
            m_project = loaded;
            savedAsLoaded = isSavedAsLoaded(*this, *source, bytes);
            if (savedAsLoaded)
                m_savedProjectBytes = bytes;
        }
    } catch (const AppError &error) {
        // The start-up project stays current and is not saved, so the file
        // that failed to load is left exactly as it was; the library still
        // shows, so another project can be opened.
        if (!libraryListed)
            refreshProjectLibrary();
        setLastError(QStringLiteral("Could not load saved project: ") + error.message());
        return false;
    }
    recoverInterruptedWork();
    // A command that only reads leaves the files as they are; the save is
    // only for a first start or a file that loading repaired or moved.
    if (savedAsLoaded) {
        if (!libraryListed)
            refreshProjectLibrary();
        return true;
    }
    // A save that fails here leaves the loaded project current: it is the
    // user's own, only it could not be written back (lastError says why).
    if (!saveProject() && !libraryListed)
        refreshProjectLibrary();
    return true;
}

void AppModel::ensureProjectIdentityAndOutputDirectory(const QString &name, bool preferAppSpecificOutput)
{
    if (!m_project.projectID)
        m_project.projectID = UuidText::create();
    const QString current = QDir::cleanPath(m_project.outputDirectory);
    const QString root = QDir::cleanPath(outputRootDirectory());
    const bool keep = !m_project.outputDirectory.isEmpty() && current != root
                      && QFileInfo(current).absolutePath() != root && !preferAppSpecificOutput
                      && !QFileInfo(current).fileName().startsWith(QStringLiteral("untitled-"));
    if (!keep)
        m_project.outputDirectory = defaultOutputDirectory(m_project.projectID, name);
}

void AppModel::configureBlankProject(const QString &name)
{
    QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        trimmed = QStringLiteral("Untitled Project");
    ScreenshotProject fresh;
    fresh.projectID = UuidText::create();
    fresh.projectName = trimmed;
    fresh.createdAt = fresh.updatedAt = ReferenceDate::now();
    fresh.outputDirectory = defaultOutputDirectory(fresh.projectID, trimmed);
    m_project = fresh;
    notifyChanged();
}

QString AppModel::projectTimestamp()
{
    return QLocale(QStringLiteral("en_US_POSIX")).toString(QDateTime::currentDateTime(), QStringLiteral("yyyyMMdd-HHmmss"));
}

void AppModel::resetProjectRuntimeState(const QString &message)
{
    m_installedApps.clear();
    m_recorderPreviewImage.reset();
    m_recorderPreviewPixelSize = QSizeF(0, 0);
    m_recorderPreviewScale = 1.0;
    m_pendingOperations.clear();
    m_lastManualCaptureURL = existingLastManualCaptureURL();
    m_runProgress.clear();
    m_lastRunOutcome.reset();
    m_runLog = message;
    m_lastRunLogStart = m_runLog.size(); // the new project has had no run yet
    refreshReviewImages();
    // The library is not listed here: a project is only replaced together
    // with a save, and the save lists it (listing twice reads every project
    // file twice).
    refreshProjectSnapshots();
    notifyChanged();
}
