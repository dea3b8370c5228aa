// vantrel review: the generated screenshots by language, those held back for
// review, the screenshots that look unlocalized; the contact sheet page; the
// dismissal of a localization warning.

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

QJsonArray warningsJson(const QList<LocalizationWarning> &warnings)
{
    QJsonArray array;
    for (const LocalizationWarning &warning : warnings)
        array.append(QJsonObject{{QStringLiteral("language"), warning.language},
                                 {QStringLiteral("firstLanguage"), warning.firstLanguage},
                                 {QStringLiteral("device"), warning.deviceName},
                                 {QStringLiteral("file"), warning.file},
                                 {QStringLiteral("dismissed"), warning.dismissed},
                                 {QStringLiteral("message"), warning.text()}});
    return array;
}

void printImages(CommandContext &c, const QString &heading, const QList<ReviewImage> &images)
{
    c.out << heading << " (" << images.size() << ")\n";
    for (const ReviewImage &image : images)
        c.out << "  " << image.relativePath << (image.note.isEmpty() ? QString() : "  (" + image.note + ")") << "\n";
}

void printWarnings(CommandContext &c, const QList<LocalizationWarning> &warnings)
{
    if (warnings.isEmpty())
        return;
    const auto active = std::count_if(warnings.begin(), warnings.end(),
                                      [](const LocalizationWarning &warning) { return !warning.dismissed; });
    c.out << "Localization warnings (" << active << ")\n";
    for (const LocalizationWarning &warning : warnings)
        c.out << "  " << warning.text() << (warning.dismissed ? QStringLiteral("  (dismissed)") : QString()) << "\n";
}

int writeContactSheet(CommandContext &c)
{
    const std::optional<QString> path = c.model.writeContactSheet();
    c.flushLog();
    if (!path)
        return 1;
    c.out << *path << "\n";
    return 0;
}

int dismissWarning(CommandContext &c)
{
    if (c.arguments.size() != 3)
        return c.usageError(QStringLiteral("review dismiss takes a language and a checkpoint file, "
                                           "such as: review dismiss ja-JP 01-trips.png"));
    const QString language = c.arguments.at(1);
    const QString file = c.arguments.at(2);
    const QList<LocalizationWarning> warnings = c.model.localizationWarnings();
    const bool known = std::any_of(warnings.begin(), warnings.end(),
                                   [&](const LocalizationWarning &w) { return w.language == language && w.file == file; });
    if (!known) {
        c.err << "No localization warning for " << language << " " << file << ".\n";
        return 1;
    }
    if (!c.model.dismissLocalizationWarning(file, language))
        return 1;
    c.out << "Dismissed the localization warning for " << language << " " << file << ".\n";
    return 0;
}

int runReview(CommandContext &c)
{
    if (!c.arguments.isEmpty() && c.arguments.first() == QLatin1String("dismiss"))
        return dismissWarning(c);
    const bool json = c.takeFlag(QStringLiteral("--json"));
    const bool html = c.takeFlag(QStringLiteral("--html"));
    if (!c.arguments.isEmpty())
        return c.usageError(QStringLiteral("review takes no arguments besides --json or --html."));
    c.model.refreshReviewImages();
    if (html)
        return writeContactSheet(c);
    const QList<GeneratedLanguageGroup> groups = c.model.groupedImages();
    const QList<ReviewImage> needsReview = c.model.needsReviewImages();
    const QList<LocalizationWarning> warnings = c.model.localizationWarnings();
    if (json) {
        QJsonArray languages;
        for (const GeneratedLanguageGroup &group : groups)
            languages.append(QJsonObject{{QStringLiteral("language"), group.language},
                                         {QStringLiteral("images"), imagesJson(group.images)}});
        c.printJson(QJsonObject{{QStringLiteral("outputDirectory"), c.model.project().outputDirectory},
                                {QStringLiteral("languages"), languages},
                                {QStringLiteral("needsReview"), imagesJson(needsReview)},
                                {QStringLiteral("localizationWarnings"), warningsJson(warnings)}});
        return 0;
    }
    c.out << "Output: " << c.model.project().outputDirectory << "\n";
    if (groups.isEmpty() && needsReview.isEmpty()) {
        c.out << "No generated screenshots yet.\n";
        return 0;
    }
    for (const GeneratedLanguageGroup &group : groups)
        printImages(c, group.language, group.images);
    if (!needsReview.isEmpty())
        printImages(c, QStringLiteral("Needs review"), needsReview);
    printWarnings(c, warnings);
    return 0;
}

} // namespace

VANTREL_COMMAND({QStringLiteral("review"),
                 QStringLiteral("review [--json] | review --html | review dismiss LANGUAGE FILE"),
                 QStringLiteral("Lists the generated screenshots in the output folder, grouped by language,\n"
                                "the ones that drifted from their checkpoint and need review (in\n"
                                "\"_needs-review\"), and the ones that look the same as the first language\n"
                                "(localization warnings). Checkpoint references in \"manual\" are not listed.\n"
                                "--html writes the contact sheet \"index.html\" into the output folder and\n"
                                "prints its path. dismiss hides a localization warning of one checkpoint\n"
                                "file (01-trips.png) and language for good."),
                 runReview, false});
