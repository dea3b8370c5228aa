// Generation from an .app build end to end: a copy of the demo app's bundle
// as the chosen build, three screens (one plain, one reached by its launch
// state, one by taps and typed text), `vantrel config`, then the
// command-line generator `vantrel run` and `vantrel generate --from-build`,
// with refusals, failures and interrupts.

#include "E2ESupport.h"
#include "TestSupport.h"
#include "generation/ScreenshotDriftDetector.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QProcess>
#include <QTest>
#include <csignal>

using namespace E2E;

namespace {

const QStringList screenshots{QStringLiteral("01-Trips.png"), QStringLiteral("02-Settings.png"),
                              QStringLiteral("03-Search.png")};

QByteArray thumbnail(const QString &path)
{
    return ScreenshotDriftDetector::samples(QImage(path)).value_or(QByteArray());
}

// Reads a started vantrel's output until `text` appears (or a minute passes).
QString readUntil(QProcess &process, const QString &text)
{
    QString out;
    QElapsedTimer waited;
    waited.start();
    while (!out.contains(text) && waited.elapsed() < 60000) {
        process.waitForReadyRead(200);
        out += QString::fromUtf8(process.readAllStandardOutput());
    }
    return out;
}

} // namespace

class BuildGeneratorTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DeviceWorld> m_world;
    QString m_output;
    QString m_config;

    QString outputOf(const QString &language) const { return m_output + "/" + language + "/" + iPhoneFolder; }

private slots:
    void initTestCase()
    {
        // A foreign `open` (xdg-open) only fails to show the Simulator window,
        // which the generator notes and goes on without.
        if (TestSupport::realToolShadowsStandIn({QStringLiteral("xcrun"), QStringLiteral("xcodebuild")}))
            QSKIP("real simulator tools would answer instead of the device stand-in");
        m_world = std::make_unique<DeviceWorld>();
        const Run container = m_world->xcrun({"simctl", "get_app_container", iPhoneUdid, demoBundleId, "app"});
        QCOMPARE(container.status, 0);
        const QString build = m_world->scratch() + "/build/Trips.app";
        QVERIFY(QDir().mkpath(build));
        QCOMPARE(QProcess::execute("cp", {"-R", container.out.trimmed() + "/.", build}), 0);

        QCOMPARE(m_world->vantrel({"attach"}).status, 0);
        QCOMPARE(m_world->vantrel({"set-app", build}).status, 0);
        for (const QString code : {"de", "en", "es", "fr", "pt-BR", "en-US", "de-DE"})
            QCOMPARE(m_world->vantrel({"languages", "toggle", code}).status, 0);
        // A recording starts a new flow, so the screens without one come after it.
        const Run recorded = m_world->record("tap 147 790\ntap 196 178\ntype Kyoto\ncheckpoint Search\nstop\n");
        QVERIFY2(recorded.status == 0, qPrintable(recorded.err));
        QCOMPARE(m_world->vantrel({"screens", "add", "Trips"}).status, 0);
        QCOMPARE(m_world->vantrel({"screens", "add", "Settings", "--state", "settings"}).status, 0);
        QCOMPARE(m_world->vantrel({"checkpoints", "move", "1", "2"}).status, 0);
        const Run screens = m_world->vantrel({"screens"});
        QVERIFY2(screens.out.startsWith(" 1  Trips  (wait 2.0 s (project), 0 recorded operations)\n"
                                        " 2  Settings  (state settings, wait 2.0 s (project), 0 recorded operations)\n"
                                        " 3  Search  ("),
                 qPrintable(screens.out));

        const Run config = m_world->vantrel({"config"});
        QVERIFY2(config.status == 0 && config.err.isEmpty(), qPrintable(config.err));
        m_config = config.out.trimmed();
        m_output = m_world->savedProject().value("outputDirectory").toString();
    }

    void init()
    {
        QDir(m_output + "/en-US").removeRecursively();
        QDir(m_output + "/de-DE").removeRecursively();
        QCOMPARE(m_world->devicesim({"fault", "clear"}).status, 0);
    }

    void runMakesEveryScreenInEveryLanguage()
    {
        const Run run = m_world->vantrel({"run", m_config});
        QVERIFY2(run.status == 0, qPrintable(run.err));
        QStringList expected;
        for (const QString language : {"de-DE", "en-US"})
            for (const QString &file : screenshots)
                expected.append(language + "/" + iPhoneFolder + "/" + file);
        QStringList made = pngsUnder(m_output);
        made.removeIf([](const QString &path) { return path.startsWith("manual/"); });
        QCOMPARE(made, expected);

        // One build and test per language, a line per screenshot, the count last.
        QCOMPARE(run.out.count("Replaying 3 screens for "), 2);
        QVERIFY(run.out.contains("Running iPhone 15 Pro / de-DE\nReplaying 3 screens for de-DE\n"
                                 "Screenshot 4 of 6: de-DE / iPhone 15 Pro / 01-Trips.png\n"));
        QVERIFY(run.out.endsWith("Screenshot 6 of 6: de-DE / iPhone 15 Pro / 03-Search.png\n"
                                 "Generated 6 of 6 screenshots.\n"));

        // Three different screens in each language; the same screen differs
        // between languages only in its words.
        for (const QString language : {"en-US", "de-DE"})
            for (int a = 0; a < 3; ++a)
                for (int b = a + 1; b < 3; ++b)
                    QVERIFY(ScreenshotDriftDetector::score(thumbnail(outputOf(language) + "/" + screenshots[a]),
                                                           thumbnail(outputOf(language) + "/" + screenshots[b]))
                            > 0.05);
        for (const QString &file : screenshots)
            QVERIFY(ScreenshotDriftDetector::score(thumbnail(outputOf("en-US") + "/" + file),
                                                   thumbnail(outputOf("de-DE") + "/" + file))
                    < 0.05);

        // The status bar is left as it was found, the app freshly installed from the copy.
        const QJsonArray devices = m_world->standInState().value("devices").toArray();
        for (const QJsonValue &d : devices)
            if (d.toObject().value("udid").toString() == iPhoneUdid)
                QVERIFY(d.toObject().value("statusBar").toObject().isEmpty());
    }

    void refusedConfigurationsMakeNothing_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("message");
        QTest::newRow("malformed") << "screens:\n" << "screens: [\n" << ":15:3: syntax error: ";
        QTest::newRow("missing .app") << "/build/Trips.app\"" << "/build/Gone.app\"" << ":1:10: there is no .app bundle at ";
        QTest::newRow("unknown device") << iPhoneUdid << "NO-SUCH-UDID" << ":8:5: unknown device NO-SUCH-UDID";
    }

    void refusedConfigurationsMakeNothing()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, message);
        const QString elsewhere = m_world->scratch() + "/refused-output";
        QString text = QString::fromUtf8(TestSupport::readFile(m_config));
        text.replace(from, to);
        text.replace(m_output, elsewhere);
        const QString config = TestSupport::writeFile(m_world->scratch() + "/refused.yaml", text.toUtf8());

        const Run run = m_world->vantrel({"run", config});
        QCOMPARE(run.status, 2);
        QVERIFY2(run.err.startsWith(config + message), qPrintable(run.err));
        QVERIFY(run.err.endsWith("The configuration was refused; nothing was generated.\n"));
        QVERIFY(run.out.isEmpty());
        QVERIFY(!QFileInfo::exists(elsewhere));
    }

    void generateFromBuildFindsTheGeneratorAndReportsCompletion()
    {
        const Run run = m_world->vantrel({"generate", "--from-build"}, {{"VANTREL_CLI", ""}, {"QUILLMARK_CLI", ""}});
        QVERIFY2(run.status == 0, qPrintable(run.err));
        QVERIFY2(run.out.contains("Running " + TestSupport::vantrelBinary() + " run " + m_config + "\n"),
                 qPrintable(run.out));
        QVERIFY(run.out.contains("Progress: iPhone 15 Pro / de-DE 3/3 done (6/6)\n"));
        QVERIFY(run.out.endsWith("\nGeneration complete\nGenerated 6 of 6 screenshots.\n"));
        QCOMPARE(pngsUnder(outputOf("de-DE")), screenshots);
    }

    void generatorThatFailsReportsItsExitCode()
    {
        const Run run = m_world->vantrel({"generate", "--from-build"}, {{"VANTREL_CLI", "/bin/false"}});
        QCOMPARE(run.status, 1);
        QVERIFY(run.out.contains("Running /bin/false run " + m_config + "\nThe command exited with code 1.\n"));
        QVERIFY2(run.err.startsWith("\nGeneration failed\nCapture failed with exit code 1.\n"), qPrintable(run.err));
    }

    void failedReplayNamesTheScreenAndLanguage()
    {
        QCOMPARE(m_world->devicesim({"fault", "set", "launch-fails", "de-DE"}).status, 0);
        const Run run = m_world->vantrel({"run", m_config});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith("Failed while generating screen 1 of 3 (Trips) on iPhone 15 Pro "
                                    "in de-DE:\nCommand failed: xcodebuild test "),
                 qPrintable(run.err));
        QVERIFY(run.err.contains("Failed to launch com.vantrel.demo.Trips"));
        QVERIFY(run.out.endsWith("Generated 3 of 6 screenshots.\n"));
    }

    // Ctrl-C in `generate --from-build` cancels the model's run, which ends
    // the generator, which ends its build: nothing is left running.
    void interruptEndsGeneratorAndBuild()
    {
        QCOMPARE(m_world->devicesim({"fault", "set", "slow-build", "60"}).status, 0);
        QProcess process;
        m_world->startVantrel(process, {"generate", "--from-build"});
        QString out = readUntil(process, "Replaying 3 screens for en-US");
        QTest::qWait(500); // the build is under way
        QCOMPARE(m_world->runningBuilds().size(), 1);

        ::kill(pid_t(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(10000));
        out += QString::fromUtf8(process.readAllStandardOutput());
        QCOMPARE(process.exitCode(), 130);
        QVERIFY2(out.contains("Cancel requested.\n"), qPrintable(out));
        QVERIFY(out.endsWith("\nGeneration cancelled\n0 of 6 screenshots completed.\n"));
        QTRY_VERIFY(m_world->runningBuilds().isEmpty());
    }

    void interruptedRunExitsWith130()
    {
        QCOMPARE(m_world->devicesim({"fault", "set", "slow-build", "60"}).status, 0);
        QProcess process;
        m_world->startVantrel(process, {"run", m_config});
        QString out = readUntil(process, "Replaying 3 screens for en-US");
        QTest::qWait(500);
        ::kill(pid_t(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(10000));
        out += QString::fromUtf8(process.readAllStandardOutput());
        QCOMPARE(process.exitCode(), 130);
        QVERIFY(out.endsWith("Generated 0 of 6 screenshots.\n"));
        QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString("Generation cancelled.\n"));
        QVERIFY(m_world->runningBuilds().isEmpty());
    }
};

VANTREL_TEST(BuildGeneratorTest);
#include "BuildGeneratorTest.moc"
