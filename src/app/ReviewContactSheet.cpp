// The contact sheet of the project's output folder (ContactSheet): the grid
// gathered from the files as they are, and the page written with its
// thumbnails.

#include "app/ContactSheet.h"
#include "generation/ScreenshotFileName.h"
#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/AtomicFile.h"
#include "model/Await.h"
#include "model/Folder.h"
#include "model/PathSanitizer.h"
#include "simulator/CodePointOrder.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QtConcurrent/QtConcurrentMap>

namespace {

// Device folders below the language folders, in the project's device order
// first and then any other found on disk in code-point order.
QStringList deviceFolders(const AppModel &model)
{
    QStringList folders;
    for (const QString &udid : model.project().devices) {
        const QString name = model.displayNameForDeviceID(udid);
        if (name != udid && !folders.contains(PathSanitizer::component(name)))
            folders.append(PathSanitizer::component(name));
    }
    QStringList found;
    const QDir output(model.project().outputDirectory);
    for (const QString &language : model.project().languages) {
        const QString folder = PathSanitizer::component(language);
        for (const QDir &parent : {QDir(output.filePath(folder)),
                                   QDir(output.filePath(QStringLiteral("_needs-review/") + folder))})
            for (const QString &device : parent.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
                if (!folders.contains(device) && !found.contains(device))
                    found.append(device);
    }
    std::sort(found.begin(), found.end(), CodePointOrder::Less());
    return folders + found;
}

} // namespace

ContactSheet::Page AppModel::contactSheetPage() const
{
    using namespace ContactSheet;
    Page page;
    page.projectName = displayName(m_project);
    const QList<LocalizationWarning> warnings = localizationWarnings();
    const QDir output(m_project.outputDirectory);
    QStringList checkpoints;
    for (qsizetype i = 0; i < m_project.screens.size(); ++i)
        checkpoints.append(screenshotFileName(i + 1, m_project.screens.at(i).name));

    QDateTime newest;
    for (const QString &device : deviceFolders(*this)) {
        DeviceGrid grid{device, checkpoints, m_project.languages, {}};
        for (const QString &checkpoint : checkpoints) {
            QList<Cell> row;
            for (const QString &language : m_project.languages) {
                const QString relative = PathSanitizer::component(language) + QLatin1Char('/') + device
                                         + QLatin1Char('/') + checkpoint;
                const QString drifted = QStringLiteral("_needs-review/") + relative;
                Cell cell;
                if (QFileInfo::exists(output.filePath(relative))) {
                    cell.state = CellState::generated;
                    cell.image = relative;
                } else if (QFileInfo::exists(output.filePath(drifted))) {
                    cell.state = CellState::drifted;
                    cell.image = drifted;
                }
                if (!cell.image.isEmpty()) {
                    cell.thumbnail = thumbnailsFolderName() + QLatin1Char('/')
                                     + cell.image.chopped(4) + QStringLiteral(".jpg");
                    const QDateTime modified = QFileInfo(output.filePath(cell.image)).lastModified();
                    if (!newest.isValid() || modified > newest)
                        newest = modified;
                }
                for (const LocalizationWarning &warning : warnings)
                    if (warning.file == checkpoint && warning.language == language && warning.deviceName == device) {
                        cell.warning = warning.text();
                        cell.warningDismissed = warning.dismissed;
                    }
                row.append(cell);
            }
            grid.cells.append(row);
        }
        page.devices.append(grid);
    }
    if (newest.isValid())
        page.runDate = newest.toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    return page;
}

std::optional<QString> AppModel::writeContactSheet()
{
    assertMainThread();
    if (m_project.outputDirectory.isEmpty()) {
        setLastError(QStringLiteral("Could not write the contact sheet: the project has no output folder."));
        return std::nullopt;
    }
    const ContactSheet::Page sheet = contactSheetPage();
    struct Job
    {
        QString source;
        QString thumbnail;
    };
    QList<Job> jobs;
    const QDir output(m_project.outputDirectory);
    for (const ContactSheet::DeviceGrid &device : sheet.devices)
        for (const QList<ContactSheet::Cell> &row : device.cells)
            for (const ContactSheet::Cell &cell : row)
                if (!cell.image.isEmpty())
                    jobs.append({output.filePath(cell.image), output.filePath(cell.thumbnail)});
    // Decoding full screenshots is the slow part: it runs on the pool's
    // threads while the window stays live.
    const QList<bool> made = awaitFuture(QtConcurrent::mapped(
        jobs, [](const Job &job) { return ContactSheet::makeThumbnail(job.source, job.thumbnail); }).then(
        [](QFuture<bool> future) { return future.results(); }));
    const qsizetype failed = std::count(made.begin(), made.end(), false);
    const QString path = output.filePath(ContactSheet::pageFileName());
    try {
        Folder::ensure(m_project.outputDirectory);
        AtomicFile::write(path, ContactSheet::html(sheet).toUtf8());
    } catch (const AppError &error) {
        setLastError(QStringLiteral("Could not write the contact sheet: ") + error.message());
        return std::nullopt;
    }
    clearLastError();
    if (failed > 0)
        appendLog(QStringLiteral("%1 thumbnails could not be made; their screenshots could not be read.").arg(failed));
    return path;
}

void AppModel::openContactSheet()
{
    const std::optional<QString> path = writeContactSheet();
    if (path && !platform().openWithDefaultApplication(*path))
        setLastError(QStringLiteral("Could not open ") + *path);
}
