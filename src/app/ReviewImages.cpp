// The review gallery: every PNG under the project's output folder, the
// cards per language and the images held back for review.

#include "model/AppModel.h"

#include <QDirIterator>
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
    emit changed();
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
