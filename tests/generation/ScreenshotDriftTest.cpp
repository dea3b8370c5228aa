// Drift scores, the threshold, and what validation does with drifted,
// missing and uncheckable screenshots.

#include "ModelFixture.h"
#include "TestSupport.h"
#include "generation/ScreenshotDriftDetector.h"
#include "generation/ThumbnailCache.h"

#include <QDateTime>
#include <QFile>
#include <QPainter>
#include <QTest>

namespace {

QImage filled(QColor color, QSize size = {120, 260})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

// A screen with a bar of `barColor` over the top part of `fraction` of its height.
QImage withBar(QColor background, QColor barColor, double fraction, QSize size = {120, 260})
{
    QImage image = filled(background, size);
    QPainter painter(&image);
    painter.fillRect(QRectF(0, 0, size.width(), size.height() * fraction), barColor);
    return image;
}

QByteArray samplesOf(const QImage &image) { return *ScreenshotDriftDetector::samples(image); }

// Thumbnails whose red, green and blue channels differ by `delta` everywhere.
std::pair<QByteArray, QByteArray> offsetPair(int delta)
{
    QByteArray a(ScreenshotDriftDetector::sampleByteCount, char(0));
    QByteArray b = a;
    for (int p = 0; p < a.size(); p += 4) {
        for (int c = 0; c < 3; ++c)
            b[p + c] = char(delta);
        a[p + 3] = char(255);
    }
    return {a, b};
}

} // namespace

class ScreenshotDriftTest : public QObject
{
    Q_OBJECT

    std::optional<ModelFixture> f;

    QString outputDirectory() const { return f->model->project().outputDirectory + QStringLiteral("/en-US/iPhone"); }

private slots:
    void init()
    {
        f.emplace();
        ScreenDraft home;
        home.name = QStringLiteral("Home");
        ScreenDraft settings;
        settings.name = QStringLiteral("Set tings?");
        arrange(*f->model).project.screens = {home, settings};
    }

    void thumbnailIs32By70Rgba()
    {
        const QByteArray bytes = samplesOf(filled(QColor(10, 20, 30)));
        QCOMPARE(bytes.size(), 8960);
        QCOMPARE(quint8(bytes[0]), quint8(10));
        QCOMPARE(quint8(bytes[1]), quint8(20));
        QCOMPARE(quint8(bytes[2]), quint8(30));
        QCOMPARE(quint8(bytes[3]), quint8(255));
        QVERIFY(!ScreenshotDriftDetector::samples(QImage()));
    }

    void scores_data()
    {
        QTest::addColumn<QImage>("a");
        QTest::addColumn<QImage>("b");
        QTest::addColumn<double>("expected");
        QTest::newRow("identical") << filled(Qt::white) << filled(Qt::white) << 0.0;
        QTest::newRow("black against white") << filled(Qt::black) << filled(Qt::white) << 1.0;
        QTest::newRow("other proportions are stretched")
            << filled(QColor(40, 80, 120), {300, 300}) << filled(QColor(40, 80, 120), {90, 400}) << 0.0;
        QTest::newRow("half the screen covered") << filled(Qt::white) << withBar(Qt::white, Qt::black, 0.5) << 0.5;
    }

    void scores()
    {
        QFETCH(QImage, a);
        QFETCH(QImage, b);
        QFETCH(double, expected);
        QVERIFY(qAbs(ScreenshotDriftDetector::score(samplesOf(a), samplesOf(b)) - expected) < 0.01);
    }

    void thresholdIsInclusive()
    {
        // A uniform offset of d gives the score d / 255: 46 / 255 = 0.1804 fails, 45 / 255 = 0.1765 passes.
        auto [a, b] = offsetPair(45);
        QVERIFY(ScreenshotDriftDetector::score(a, b) <= AppModel::screenshotDriftThreshold);
        std::tie(a, b) = offsetPair(46);
        QVERIFY(ScreenshotDriftDetector::score(a, b) > AppModel::screenshotDriftThreshold);
    }

    void referenceLookUpPrefersTheRecordedFileName()
    {
        arrange(*f->model).project.manualScreens = QList<ManualScreenDraft>{
            {QStringLiteral("A"), 1, QStringLiteral("Home"), QStringLiteral("01-renamed.png")}};
        const QString manual = f->model->project().outputDirectory + QStringLiteral("/manual/");
        QCOMPARE(*f->model->referenceCheckpointURL(1, QStringLiteral("Home")), manual + QStringLiteral("01-renamed.png"));
        QCOMPARE(*f->model->referenceCheckpointURL(2, QStringLiteral("Set tings?")),
                 manual + QStringLiteral("02-Set-tings.png"));
    }

    // On the device the flow was recorded on, every language is held
    // against the references, the first one too. (A device of another size
    // is held against its own first language: GenerationDevicesTest.)
    void driftedScreenshotMovesToReviewAndMissingOneIsReported()
    {
        const QString manual = f->model->project().outputDirectory + QStringLiteral("/manual/");
        writeImage(manual + QStringLiteral("01-Home.png"), Qt::white);
        writeImage(outputDirectory() + QStringLiteral("/01-Home.png"), Qt::white);
        // 02 is missing.
        auto issues = f->model->validateGeneratedScreens(outputDirectory(), QStringLiteral("en-US"), QStringLiteral("iPhone"));
        QCOMPARE(issues, (QList<ScreenshotValidationIssue>{{QStringLiteral("02-Set-tings.png"), 1.0}}));

        writeImage(manual + QStringLiteral("02-Set-tings.png"), Qt::black);
        writeImage(outputDirectory() + QStringLiteral("/02-Set-tings.png"), Qt::white);
        const QString review = f->model->project().outputDirectory + QStringLiteral("/_needs-review/en-US/iPhone/");
        writeImage(review + QStringLiteral("02-Set-tings.png"), Qt::red); // an older one is replaced
        issues = f->model->validateGeneratedScreens(outputDirectory(), QStringLiteral("en-US"), QStringLiteral("iPhone"));
        QCOMPARE(issues.size(), 1);
        QCOMPARE(issues.first().filename, QStringLiteral("02-Set-tings.png"));
        QVERIFY(issues.first().driftScore > 0.99);
        QVERIFY(!QFileInfo::exists(outputDirectory() + QStringLiteral("/02-Set-tings.png")));
        QCOMPARE(QImage(review + QStringLiteral("02-Set-tings.png")).pixelColor(0, 0), QColor(Qt::white));
        QVERIFY(QFileInfo::exists(outputDirectory() + QStringLiteral("/01-Home.png")));

        // A second validation finds the moved file missing and does not move anything.
        issues = f->model->validateGeneratedScreens(outputDirectory(), QStringLiteral("en-US"), QStringLiteral("iPhone"));
        QCOMPARE(issues, (QList<ScreenshotValidationIssue>{{QStringLiteral("02-Set-tings.png"), 1.0}}));
    }

    void aRewrittenFileIsSampledAgain()
    {
        // The same path, size and (forced) time would be the same version;
        // a new modification time is a new one.
        const QString path = f->root.filePath(QStringLiteral("shot.png"));
        writeImage(path, Qt::white);
        QCOMPARE(quint8(ThumbnailCache::thumbnail(path).result()->at(0)), quint8(255));
        writeImage(path, Qt::black);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(5), QFileDevice::FileModificationTime));
        file.close();
        QCOMPARE(quint8(ThumbnailCache::thumbnail(path).result()->at(0)), quint8(0));
        QVERIFY(!ThumbnailCache::thumbnail(f->root.filePath(QStringLiteral("missing.png"))).result());
    }

    // Screens without a usable reference are not compared, and the run log
    // says why: no reference, one that is no picture, one outside "manual".
    void uncheckableScreensAreReportedNotCompared()
    {
        // No reference for 01, an unreadable reference for 02.
        writeImage(outputDirectory() + QStringLiteral("/01-Home.png"), Qt::white);
        writeImage(outputDirectory() + QStringLiteral("/02-Set-tings.png"), Qt::white);
        TestSupport::writeFile(f->model->project().outputDirectory + QStringLiteral("/manual/02-Set-tings.png"),
                               "not a png");
        QVERIFY(f->model->validateGeneratedScreens(outputDirectory(), QStringLiteral("en-US"), QStringLiteral("iPhone"))
                    .isEmpty());
        QVERIFY(f->model->runLog().contains(
            QStringLiteral("Not compared: the reference of 02-Set-tings.png is not a readable PNG image.\n")));

        // A reference named outside "manual", or a link that leads out of it, is not read at all.
        const QString elsewhere = f->root.filePath(QStringLiteral("elsewhere.png"));
        writeImage(elsewhere, Qt::black);
        QFile::remove(f->model->project().outputDirectory + QStringLiteral("/manual/02-Set-tings.png"));
        QVERIFY(
            QFile::link(elsewhere, f->model->project().outputDirectory + QStringLiteral("/manual/02-Set-tings.png")));
        arrange(*f->model).project.manualScreens = QList<ManualScreenDraft>{
            {QStringLiteral("A"), 1, QStringLiteral("Home"), QStringLiteral("../../../elsewhere.png")}};
        arrange(*f->model).runLog.clear();
        QVERIFY(f->model->validateGeneratedScreens(outputDirectory(), QStringLiteral("en-US"), QStringLiteral("iPhone"))
                    .isEmpty());
        QCOMPARE(f->model->runLog(),
                 QStringLiteral("Not compared: the reference of 01-Home.png lies outside the folder manual.\n"
                                "Not compared: the reference of 02-Set-tings.png lies outside the folder manual.\n"));
    }
};

VANTREL_TEST(ScreenshotDriftTest);
#include "ScreenshotDriftTest.moc"
