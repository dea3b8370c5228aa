// Where checkpoint reference images live: the folder "manual" inside the
// project's output folder, named "NN-name.png".

#include "model/AppModel.h"

#include "generation/ScreenshotFileName.h"
#include "model/AppError.h"
#include "model/ContainedPath.h"
#include "model/PathSanitizer.h"
#include "model/UuidText.h"
#include "simulator/NaturalOrder.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

QString AppModel::manualCaptureDirectory() const
{
    return m_project.outputDirectory + QStringLiteral("/manual");
}

QList<ManualScreenDraft> AppModel::manualScreens() const
{
    return m_project.manualScreens.value_or(QList<ManualScreenDraft>{});
}

qint64 AppModel::nextManualCaptureIndex() const
{
    const qint64 index = m_project.manualCaptureIndex.value_or(1);
    return index < 2 ? 1 : index;
}

QString AppModel::checkpointFileName(qint64 index, const QString &name)
{
    // The generated screenshots of a checkpoint carry the same name.
    return screenshotFileName(index, name);
}

QString AppModel::manualCaptureURL(const ManualScreenDraft &checkpoint) const
{
    const QString filename = checkpoint.filename && !checkpoint.filename->isEmpty()
                                 ? *checkpoint.filename
                                 : checkpointFileName(checkpoint.index, checkpoint.name);
    return manualCaptureDirectory() + QLatin1Char('/') + filename;
}

QString AppModel::checkedManualCaptureURL(const ManualScreenDraft &checkpoint) const
{
    checkManualCaptureDirectory();
    const QString filename = checkpoint.filename && !checkpoint.filename->isEmpty()
                                 ? *checkpoint.filename
                                 : checkpointFileName(checkpoint.index, checkpoint.name);
    if (const std::optional<QString> why = ContainedPath::refusal(manualCaptureDirectory(), filename))
        throw AppError(QStringLiteral("Checkpoint %1 was left alone: %2.").arg(checkpoint.index).arg(*why));
    return manualCaptureURL(checkpoint);
}

void AppModel::checkManualCaptureDirectory() const
{
    const QString folder = manualCaptureDirectory();
    const QFileInfo info(folder);
    if ((info.exists() || info.isSymLink()) && !ContainedPath::isInside(folder, m_project.outputDirectory))
        throw AppError(QStringLiteral("The folder %1 leads outside the output folder %2, so its files were left alone.")
                           .arg(folder, m_project.outputDirectory));
}

QStringList AppModel::manualCaptureURLs() const
{
    QStringList paths;
    try {
        checkManualCaptureDirectory();
    } catch (const AppError &) {
        return paths; // none of those files are the project's
    }
    const QString folder = manualCaptureDirectory();
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::Files, QDir::NoSort);
    for (const QFileInfo &entry : entries)
        if (entry.suffix().toLower() == QLatin1String("png") && !ContainedPath::refusal(folder, entry.fileName()))
            paths.append(entry.absoluteFilePath());
    // As a file browser shows them: 9-... before 10-....
    std::stable_sort(paths.begin(), paths.end(), [](const QString &a, const QString &b) {
        return NaturalOrder::compare(QFileInfo(a).fileName(), QFileInfo(b).fileName()) < 0;
    });
    return paths;
}

std::optional<qint64> AppModel::manualCaptureNumber(const QString &path)
{
    const QString base = QFileInfo(path).completeBaseName();
    const qsizetype dash = base.indexOf(QLatin1Char('-'));
    QStringList pieces = dash < 0 ? QStringList{base} : QStringList{base.left(dash), base.mid(dash + 1)};
    pieces.removeAll(QString());
    if (pieces.isEmpty())
        return std::nullopt;
    const QString first = pieces.first();
    bool ok = false;
    const qint64 number = first.toLongLong(&ok, 10);
    return ok ? std::optional(number) : std::nullopt;
}

bool AppModel::isManualCaptureURL(const QString &path) const
{
    return QDir::cleanPath(QFileInfo(path).absolutePath()) == QDir::cleanPath(manualCaptureDirectory());
}

std::optional<QString> AppModel::existingLastManualCaptureURL() const
{
    if (m_lastManualCaptureURL && QFileInfo::exists(*m_lastManualCaptureURL)
        && isManualCaptureURL(*m_lastManualCaptureURL))
        return m_lastManualCaptureURL;
    // Only a numbered image can be a checkpoint's; "notes.png" is the user's own.
    const QStringList all = manualCaptureURLs();
    for (auto it = all.crbegin(); it != all.crend(); ++it)
        if (manualCaptureNumber(*it))
            return *it;
    return std::nullopt;
}

void AppModel::removeManualCheckpointFiles()
{
    // Deleted outright: a reset throws the whole flow away on purpose. Only
    // the images the checkpoints name are the project's; anything else in
    // the folder is the user's own. One file that resists does not keep the
    // others.
    for (const ManualScreenDraft &checkpoint : manualScreens()) {
        try {
            const QString image = checkedManualCaptureURL(checkpoint);
            if (QFileInfo(image).isFile())
                QFile::remove(image);
        } catch (const AppError &error) {
            appendLog(error.message());
        }
    }
}

void AppModel::syncManualScreensFromExistingCapturesIfNeeded()
{
    if (!manualScreens().isEmpty())
        return;
    QList<ManualScreenDraft> screens;
    for (const QString &path : manualCaptureURLs()) {
        const QFileInfo info(path);
        const QString base = info.completeBaseName();
        const qsizetype dash = base.indexOf(QLatin1Char('-'));
        bool isNumber = false;
        const qint64 number = (dash < 0 ? base : base.left(dash)).toLongLong(&isNumber, 10);
        if (!isNumber)
            continue; // not a checkpoint image
        // A bare number has no name of its own; it keeps the generic one.
        const QString rest = dash < 0 ? QString() : base.mid(dash + 1);
        screens.append({UuidText::create(), number, rest.isEmpty() ? QStringLiteral("screen") : rest, info.fileName()});
    }
    if (screens.isEmpty())
        return;
    m_project.manualScreens = screens;
    notifyChanged();
}
