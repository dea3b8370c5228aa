// The review gallery: every PNG under the project's output folder, the
// cards per language and the images held back for review.

#include "generation/ScreenshotFileName.h"
#include "model/AppModel.h"
#include "model/PathSanitizer.h"
#include "simulator/CodePointOrder.h"

#include <QDirIterator>
#include <QFileInfo>
#include <map>
#include <algorithm>

namespace {

const QString needsReviewPrefix = QStringLiteral("_needs-review/");
const QString manualPrefix = QStringLiteral("manual/");

} // namespace

QString AppModel::noReferenceNote()
{
    return QStringLiteral("no reference for this device");
}

// The first language's screenshots on a device of another size than the
// recorded references are kept without a check; the gallery says so, since
// they are the pictures every later language of that device is held against.
void AppModel::noteUncheckedImages(QList<ReviewImage> &images) const
{
    if (m_project.languages.isEmpty())
        return;
    const QString firstLanguage = PathSanitizer::component(m_project.languages.first()) + QLatin1Char('/');
    for (ReviewImage &image : images) {
        if (!image.relativePath.startsWith(firstLanguage))
            continue;
        const QString fileName = QFileInfo(image.relativePath).fileName();
        for (qsizetype i = 0; i < m_project.screens.size(); ++i) {
            const QString name = m_project.screens.at(i).name;
            if (screenshotFileName(i + 1, name) != fileName)
                continue;
            const std::optional<QString> reference = referenceCheckpointURL(i + 1, name);
            if (reference && QFileInfo::exists(*reference) && !isReferenceForDevice(*reference, image.url))
                image.note = noReferenceNote();
            break;
        }
    }
}

void AppModel::refreshReviewImages()
{
    QList<ReviewImage> images;
    // An empty path would walk the working directory instead.
    if (!m_project.outputDirectory.isEmpty()) {
        const QString root = QDir::cleanPath(m_project.outputDirectory);
        const QString prefix = root + QLatin1Char('/');
        // Without QDir::Hidden the walk skips hidden files and never enters
        // hidden folders (temporary captures live there).
        QDirIterator it(root, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            if (it.fileInfo().suffix().toLower() != QLatin1String("png"))
                continue;
            images.append({path, QString(path).replace(prefix, QString()), QString()});
        }
    }
    // Plain code-point comparison, like every other list: de-DE/10.png sorts
    // before de-DE/2.png.
    std::stable_sort(images.begin(), images.end(), [](const ReviewImage &a, const ReviewImage &b) {
        return CodePointOrder::less(a.relativePath, b.relativePath);
    });
    noteUncheckedImages(images);
    m_reviewImages = images;
    notifyChanged();
}

QList<ReviewImage> AppModel::needsReviewImages() const
{
    QList<ReviewImage> result;
    for (const ReviewImage &image : m_reviewImages)
        if (image.relativePath.startsWith(needsReviewPrefix))
            result.append(image);
    return result;
}

QList<GeneratedLanguageGroup> AppModel::groupedImages() const
{
    // Keys in code-point order, which is the card order.
    std::map<QString, QList<ReviewImage>, CodePointOrder::Less> byLanguage;
    for (const ReviewImage &image : m_reviewImages) {
        if (image.relativePath.startsWith(manualPrefix) || image.relativePath.startsWith(needsReviewPrefix))
            continue;
        const QStringList parts = image.relativePath.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        if (!parts.isEmpty())
            byLanguage[parts.first()].append(image);
    }
    QList<GeneratedLanguageGroup> groups;
    for (const auto &[language, images] : byLanguage)
        groups.append({language, images});
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
