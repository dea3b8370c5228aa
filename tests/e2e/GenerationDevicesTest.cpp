// `vantrel generate` on several devices and against Simulator commands that
// fail: a flow recorded on the iPhone replays on an iPad of another size
// without stopping for drift, each failing device command ends the run as
// it should, and the status bar is given back whatever the outcome.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace E2E;

namespace {

const QString iPhone = QStringLiteral("iPhone-15-Pro");
const QString iPad = QStringLiteral("iPad-Air-11-inch-M2");

// A world whose project has the demo app, en-US and de-DE, and a flow of
// one checkpoint on the first screen, recorded on the iPhone.
std::unique_ptr<DeviceWorld> recordedWorld()
{
    auto world = std::make_unique<DeviceWorld>();
    if (world->vantrel({"attach"}).status != 0 || world->vantrel({"languages", "toggle", "de-DE"}).status != 0
        || world->record("checkpoint trips\nstop\n").status != 0)
        qFatal("could not set up the recorded world");
    return world;
}

// Generation devices as a device picker would set them: the project file
// the next command loads, and its mirror.
void setGenerationDevices(const DeviceWorld &world, const QStringList &udids)
{
    const QString workspace = world.root() + "/.quillmark";
    const QString id = QString::fromUtf8(TestSupport::readFile(workspace + "/current-project-id.txt"));
    QJsonObject project = world.savedProject();
    project["devices"] = QJsonArray::fromStringList(udids);
    const QByteArray bytes = QJsonDocument(project).toJson(QJsonDocument::Compact);
    TestSupport::writeFile(workspace + "/projects/" + id + ".json", bytes);
    TestSupport::writeFile(workspace + "/project.json", bytes);
}

// The stand-in's xcrun, except that one command fails the way simctl does.
QHash<QString, QString> failingXcrun(const DeviceWorld &world, const QString &command)
{
    const QString folder = world.scratch() + "/failing";
    const QString script = QStringLiteral("#!/bin/sh\n"
                                          "case \"$*\" in \"%1\"*) echo 'An error was encountered processing the "
                                          "command (domain=com.apple.CoreSimulator.SimError, code=405):' >&2; "
                                          "exit 149;; esac\n"
                                          "exec '%2' \"$@\"\n")
                               .arg(command, QFileInfo(world.root()).dir().filePath("bin/xcrun"));
    const QString path = TestSupport::writeFile(folder + "/xcrun", script.toUtf8());
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return {{"PATH", folder + ":" + world.environment().value("PATH")}};
}

// What `simctl status_bar UDID list` shows: the overrides still in place.
QString statusBarOverrides(const DeviceWorld &world, const QString &udid)
{
    return world.xcrun({"simctl", "status_bar", udid, "list"}).out.section("=\n", 1, -1);
}

} // namespace

class GenerationDevicesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real simulator tools would answer instead of the device stand-in");
    }

    // References are taken on the iPhone. The iPad, of another size, keeps
    // its first language unchecked and holds its second against it.
    void iPadAndIPhoneWithTwoLanguages()
    {
        const auto world = recordedWorld();
        setGenerationDevices(*world, {iPadUdid, iPhoneUdid});
        const QString output = world->savedProject().value("outputDirectory").toString();

        const Run run = world->vantrel({"generate"});
        QVERIFY2(run.status == 0, qPrintable(run.out + run.err));
        QCOMPARE(pngsUnder(output),
                 (QStringList{"de-DE/" + iPad + "/01-trips.png", "de-DE/" + iPhone + "/01-trips.png",
                              "en-US/" + iPad + "/01-trips.png", "en-US/" + iPhone + "/01-trips.png",
                              "manual/01-trips.png"}));
        QVERIFY(run.out.contains("Running iPad Air 11-inch (M2) / de-DE\n"));
        QVERIFY(run.out.contains("Progress: iPhone 15 Pro / de-DE 1/1 done (4/4)\n"));
        QVERIFY(run.out.endsWith("\nGeneration complete\nGenerated 4 of 4 screenshots.\n"));
        const QString note = QString::fromUtf8("Taps were recorded on iPhone 15 Pro (393 \u00d7 852 points); iPad Air "
                                               "11-inch (M2) is 820 \u00d7 1180 points, so the flow may tap other "
                                               "places.\n");
        QVERIFY2(run.out.contains("\n" + note), qPrintable(run.out));

        const Run review = world->vantrel({"review"});
        QVERIFY(review.out.contains("  en-US/" + iPad + "/01-trips.png  (no reference for this device)\n"));
        QVERIFY(review.out.contains("  de-DE/" + iPad + "/01-trips.png\n"));
        // The iPad runs now, so readiness knows its size.
        QVERIFY(world->vantrel({"status"}).out.endsWith(note));

        // A dialog in German on the iPad: held against the iPad's English
        // screenshot, it drifts and stops the run before the iPhone.
        QCOMPARE(world->devicesim({"fault", "set", "dialog", "de-DE", "trips"}).status, 0);
        const Run drifted = world->vantrel({"generate"});
        QCOMPARE(drifted.status, 1);
        QCOMPARE(pngsUnder(output + "/_needs-review"), QStringList{"de-DE/" + iPad + "/01-trips.png"});
        QVERIFY(drifted.out.contains("Stopped: suspicious screenshots moved to _needs-review: 01-trips.png\n"));
        QVERIFY(!drifted.out.contains("Running iPhone 15 Pro"));
    }

    void failingOpenFailsTheRun()
    {
        const auto world = recordedWorld();
        QCOMPARE(world->devicesim({"fault", "set", "open-fails"}).status, 0);
        const Run run = world->vantrel({"generate"});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith("\nGeneration failed\nCommand failed: open -a Simulator --args -CurrentDeviceUDID "
                                    + iPhoneUdid + "\nUnable to find application named 'Simulator'\n"),
                 qPrintable(run.err));
        QVERIFY(!run.out.contains("Running "));
    }

    // Each device command of a run, failing: only the boot may fail quietly
    // (the device may be booted already); clearing the status bar after a
    // good replay fails the run like any other command.
    void eachFailingSimulatorCommand_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("completes");
        QTest::newRow("boot") << "simctl boot " << true; // not bootstatus
        QTest::newRow("bootstatus") << "simctl bootstatus" << false;
        QTest::newRow("get_app_container") << "simctl get_app_container" << false;
        QTest::newRow("terminate") << "simctl terminate" << true;
        QTest::newRow("launch") << "simctl launch" << false;
        QTest::newRow("status bar override") << "simctl status_bar " + iPhoneUdid + " override" << false;
        QTest::newRow("status bar clear") << "simctl status_bar " + iPhoneUdid + " clear" << false;
    }

    void eachFailingSimulatorCommand()
    {
        QFETCH(QString, command);
        QFETCH(bool, completes);
        const auto world = recordedWorld();
        const Run run = world->vantrel({"generate"}, failingXcrun(*world, command));
        QCOMPARE(run.status, completes ? 0 : 1);
        if (!completes)
            QVERIFY2(run.err.startsWith("\nGeneration failed\n"), qPrintable(run.err));
        if (!command.endsWith("clear"))
            QCOMPARE(statusBarOverrides(*world, iPhoneUdid), QString());
    }

    // Whatever ends the replay, the device gets its own status bar back.
    void failedBuildGivesBackTheStatusBar()
    {
        const auto world = recordedWorld();
        QCOMPARE(world->devicesim({"fault", "set", "build-fails"}).status, 0);
        const Run run = world->vantrel({"generate"});
        QCOMPARE(run.status, 1);
        QVERIFY(run.out.contains("Replaying 1 checkpoints for en-US\n"));
        QCOMPARE(statusBarOverrides(*world, iPhoneUdid), QString());

        // A failure to give it back is logged; the run's own error is the one shown.
        const Run both = world->vantrel(
            {"generate"}, failingXcrun(*world, "simctl status_bar " + iPhoneUdid + " clear"));
        QCOMPARE(both.status, 1);
        QVERIFY2(both.out.contains("Could not clear the status bar of iPhone 15 Pro: Command failed: xcrun simctl "
                                   "status_bar " + iPhoneUdid + " clear\n"),
                 qPrintable(both.out));
        QVERIFY2(!both.err.contains("status_bar"), qPrintable(both.err));
        QVERIFY(statusBarOverrides(*world, iPhoneUdid).contains("time: 9:41"));
    }
};

VANTREL_TEST(GenerationDevicesTest);
#include "GenerationDevicesTest.moc"
