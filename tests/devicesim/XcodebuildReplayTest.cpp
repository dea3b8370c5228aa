// xcodebuild test on a hand-written runner project: the steps run against
// the demo app, screenshots land where the generated test puts them and are
// reported in the progress file; faults fail the run as the real tool does.

#include "StandInWorld.h"
#include "TestSupport.h"

#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
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

QStringList progressLines(const QString &file)
{
    return QString::fromUtf8(TestSupport::readFile(file)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class XcodebuildReplayTest : public QObject
{
    Q_OBJECT

private:
    // Replays the tour in `language` into `output`; returns the progress lines.
    QStringList replay(const StandInWorld &world, const QString &language, const QString &output)
    {
        world.launchDemo(language);
        const QString root = world.writeRunnerProject(tour());
        const QString progress = world.path(language + QStringLiteral("-progress.log"));
        const auto r = world.run(QStringLiteral("xcodebuild"), world.xcodebuildArguments(root),
                                 {{"QUILLMARK_OUTPUT_DIR", output}, {"QUILLMARK_PROGRESS_FILE", progress}});
        if (r.exitCode != 0)
            qWarning("%s%s", qPrintable(r.out), qPrintable(r.err));
        return progressLines(progress);
    }

private slots:
    void replaysTheFlowInEveryLanguage()
    {
        StandInWorld world;
        const QString english = world.path(QStringLiteral("out/en-US"));
        const QString german = world.path(QStringLiteral("out/de-DE"));
        const QStringList expected = {"01-trips.png", "02-detail.png", "03-search.png"};
        QCOMPARE(replay(world, QStringLiteral("en-US"), english), expected);
        QCOMPARE(replay(world, QStringLiteral("de-DE"), german), expected);
        QList<QImage> en, de;
        for (const QString &name : expected) {
            en.append(QImage(QDir(english).filePath(name)));
            de.append(QImage(QDir(german).filePath(name)));
            QCOMPARE(en.last().size(), QSize(1179, 2556));
            QVERIFY2(StandInWorld::driftScore(en.last(), de.last()) < 0.06, qPrintable(name));
        }
        for (int a = 0; a < en.size(); ++a)
            for (int b = a + 1; b < en.size(); ++b)
                QVERIFY2(StandInWorld::driftScore(en[a], en[b]) > 0.18, qPrintable(expected[a] + " " + expected[b]));
        QVERIFY(world.run("devicesim", {"state"}).out.contains(QStringLiteral("\"searchText\": \"Lis\"")));
    }

    void writesScreenshotsWhereTheTestWould_data()
    {
        QTest::addColumn<QString>("outputPath");
        QTest::addColumn<QString>("environmentDirectory");
        QTest::addColumn<QString>("markerDirectory");
        QTest::addColumn<QString>("expected"); // relative to the world's folder
        QTest::newRow("absolute path wins") << "@/abs/01-a.png" << "env" << "marker" << "abs/01-a.png";
        QTest::newRow("output directory variable") << "01-a.png" << "env" << "marker" << "env/01-a.png";
        QTest::newRow("marker file") << "01-a.png" << "" << "marker" << "marker/01-a.png";
        QTest::newRow("working directory") << "sub/01-a.png" << "" << "" << "workspace/XCUITestReplayRunner/sub/01-a.png";
    }

    void writesScreenshotsWhereTheTestWould()
    {
        QFETCH(QString, outputPath);
        QFETCH(QString, environmentDirectory);
        QFETCH(QString, markerDirectory);
        QFETCH(QString, expected);
        StandInWorld world;
        outputPath.replace(QLatin1Char('@'), world.path(QString()));
        const QString root = world.writeRunnerProject({{"screenshot", 0, 0, 0, 0, 0.45, {}, outputPath}});
        if (!markerDirectory.isEmpty())
            TestSupport::writeFile(root + "/current-output-directory.txt", world.path(markerDirectory).toUtf8() + "\n");
        QHash<QString, QString> environment;
        if (!environmentDirectory.isEmpty())
            environment.insert("QUILLMARK_OUTPUT_DIR", world.path(environmentDirectory));
        const auto r = world.run(QStringLiteral("xcodebuild"), world.xcodebuildArguments(root), environment, root);
        QVERIFY2(r.exitCode == 0, qPrintable(r.out + r.err));
        QVERIFY(QFile::exists(world.path(expected)));
    }

    void typedTextArrivesUnescaped()
    {
        StandInWorld world;
        world.launchDemo(QStringLiteral("fr-FR"));
        const QString typed = QStringLiteral("Qu\"é\\b\t😀");
        const QString root = world.writeRunnerProject({{"tap", 147, 793, 0, 0, 0.45, {}, {}},
                                                       {"tap", 196, 178, 0, 0, 0.45, {}, {}},
                                                       {"type", 0, 0, 0, 0, 0.45, typed, {}}});
        const QByteArray source = TestSupport::readFile(root + "/AutomationUITests/AutomationUITests.swift");
        QVERIFY(source.contains("text: \"Qu\\\"é\\\\b\\t😀\""));
        QCOMPARE(world.run(QStringLiteral("xcodebuild"), world.xcodebuildArguments(root)).exitCode, 0);
        const QJsonObject session = QJsonDocument::fromJson(world.run("devicesim", {"state"}).out.toUtf8())
                                        .object()["devices"][0]["running"][0].toObject();
        QCOMPARE(session["searchText"].toString(), typed);
    }

    void unexpectedDialogDriftsOneScreenInOneLanguage()
    {
        StandInWorld world;
        QCOMPARE(world.run("devicesim", {"fault", "set", "dialog", "de-DE", "detail"}).exitCode, 0);
        replay(world, QStringLiteral("en-US"), world.path(QStringLiteral("en")));
        replay(world, QStringLiteral("de-DE"), world.path(QStringLiteral("de")));
        const auto score = [&](const QString &name) {
            return StandInWorld::driftScore(QImage(world.path("en/" + name)), QImage(world.path("de/" + name)));
        };
        QVERIFY(score("02-detail.png") > 0.3);
        QVERIFY(score("01-trips.png") < 0.06);
        QVERIFY(score("03-search.png") < 0.06);
    }

    void failsAsTheRealTool_data()
    {
        QTest::addColumn<QStringList>("fault");
        QTest::addColumn<QList<StandInStep>>("steps");
        QTest::addColumn<QString>("destination");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        const QList<StandInStep> one = {{"screenshot", 0, 0, 0, 0, 0.45, {}, "01-a.png"}};
        QTest::newRow("build fails") << QStringList{"build-fails"} << one << StandInWorld::iPhone << 65 << "** TEST FAILED **";
        QTest::newRow("backspace does not compile")
            << QStringList() << QList<StandInStep>{{"type", 0, 0, 0, 0, 0.45, "a\bb", {}}} << StandInWorld::iPhone << 65
            << "invalid escape sequence in literal";
        QTest::newRow("typing with nothing focused")
            << QStringList() << QList<StandInStep>{{"type", 0, 0, 0, 0, 0.45, "hello", {}}} << StandInWorld::iPhone << 65
            << "keyboard focus";
        QTest::newRow("app not running") << QStringList{"app-missing", StandInWorld::iPhone} << one << StandInWorld::iPhone
                                         << 65 << "Target app did not become foreground";
        QTest::newRow("unknown destination") << QStringList() << one << QStringLiteral("NOPE") << 70
                                             << "Unable to find a destination matching";
        QTest::newRow("watch destination") << QStringList() << one << StandInWorld::watch << 70
                                           << "Unable to find a destination matching";
    }

    void failsAsTheRealTool()
    {
        QFETCH(QStringList, fault);
        QFETCH(QList<StandInStep>, steps);
        QFETCH(QString, destination);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        StandInWorld world;
        if (!fault.isEmpty())
            world.run("devicesim", QStringList{"fault", "set"} + fault);
        const QString root = world.writeRunnerProject(steps);
        const auto r = world.run(QStringLiteral("xcodebuild"), world.xcodebuildArguments(root, destination));
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2((r.out + r.err).contains(message), qPrintable(r.out + r.err));
    }

    void refusesAnIncompleteProject()
    {
        StandInWorld world;
        const QString root = world.writeRunnerProject({{"screenshot", 0, 0, 0, 0, 0.45, {}, "01-a.png"}});
        QFile::remove(root + "/AutomationHost/AutomationHostApp.swift");
        const auto missingSource = world.run(QStringLiteral("xcodebuild"), world.xcodebuildArguments(root));
        QCOMPARE(missingSource.exitCode, 65);
        QVERIFY(missingSource.out.contains(QStringLiteral("Build input file cannot be found")));
        QFile::remove(root + "/AutomationRunner.xcodeproj/project.pbxproj");
        QCOMPARE(world.run(QStringLiteral("xcodebuild"), world.xcodebuildArguments(root)).exitCode, 74);
    }

    void endsPromptlyWhenTerminated()
    {
        StandInWorld world;
        world.run("devicesim", {"fault", "set", "slow-build", "30"});
        const QString root = world.writeRunnerProject({{"screenshot", 0, 0, 0, 0, 0.45, {}, "01-a.png"}});
        QProcess build;
        world.start(build, QStringLiteral("xcodebuild"), world.xcodebuildArguments(root));
        QVERIFY(build.waitForStarted());
        QTest::qWait(400);
        QElapsedTimer clock;
        clock.start();
        build.terminate();
        QVERIFY(build.waitForFinished(5000));
        QVERIFY(clock.elapsed() < 2000);
        QVERIFY(build.exitStatus() == QProcess::CrashExit || build.exitCode() != 0);
        QVERIFY(build.readAllStandardOutput().contains("** TEST INTERRUPTED **"));
    }
};

VANTREL_TEST(XcodebuildReplayTest);
#include "XcodebuildReplayTest.moc"
