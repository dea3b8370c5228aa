// Generation from an .app build end to end: a copy of the demo app's bundle
// as the chosen build, three screens (one plain, one reached by its launch
// state, one by taps and typed text), `vantrel config`, then the
// command-line generator `vantrel run` and `vantrel generate --from-build`,
// with refusals, failures and interrupts.

#include "E2ESupport.h"
#include "TestSupport.h"
#include "generation/ScreenshotDriftDetector.h"

#include <QDir>
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

    // Each refusal's message is the reader's own (GeneratorConfigTest); a
    // device the Simulator does not list is refused before anything runs.
    void refusedConfigurationMakesNothing()
    {
        const QString elsewhere = m_world->scratch() + "/refused-output";
        QString text = QString::fromUtf8(TestSupport::readFile(m_config));
        text.replace(iPhoneUdid, "NO-SUCH-UDID");
        text.replace(m_output, elsewhere);
        const QString config = TestSupport::writeFile(m_world->scratch() + "/refused.yaml", text.toUtf8());

        const Run run = m_world->vantrel({"run", config});
        QCOMPARE(run.status, 2);
        QVERIFY2(run.err.startsWith(config + ":8:5: unknown device NO-SUCH-UDID"), qPrintable(run.err));
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
    // the generator, which ends its build; in `run` it ends the build
    // directly. Nothing is left running, and the device has its own status
    // bar back (no note that it could not be reset).
    void interruptEndsTheBuild_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("outputHas");
        QTest::addColumn<QString>("outputEnd");
        QTest::addColumn<QString>("errors"); // null: not checked
        QTest::newRow("generate --from-build")
            << QStringList{"generate", "--from-build"} << "Cancel requested.\n"
            << "\nGeneration cancelled\n0 of 6 screenshots completed.\n" << QString();
        QTest::newRow("run") << QStringList{"run", m_config} << QString() << "Generated 0 of 6 screenshots.\n"
                             << "Generation cancelled.\n";
    }

    void interruptEndsTheBuild()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, outputHas);
        QFETCH(QString, outputEnd);
        QFETCH(QString, errors);
        QCOMPARE(m_world->devicesim({"fault", "set", "slow-build", "60"}).status, 0);
        QProcess process;
        m_world->startVantrel(process, arguments);
        QString out = readUntil(process, "Replaying 3 screens for en-US");
        QTest::qWait(500); // the build is under way
        QCOMPARE(m_world->runningBuilds().size(), 1);

        ::kill(pid_t(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(10000));
        out += QString::fromUtf8(process.readAllStandardOutput());
        QCOMPARE(process.exitCode(), 130);
        QVERIFY2(out.contains(outputHas) && out.endsWith(outputEnd), qPrintable(out));
        QVERIFY2(!out.contains("could not reset the status bar"), qPrintable(out));
        if (!errors.isNull())
            QCOMPARE(QString::fromUtf8(process.readAllStandardError()), errors);
        QTRY_VERIFY(m_world->runningBuilds().isEmpty());
        QVERIFY(m_world->xcrun({"simctl", "status_bar", iPhoneUdid, "list"}).out.endsWith("=\n"));
    }
};

VANTREL_TEST(BuildGeneratorTest);
#include "BuildGeneratorTest.moc"
