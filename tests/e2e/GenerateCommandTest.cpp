// `vantrel generate` end to end: a flow recorded with `vantrel record` is
// replayed on the device stand-in for three languages, with the ways a run
// can end: complete, drift, a device or tool fault, cancel.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTest>
#include <csignal>

using namespace E2E;

namespace {

const QStringList languages{QStringLiteral("en-US"), QStringLiteral("de-DE"), QStringLiteral("fr-FR")};

} // namespace

class GenerateCommandTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DeviceWorld> m_world;
    QString m_output;

    QString outputOf(const QString &language) const { return m_output + "/" + language + "/" + iPhoneFolder; }

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real simulator tools would answer instead of the device stand-in");
        m_world = std::make_unique<DeviceWorld>();
        const QString failed = m_world->recordTabFlow({"de-DE", "fr-FR"});
        QVERIFY2(failed.isEmpty(), qPrintable(failed));
        m_output = m_world->savedProject().value("outputDirectory").toString();
        QCOMPARE(pngsUnder(m_output + "/manual"), tabScreenshots);
    }

    // Each case starts from a clean output tree and a stand-in without faults.
    void init()
    {
        for (const QString &language : languages)
            QDir(m_output + "/" + language).removeRecursively();
        QDir(m_output + "/_needs-review").removeRecursively();
        QCOMPARE(m_world->devicesim({"fault", "clear"}).status, 0);
    }

    void generatesEveryCheckpointInEveryLanguage()
    {
        const Run run = m_world->vantrel({"generate"});
        QVERIFY2(run.status == 0, qPrintable(run.err));
        QStringList expected;
        for (const QString &language : languages)
            for (const QString &file : tabScreenshots)
                expected.append(language + "/" + iPhoneFolder + "/" + file);
        expected.sort();
        QStringList made = pngsUnder(m_output);
        made.removeIf([](const QString &path) { return path.startsWith("manual/"); });
        QCOMPARE(made, expected);

        QVERIFY(withoutProgress(run.out).contains("Running iPhone 15 Pro / de-DE\nReplaying 4 checkpoints for de-DE\n"));
        QVERIFY(run.out.contains("Progress: iPhone 15 Pro / fr-FR 4/4 done (12/12)\n"));
        QVERIFY(run.out.contains("Recorded flow generation complete.\n"));
        QVERIFY(run.out.endsWith("\nGeneration complete\nGenerated 12 of 12 screenshots.\n"));
    }

    void unexpectedDialogStopsTheRunForReview()
    {
        QCOMPARE(m_world->devicesim({"fault", "set", "dialog", "de-DE", "explore"}).status, 0);
        const Run run = m_world->vantrel({"generate"});
        QCOMPARE(run.status, 1);
        QCOMPARE(pngsUnder(m_output + "/_needs-review"), QStringList{"de-DE/" + iPhoneFolder + "/02-explore.png"});
        QVERIFY(!QFileInfo::exists(outputOf("de-DE") + "/02-explore.png"));
        QCOMPARE(pngsUnder(outputOf("en-US")), tabScreenshots); // the language before it stays done
        QVERIFY(run.out.contains("Progress: iPhone 15 Pro / en-US 4/4 done"));
        QVERIFY(!QFileInfo::exists(outputOf("fr-FR")));

        static const QRegularExpression driftLine("\n02-explore\\.png drift (0\\.\\d\\d)\n");
        const QRegularExpressionMatch match = driftLine.match(run.out);
        QVERIFY2(match.hasMatch(), qPrintable(run.out));
        QVERIFY(match.captured(1).toDouble() > 0.18);
        QVERIFY(run.out.contains("Stopped: suspicious screenshots moved to _needs-review: 02-explore.png\n"));
        const QString diagnostics = m_world->root() + "/.quillmark/diagnostics.txt";
        QCOMPARE(run.err, QString("\nGeneration failed\nGenerated screenshots drifted from the recorded flow. Check "
                                  "output/_needs-review and re-record from the last good checkpoint.\n\n"
                                  "Drift detected\nPossible paywall, modal, slow transition, or wrong screen.\n"
                                  "Diagnostics of this run: " + diagnostics + "\n"));
        const QString report = QString::fromUtf8(TestSupport::readFile(diagnostics));
        QVERIFY2(report.contains("\nStopped: suspicious screenshots moved to _needs-review: 02-explore.png\n"),
                 qPrintable(report));
    }

    // A fault of the device or the tools ends the run with what went wrong
    // and what to do; languages done before it stay done.
    void faultEndsTheRun_data()
    {
        QTest::addColumn<QStringList>("fault");
        QTest::addColumn<QString>("errors"); // how the error output starts
        QTest::addColumn<QStringList>("languagesDone");
        QTest::addColumn<bool>("ran"); // else refused before any device ran
        const QString diagnostics = "Diagnostics of this run: " + m_world->root() + "/.quillmark/diagnostics.txt\n";
        QTest::newRow("launch fails for one locale")
            << QStringList{"launch-fails", "fr-FR"}
            << demoAppName + " is installed on iPhone 15 Pro, but Simulator could not launch it for French (France).\n"
                             "Open the app manually once in Simulator. If it closes immediately, the app is "
                             "crashing for that locale. Raw launch error: "
            << QStringList{"en-US", "de-DE"} << true;
        QTest::newRow("app missing")
            << QStringList{"app-missing", iPhoneUdid}
            << demoAppName + " is not installed on iPhone 15 Pro.\nInstall or open the app on that Simulator first, "
                             "then click Project > Attach Simulator and Detect. Recorded checkpoints are still "
                             "saved.\n" + diagnostics
            << QStringList() << false;
        // A flow with taps needs the runner; one of waits only does not ask
        // (flowOfWaitsDoesNotAskForTheBuildTool).
        QTest::newRow("no build tool")
            << QStringList{"no-xcode"}
            << "Recorded taps, swipes, and typing require Xcode's XCUITest runner: Command failed: xcrun --find "
               "xcodebuild"
            << QStringList() << false;
        QTest::newRow("open fails")
            << QStringList{"open-fails"}
            << "Command failed: open -a Simulator --args -CurrentDeviceUDID " + iPhoneUdid
                   + "\nUnable to find application named 'Simulator'\n"
            << QStringList() << false;
        // A test run that passes without its screenshots is no success.
        QTest::newRow("no screenshots")
            << QStringList{"no-screenshots"}
            << "xcodebuild finished for en-US on iPhone 15 Pro without writing 4 of 4 screenshots: 01-trips.png, "
               "02-explore.png, 03-saved.png, 04-settings.png\n"
            << QStringList() << true;
    }

    void faultEndsTheRun()
    {
        QFETCH(QStringList, fault);
        QFETCH(QString, errors);
        QFETCH(QStringList, languagesDone);
        QFETCH(bool, ran);
        QCOMPARE(m_world->devicesim(QStringList{"fault", "set"} + fault).status, 0);
        const Run run = m_world->vantrel({"generate"});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith("\nGeneration failed\n" + errors), qPrintable(run.err));
        QVERIFY(!run.err.contains("Drift detected"));
        QCOMPARE(run.out.contains("Running "), ran);
        for (const QString &language : languages)
            QCOMPARE(pngsUnder(outputOf(language)), languagesDone.contains(language) ? tabScreenshots : QStringList());
    }

    void interruptEndsTheBuildAndCancels()
    {
        QCOMPARE(m_world->devicesim({"fault", "set", "slow-build", "60"}).status, 0);
        QProcess process;
        m_world->startVantrel(process, {"generate"});
        QString out = readUntil(process, "Replaying 4 checkpoints");
        QTest::qWait(500); // the build is under way
        QCOMPARE(m_world->runningBuilds().size(), 1);

        QElapsedTimer stopping;
        stopping.start();
        ::kill(pid_t(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(10000));
        QVERIFY2(stopping.elapsed() < 2500, qPrintable(QString::number(stopping.elapsed())));
        out += QString::fromUtf8(process.readAllStandardOutput());
        QCOMPARE(process.exitCode(), 130);
        QVERIFY2(withoutProgress(out).contains("Cancel requested.\nGeneration cancelled.\n"), qPrintable(out));
        QVERIFY(out.endsWith("\nGeneration cancelled\n0 of 12 screenshots completed.\n"));
        QVERIFY(m_world->runningBuilds().isEmpty());
        // The device has its own status bar back: no override is left.
        QVERIFY(m_world->xcrun({"simctl", "status_bar", iPhoneUdid, "list"}).out.endsWith("=\n"));
    }

    void flowOfWaitsDoesNotAskForTheBuildTool()
    {
        // One checkpoint reached by waiting only: the run starts without the
        // tool check and meets the missing tool only in the replay itself.
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        const Run recorded = world.record("wait 0.7\ncheckpoint trips\nstop\n");
        QVERIFY2(recorded.status == 0, qPrintable(recorded.err));
        QCOMPARE(screenActions(world.savedProject(), true), QStringList{"wait 0.7"});

        QCOMPARE(world.devicesim({"fault", "set", "no-xcode"}).status, 0);
        const Run run = world.vantrel({"generate"});
        QCOMPARE(run.status, 1);
        QVERIFY(withoutProgress(run.out).contains("Running iPhone 15 Pro / en-US\nReplaying 1 checkpoints for en-US\n"));
        QVERIFY2(run.err.startsWith("\nGeneration failed\nCommand failed: xcrun --find xcodebuild"), qPrintable(run.err));

        QCOMPARE(world.devicesim({"fault", "clear"}).status, 0);
        const Run again = world.vantrel({"generate"});
        QVERIFY2(again.status == 0, qPrintable(again.err));
        QVERIFY(again.out.endsWith("\nGeneration complete\nGenerated 1 of 1 screenshots.\n"));
    }

    void configWritesTheGeneratorFile()
    {
        const Run run = m_world->vantrel({"config"});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.out, m_world->root() + "/.quillmark/generated-config.yaml\n");
        QCOMPARE(run.err, QString("note: Choose a valid .app bundle for full generation. Attached simulator sessions "
                                  "can use Recorder > Capture Current.\n"));
        const QString yaml = QString::fromUtf8(TestSupport::readFile(m_world->root() + "/.quillmark/generated-config.yaml"));
        QVERIFY(yaml.contains("languages:\n  - \"en-US\"\n  - \"de-DE\"\n  - \"fr-FR\"\n"));
        QVERIFY(yaml.contains("  - name: \"explore\"\n"));
        QVERIFY(yaml.contains("    operations:\n      - tap:\n          x: 147\n          y: 790\n"));
    }
};

VANTREL_TEST(GenerateCommandTest);
#include "GenerateCommandTest.moc"
