// The review gallery: every PNG under the project's output folder.

#include "model/AppModel.h"

#include <QDirIterator>
#include <algorithm>

void AppModel::refreshReviewImages()
{
    QList<ReviewImage> images;
    const QString root = project.outputDirectory;
    const QString prefix = root + QLatin1Char('/');
    // Hidden files and folders (temporary captures) are skipped.
    QDirIterator it(root, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (it.fileInfo().suffix().toLower() != QLatin1String("png"))
            continue;
        images.append({path, QString(path).replace(prefix, QString())});
    }
    std::stable_sort(images.begin(), images.end(),
                     [](const ReviewImage &a, const ReviewImage &b) { return a.relativePath < b.relativePath; });
    reviewImages = images;
    emit changed();
}
