// vantrel review: the generated screenshots by language, and those held back for review.

#include "Command.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

QJsonArray imagesJson(const QList<ReviewImage> &images)
{
    QJsonArray array;
    for (const ReviewImage &image : images)
    {
        QJsonObject item{{QStringLiteral("relativePath"), image.relativePath}, {QStringLiteral("file"), image.url}};
        if (!image.note.isEmpty())
            item.insert(QStringLiteral("note"), image.note);
        array.append(item);
    }
    return array;
}

void printImages(CommandContext &c, const QString &heading, const QList<ReviewImage> &images)
{
    c.out << heading << " (" << images.size() << ")\n";
    for (const ReviewImage &image : images)
        c.out << "  " << image.relativePath << (image.note.isEmpty() ? QString() : "  (" + image.note + ")") << "\n";
}

int runReview(CommandContext &c)
{
    const bool json = c.takeFlag(QStringLiteral("--json"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("review takes no arguments besides --json."));
    c.model.refreshReviewImages();
    const QList<GeneratedLanguageGroup> groups = c.model.groupedImages();
    const QList<ReviewImage> needsReview = c.model.needsReviewImages();
    if (json) {
        QJsonArray languages;
        for (const GeneratedLanguageGroup &group : groups)
            languages.append(QJsonObject{{QStringLiteral("language"), group.language},
                                         {QStringLiteral("images"), imagesJson(group.images)}});
        c.printJson(QJsonObject{{QStringLiteral("outputDirectory"), c.model.project.outputDirectory},
                                {QStringLiteral("languages"), languages},
                                {QStringLiteral("needsReview"), imagesJson(needsReview)}});
        return 0;
    }
    c.out << "Output: " << c.model.project.outputDirectory << "\n";
    if (groups.isEmpty() && needsReview.isEmpty()) {
        c.out << "No generated screenshots yet.\n";
        return 0;
    }
    for (const GeneratedLanguageGroup &group : groups)
        printImages(c, group.language, group.images);
    if (!needsReview.isEmpty())
        printImages(c, QStringLiteral("Needs review"), needsReview);
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("review"), QStringLiteral("review [--json]"),
                 QStringLiteral("Lists the generated screenshots in the output folder, grouped by language,\n"
                                "and the ones that drifted from their checkpoint and need review\n"
                                "(in \"_needs-review\"). Checkpoint references in \"manual\" are not listed."),
                 runReview, false});
