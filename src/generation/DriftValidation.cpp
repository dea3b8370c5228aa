// After each language and device of a recorded run, every generated
// screenshot is compared with the reference saved when its checkpoint was
// recorded; those that drifted are moved to "_needs-review" so that they are
// never published by mistake.

#include "ScreenshotDriftDetector.h"
#include "ScreenshotFileName.h"
#include "model/AppError.h"
#include "model/AppModel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

namespace {

std::optional<QByteArray> thumbnail(const QString &path)
{
    const QImage image(path);
    if (image.isNull())
        return std::nullopt;
    return ScreenshotDriftDetector::samples(image);
}

// The drift score of a generated image against its reference, or nothing
// when the two cannot be compared (unreadable, or thumbnails that differ).
std::optional<double> driftScore(const QString &generated, const QString &reference)
{
    const std::optional<QByteArray> a = thumbnail(generated);
    const std::optional<QByteArray> b = thumbnail(reference);
    if (!a || !b || a->size() != b->size() || a->size() <= 2)
        return std::nullopt;
    return ScreenshotDriftDetector::score(*a, *b);
}

} // namespace

QList<ScreenshotValidationIssue> AppModel::validateGeneratedScreens(const QString &outputDirectory,
                                                                     const QString &language,
                                                                     const QString &deviceName)
{
    QList<ScreenshotValidationIssue> issues;
    for (qsizetype i = 0; i < project.screens.size(); ++i) {
        const ScreenDraft &screen = project.screens.at(i);
        const qint64 number = i + 1;
        const QString filename = screenshotFileName(number, screen.name);
        const QString generated = QDir(outputDirectory).filePath(filename);
        if (!QFileInfo::exists(generated)) {
            issues.append({filename, 1.0});
            continue;
        }
        const std::optional<QString> reference = referenceCheckpointURL(number, screen.name);
        if (!reference || !QFileInfo::exists(*reference))
            continue;
        const std::optional<double> score = driftScore(generated, *reference);
        if (!score || *score <= screenshotDriftThreshold)
            continue;
        moveSuspiciousScreenshotToNeedsReview(generated, filename, language, deviceName);
        issues.append({filename, *score});
    }
    return issues;
}

std::optional<QString> AppModel::referenceCheckpointURL(qint64 screenNumber, const QString &fallbackName) const
{
    for (const ManualScreenDraft &checkpoint : project.manualScreens.value_or(QList<ManualScreenDraft>{})) {
        if (checkpoint.index != screenNumber)
            continue;
        if (checkpoint.filename && !checkpoint.filename->isEmpty())
            return manualCaptureDirectory() + QLatin1Char('/') + *checkpoint.filename;
        break;
    }
    return manualCaptureDirectory() + QLatin1Char('/') + screenshotFileName(screenNumber, fallbackName);
}

QString AppModel::needsReviewDirectory(const QString &language, const QString &deviceName) const
{
    return project.outputDirectory + QStringLiteral("/_needs-review/") + PathSanitizer::component(language)
           + QLatin1Char('/') + PathSanitizer::component(deviceName);
}

void AppModel::moveSuspiciousScreenshotToNeedsReview(const QString &url, const QString &filename,
                                                      const QString &language, const QString &deviceName)
{
    const QString folder = needsReviewDirectory(language, deviceName);
    if (!QDir().mkpath(folder))
        throw AppError(QStringLiteral("Could not create the folder %1.").arg(folder));
    const QString destination = folder + QLatin1Char('/') + filename;
    if (QFileInfo::exists(destination) && !QFile::remove(destination))
        throw AppError(QStringLiteral("Could not replace %1.").arg(destination));
    QFile file(url);
    if (!file.rename(destination))
        throw AppError(QStringLiteral("Could not move %1 to %2: %3").arg(url, destination, file.errorString()));
}
