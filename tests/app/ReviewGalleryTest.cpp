// The review gallery: which files are listed, how they sort, how the cards
// are grouped by language, and which ones need review.

#include "TestSupport.h"

#include "model/AppModel.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

QStringList relativePaths(const QList<ReviewImage> &images)
{
    QStringList paths;
    for (const ReviewImage &image : images)
        paths.append(image.relativePath);
    return paths;
}

} // namespace

class ReviewGalleryTest : public QObject
{
    Q_OBJECT

private slots:
    void listsGroupsAndFlagsTheOutputTree()
    {
        QTemporaryDir dir;
        AppModel model(dir.path(), std::make_unique<ScriptedPlatformServices>());
        model.project.outputDirectory = dir.path() + "/out";
        for (const char *file : {"de-DE/iPhone/01-home.png", "de-DE/10.png", "de-DE/2.png", "en-US/PHOTO.PNG",
                                 "en-US/photo.jpg", "en-US/.partial.png", ".cache/en-US/x.png",
                                 "en-US/.hidden/y.png", "manual/01-home.png", "_needs-review/de-DE/01.png",
                                 "pt-BR/a.png", "PT/a.png"})
            TestSupport::writeFile(model.project.outputDirectory + "/" + file, "png");

        model.refreshReviewImages();
        // Plain comparison: upper case and "_" before lower case, 10 before 2.
        QCOMPARE(relativePaths(model.reviewImages),
                 (QStringList{"PT/a.png", "_needs-review/de-DE/01.png", "de-DE/10.png", "de-DE/2.png",
                              "de-DE/iPhone/01-home.png", "en-US/PHOTO.PNG", "manual/01-home.png", "pt-BR/a.png"}));
        QCOMPARE(model.reviewImages.at(2).url, model.project.outputDirectory + "/de-DE/10.png");

        const QList<GeneratedLanguageGroup> groups = model.groupedImages();
        QStringList languages;
        for (const GeneratedLanguageGroup &group : groups)
            languages.append(group.language);
        QCOMPARE(languages, (QStringList{"PT", "de-DE", "en-US", "pt-BR"}));
        QCOMPARE(relativePaths(groups.at(1).images),
                 (QStringList{"de-DE/10.png", "de-DE/2.png", "de-DE/iPhone/01-home.png"}));
        QCOMPARE(relativePaths(model.needsReviewImages()), QStringList{"_needs-review/de-DE/01.png"});
    }
};

VANTREL_TEST(ReviewGalleryTest);
#include "ReviewGalleryTest.moc"
