// xcodebuild test on a hand-written runner project: the steps run against
// the demo app, screenshots land where the generated test puts them and are
// reported in the progress file.

#include "StandInWorld.h"
#include "TestSupport.h"

#include <QDir>
#include <QImage>
#include <QTest>

namespace {

// Trips list, a trip's detail, then Explore with a search typed in.
QList<StandInStep> tour()
{
    return {{"screenshot", 0, 0, 0, 0, 0.45, {}, "01-trips.png"},
            {"tap", 196, 300, 0, 0, 0.45, {}, {}},
            {"screenshot", 0, 0, 0, 0, 0.45, {}, "02-detail.png"},
            {"swipe", 5, 400, 300, 410, 0.3, {}, {}},
            {"tap", 147, 793, 0, 0, 0.45, {}, {}},
            {"tap", 196, 178, 0, 0, 0.45, {}, {}},
            {"type", 0, 0, 0, 0, 0.45, "Lis\n", {}},
            {"wait", 0, 0, 0, 0, 0.3, {}, {}},
            {"screenshot", 0, 0, 0, 0, 0.45, {}, "03-search.png"}};
}

} // namespace

class XcodebuildReplayTest : public QObject
{
    Q_OBJECT

private slots:
    void replayWritesScreenshotsAndProgress()
    {
        StandInWorld world;
        world.launchDemo(QStringLiteral("de-DE"));
        const QString root = world.writeRunnerProject(tour());
        const QString output = world.path(QStringLiteral("out"));
        const QString progress = world.path(QStringLiteral("progress.log"));
        const auto r = world.run(QStringLiteral("xcodebuild"), world.xcodebuildArguments(root),
                                 {{"QUILLMARK_OUTPUT_DIR", output}, {"QUILLMARK_PROGRESS_FILE", progress}});
        QVERIFY2(r.exitCode == 0, qPrintable(r.out + r.err));
        const QStringList expected = {"01-trips.png", "02-detail.png", "03-search.png"};
        QCOMPARE(QString::fromUtf8(TestSupport::readFile(progress)).split(QLatin1Char('\n'), Qt::SkipEmptyParts), expected);
        for (const QString &name : expected)
            QCOMPARE(QImage(QDir(output).filePath(name)).size(), QSize(1179, 2556));
        QVERIFY(world.run("devicesim", {"state"}).out.contains(QStringLiteral("\"searchText\": \"Lis\"")));
    }
};

VANTREL_TEST(XcodebuildReplayTest);
#include "XcodebuildReplayTest.moc"
