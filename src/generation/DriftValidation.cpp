// After each language and device of a recorded run, every generated
// screenshot is compared with the picture it should look like; those that
// drifted are moved to "_needs-review" so that they are never published by
// mistake.
//
// What a screenshot should look like: its checkpoint's reference, which was
// taken on the device the flow was recorded on, but only when the two have
// the same pixel size. A device of another size has no reference: there the
// first language's screenshots are kept unchecked, and every later language
// is held against the first language's screenshot of the same checkpoint on
// that device, with the same threshold.

#include "ImagePixelSize.h"
#include "ScreenshotDriftDetector.h"
#include "ScreenshotFileName.h"
#include "ThumbnailCache.h"
#include "model/AppError.h"
#include "model/AppModel.h"
#include "model/ContainedPath.h"
#include "model/Folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace {

// One screen to check: its generated file and, when there is one, the
// thumbnails being made of it and of its reference.
struct ScreenCheck
{
    QString filename;
    QString generated;
    bool exists = false;
    std::optional<QFuture<std::optional<QByteArray>>> generatedSamples;
    std::optional<QFuture<std::optional<QByteArray>>> referenceSamples;
};

// The drift score, or nothing when the two cannot be compared (unreadable,
// or thumbnails that differ in size).
std::optional<double> driftScore(const ScreenCheck &check)
{
    if (!check.generatedSamples || !check.referenceSamples)
        return std::nullopt;
    const std::optional<QByteArray> a = check.generatedSamples->result();
    const std::optional<QByteArray> b = check.referenceSamples->result();
    if (!a || !b || a->size() != b->size() || a->size() <= 2)
        return std::nullopt;
    return ScreenshotDriftDetector::score(*a, *b);
}

// Why the recorded reference of a screen cannot be compared with, when it
// exists: it is read only from the project's own folder "manual" (a
// document or a link may name a file anywhere), and must be a picture.
std::optional<QString> unusableReference(const AppModel &model, qint64 screenNumber, const QString &screenName)
{
    const std::optional<QString> reference = model.referenceCheckpointURL(screenNumber, screenName);
    if (!reference || !QFileInfo::exists(*reference))
        return std::nullopt; // nothing recorded: nothing to report
    try {
        model.checkManualCaptureDirectory();
        if (!ContainedPath::isInside(*reference, model.manualCaptureDirectory()))
            throw AppError(QString());
    } catch (const AppError &) {
        return QStringLiteral("lies outside the folder manual");
    }
    if (!QImageReader(*reference, "png").canRead())
        return QStringLiteral("is not a readable PNG image");
    return std::nullopt;
}

} // namespace

QList<ScreenshotValidationIssue> AppModel::validateGeneratedScreens(const QString &outputDirectory,
                                                                     const QString &language,
                                                                     const QString &deviceName)
{
    // All thumbnails are asked for first, so that they are made side by side
    // (and most are ready from the run's prefetch); the verdicts then follow
    // in screen order.
    QList<ScreenCheck> checks;
    for (qsizetype i = 0; i < m_project.screens.size(); ++i) {
        const ScreenDraft &screen = m_project.screens.at(i);
        ScreenCheck check;
        check.filename = screenshotFileName(i + 1, screen.name);
        check.generated = QDir(outputDirectory).filePath(check.filename);
        check.exists = QFileInfo::exists(check.generated);
        const std::optional<QString> unusable = check.exists ? unusableReference(*this, i + 1, screen.name)
                                                             : std::nullopt;
        if (unusable)
            appendLog(QStringLiteral("Not compared: the reference of %1 %2.").arg(check.filename, *unusable));
        const std::optional<QString> baseline =
            check.exists && !unusable ? driftBaselineURL(i + 1, screen.name, check.generated, language, deviceName)
                                      : std::nullopt;
        if (baseline) {
            check.generatedSamples = ThumbnailCache::thumbnail(check.generated);
            check.referenceSamples = ThumbnailCache::thumbnail(*baseline);
        }
        checks.append(check);
    }

    QList<ScreenshotValidationIssue> issues;
    for (const ScreenCheck &check : checks) {
        if (!check.exists) {
            issues.append({check.filename, 1.0}); // nothing to move
            continue;
        }
        const std::optional<double> score = driftScore(check);
        if (!score && check.referenceSamples && !check.referenceSamples->result())
            appendLog(QStringLiteral("Not compared: the reference of %1 is not a readable PNG image.")
                          .arg(check.filename));
        if (!score || *score <= screenshotDriftThreshold)
            continue;
        moveSuspiciousScreenshotToNeedsReview(check.generated, check.filename, language, deviceName);
        issues.append({check.filename, *score});
    }
    return issues;
}

std::optional<QString> AppModel::referenceCheckpointURL(qint64 screenNumber, const QString &fallbackName) const
{
    for (const ManualScreenDraft &checkpoint : m_project.manualScreens.value_or(QList<ManualScreenDraft>{})) {
        if (checkpoint.index != screenNumber)
            continue;
        if (checkpoint.filename && !checkpoint.filename->isEmpty())
            return manualCaptureDirectory() + QLatin1Char('/') + *checkpoint.filename;
        break;
    }
    return manualCaptureDirectory() + QLatin1Char('/') + screenshotFileName(screenNumber, fallbackName);
}

bool AppModel::isReferenceForDevice(const QString &reference, const QString &screenshot)
{
    return ImagePixelSize::of(reference) == ImagePixelSize::of(screenshot);
}

std::optional<QString> AppModel::driftBaselineURL(qint64 screenNumber, const QString &screenName,
                                                  const QString &screenshot, const QString &language,
                                                  const QString &deviceName) const
{
    const std::optional<QString> reference = referenceCheckpointURL(screenNumber, screenName);
    if (!reference || !QFileInfo::exists(*reference))
        return std::nullopt; // nothing recorded to compare with
    if (isReferenceForDevice(*reference, screenshot))
        return reference;
    const QString firstLanguage = m_project.languages.value(0);
    if (language == firstLanguage)
        return std::nullopt;
    const QString firstShot = QDir(generatedOutputDirectory(firstLanguage, deviceName))
                                  .filePath(screenshotFileName(screenNumber, screenName));
    if (!QFileInfo::exists(firstShot))
        return std::nullopt;
    return firstShot;
}

QString AppModel::generatedOutputDirectory(const QString &language, const QString &deviceName) const
{
    return m_project.outputDirectory + QLatin1Char('/') + PathSanitizer::component(language) + QLatin1Char('/')
           + PathSanitizer::component(deviceName);
}

QString AppModel::needsReviewDirectory(const QString &language, const QString &deviceName) const
{
    return m_project.outputDirectory + QStringLiteral("/_needs-review/") + PathSanitizer::component(language)
           + QLatin1Char('/') + PathSanitizer::component(deviceName);
}

void AppModel::moveSuspiciousScreenshotToNeedsReview(const QString &url, const QString &filename,
                                                      const QString &language, const QString &deviceName)
{
    const QString folder = needsReviewDirectory(language, deviceName);
    Folder::ensure(folder);
    const QString destination = folder + QLatin1Char('/') + filename;
    if (QFileInfo::exists(destination) && !QFile::remove(destination))
        throw AppError(QStringLiteral("Could not replace %1.").arg(destination));
    QFile file(url);
    if (!file.rename(destination))
        throw AppError(QStringLiteral("Could not move %1 to %2: %3").arg(url, destination, file.errorString()));
}
