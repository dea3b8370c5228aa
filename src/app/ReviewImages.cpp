// The review gallery: every PNG under the project's output folder, the
// cards per language and the images held back for review.

#include "model/AppModel.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QMap>
#include <algorithm>

namespace {

const QString needsReviewPrefix = QStringLiteral("_needs-review/");
const QString manualPrefix = QStringLiteral("manual/");

} // namespace

void AppModel::refreshReviewImages()
{
    QList<ReviewImage> images;
    // An empty path would walk the working directory instead.
    if (!project.outputDirectory.isEmpty()) {
        const QString root = QDir::cleanPath(project.outputDirectory);
        const QString prefix = root + QLatin1Char('/');
        // Without QDir::Hidden the walk skips hidden files and never enters
        // hidden folders (temporary captures live there).
        QDirIterator it(root, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            if (it.fileInfo().suffix().toLower() != QLatin1String("png"))
                continue;
            images.append({path, QString(path).replace(prefix, QString())});
        }
    }
    // Plain comparison of UTF-16 units: de-DE/10.png sorts before de-DE/2.png.
    std::stable_sort(images.begin(), images.end(),
                     [](const ReviewImage &a, const ReviewImage &b) { return a.relativePath < b.relativePath; });
    reviewImages = images;
    notifyChanged();
}

QList<ReviewImage> AppModel::needsReviewImages() const
{
    QList<ReviewImage> result;
    for (const ReviewImage &image : reviewImages)
        if (image.relativePath.startsWith(needsReviewPrefix))
            result.append(image);
    return result;
}

QList<GeneratedLanguageGroup> AppModel::groupedImages() const
{
    // QMap keeps its keys in plain ascending order, which is the card order.
    QMap<QString, QList<ReviewImage>> byLanguage;
    for (const ReviewImage &image : reviewImages) {
        if (image.relativePath.startsWith(manualPrefix) || image.relativePath.startsWith(needsReviewPrefix))
            continue;
        const QStringList parts = image.relativePath.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        if (!parts.isEmpty())
            byLanguage[parts.first()].append(image);
    }
    QList<GeneratedLanguageGroup> groups;
    for (auto it = byLanguage.cbegin(); it != byLanguage.cend(); ++it)
        groups.append({it.key(), it.value()});
    return groups;
}

std::optional<QString> AppModel::reviewReferenceURL(const ReviewImage &image) const
{
    // Held-back screenshots keep their checkpoint's file name, "NN-name.png".
    if (!image.relativePath.startsWith(needsReviewPrefix))
        return std::nullopt;
    const std::optional<qint64> number = manualCaptureNumber(image.url);
    if (!number)
        return std::nullopt;
    const QString base = QFileInfo(image.url).completeBaseName();
    const std::optional<QString> reference = referenceCheckpointURL(*number, base.section(QLatin1Char('-'), 1));
    if (!reference || !QFileInfo::exists(*reference))
        return std::nullopt;
    return reference;
}

void AppModel::openReviewImage(const ReviewImage &image)
{
    if (!QFileInfo::exists(image.url)) {
        setLastError(QStringLiteral("Screenshot no longer exists: ") + image.url);
        refreshReviewImages();
        return;
    }
    if (!platform().openWithDefaultApplication(image.url))
        setLastError(QStringLiteral("Could not open ") + image.url);
}

void AppModel::revealReviewImage(const ReviewImage &image)
{
    platform().revealInFileViewer(image.url);
}
