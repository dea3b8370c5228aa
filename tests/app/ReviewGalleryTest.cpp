// The review gallery: which files are listed, how they sort, how the cards
// are grouped by language, and which ones need review.

#include "ModelFixture.h"
#include "TestSupport.h"

#include "simulator/SimctlDeviceList.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>

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
        arrange(model).project.outputDirectory = dir.path() + "/out";
        for (const char *file : {"de-DE/iPhone/01-home.png", "de-DE/10.png", "de-DE/2.png", "en-US/PHOTO.PNG",
                                 "en-US/photo.jpg", "en-US/.partial.png", ".cache/en-US/x.png",
                                 "en-US/.hidden/y.png", "manual/01-home.png", "_needs-review/de-DE/01.png",
                                 "pt-BR/a.png", "PT/a.png"})
            TestSupport::writeFile(model.project().outputDirectory + "/" + file, "png");

        model.refreshReviewImages();
        // Plain comparison: upper case and "_" before lower case, 10 before 2.
        QCOMPARE(relativePaths(model.reviewImages()),
                 (QStringList{"PT/a.png", "_needs-review/de-DE/01.png", "de-DE/10.png", "de-DE/2.png",
                              "de-DE/iPhone/01-home.png", "en-US/PHOTO.PNG", "manual/01-home.png", "pt-BR/a.png"}));
        QCOMPARE(model.reviewImages().at(2).url, model.project().outputDirectory + "/de-DE/10.png");

        const QList<GeneratedLanguageGroup> groups = model.groupedImages();
        QStringList languages;
        for (const GeneratedLanguageGroup &group : groups)
            languages.append(group.language);
        QCOMPARE(languages, (QStringList{"PT", "de-DE", "en-US", "pt-BR"}));
        QCOMPARE(relativePaths(groups.at(1).images),
                 (QStringList{"de-DE/10.png", "de-DE/2.png", "de-DE/iPhone/01-home.png"}));
        QCOMPARE(relativePaths(model.needsReviewImages()), QStringList{"_needs-review/de-DE/01.png"});
    }

    // One comparison for every list: a folder named with an emoji (U+1F600)
    // and one with a full-width letter (U+FF21) sort as the device list sorts
    // devices of those names, by code point and not by UTF-16 unit.
    void foldersSortByCodePointLikeTheDeviceList()
    {
        const QString emoji = QString::fromUtf8("\xF0\x9F\x98\x80");
        const QString wide = QString(QChar(0xFF21));
        const QByteArray deviceList = QStringLiteral(
            R"({"devices": {"com.apple.CoreSimulator.SimRuntime.iOS-17-5": [)"
            R"({"name": "%1", "udid": "E", "state": "Booted"}, {"name": "%2", "udid": "W", "state": "Booted"}]}})")
                                          .arg(emoji, wide).toUtf8();
        QStringList deviceNames;
        for (const SimulatorDevice &device : SimctlDeviceList::decode(deviceList).iOSDevices())
            deviceNames.append(device.name);
        QCOMPARE(deviceNames, (QStringList{wide, emoji}));

        QTemporaryDir dir;
        AppModel model(dir.path(), std::make_unique<ScriptedPlatformServices>());
        arrange(model).project.outputDirectory = dir.path() + "/out";
        for (const QString &folder : {emoji, wide})
            TestSupport::writeFile(model.project().outputDirectory + "/" + folder + "/01.png", "png");
        model.refreshReviewImages();
        QCOMPARE(relativePaths(model.reviewImages()), (QStringList{wide + "/01.png", emoji + "/01.png"}));
        QStringList languages;
        for (const GeneratedLanguageGroup &group : model.groupedImages())
            languages.append(group.language);
        QCOMPARE(languages, deviceNames);
    }
};

VANTREL_TEST(ReviewGalleryTest);
#include "ReviewGalleryTest.moc"
