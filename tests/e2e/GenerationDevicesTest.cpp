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
#include <QTest>

using namespace E2E;

namespace {

const QString iPhone = QStringLiteral("iPhone-15-Pro");
const QString iPad = QStringLiteral("iPad-Air-11-inch-M2");

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
QString statusBarOverrides(const DeviceWorld &world)
{
    return world.xcrun({"simctl", "status_bar", iPhoneUdid, "list"}).out.section("=\n", 1, -1);
}

} // namespace

class GenerationDevicesTest : public QObject
{
    Q_OBJECT

    // One world for every case: the demo app, en-US and de-DE, and a flow
    // of one checkpoint on the first screen, recorded on the iPhone.
    std::unique_ptr<DeviceWorld> m_world;
    QString m_output;

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real simulator tools would answer instead of the device stand-in");
        m_world = std::make_unique<DeviceWorld>();
        QCOMPARE(m_world->vantrel({"attach"}).status, 0);
        QCOMPARE(m_world->vantrel({"languages", "toggle", "de-DE"}).status, 0);
        QCOMPARE(m_world->record("checkpoint trips\nstop\n").status, 0);
        m_output = m_world->savedProject().value("outputDirectory").toString();
    }

    void init()
    {
        for (const QString language : {"en-US", "de-DE", "_needs-review"})
            QDir(m_output + "/" + language).removeRecursively();
        QCOMPARE(m_world->devicesim({"fault", "clear"}).status, 0);
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
        const Run run = m_world->vantrel({"generate"}, failingXcrun(*m_world, command));
        QCOMPARE(run.status, completes ? 0 : 1);
        if (!completes)
            QVERIFY2(run.err.startsWith("\nGeneration failed\n"), qPrintable(run.err));
        if (!command.endsWith("clear"))
            QCOMPARE(statusBarOverrides(*m_world), QString());
    }

    // Whatever ends the replay, the device gets its own status bar back.
    void failedBuildGivesBackTheStatusBar()
    {
        QCOMPARE(m_world->devicesim({"fault", "set", "build-fails"}).status, 0);
        const Run run = m_world->vantrel({"generate"});
        QCOMPARE(run.status, 1);
        QVERIFY(run.out.contains("Replaying 1 checkpoints for en-US\n"));
        QCOMPARE(statusBarOverrides(*m_world), QString());

        // A failure to give it back is logged; the run's own error is the one shown.
        const Run both = m_world->vantrel(
            {"generate"}, failingXcrun(*m_world, "simctl status_bar " + iPhoneUdid + " clear"));
        QCOMPARE(both.status, 1);
        QVERIFY2(both.out.contains("Could not clear the status bar of iPhone 15 Pro: Command failed: xcrun simctl "
                                   "status_bar " + iPhoneUdid + " clear\n"),
                 qPrintable(both.out));
        QVERIFY2(!both.err.contains("status_bar"), qPrintable(both.err));
        QVERIFY(statusBarOverrides(*m_world).contains("time: 9:41"));
    }

    // References are taken on the iPhone. The iPad, of another size, keeps
    // its first language unchecked and holds its second against it.
    // Last, since it adds the iPad to the world's project.
    void iPadAndIPhoneWithTwoLanguages()
    {
        // As a device picker would set them.
        m_world->editProject([](QJsonObject &project) { project["devices"] = QJsonArray{iPadUdid, iPhoneUdid}; });
        const QString &output = m_output;

        const Run run = m_world->vantrel({"generate"});
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

        const Run review = m_world->vantrel({"review"});
        QVERIFY(review.out.contains("  en-US/" + iPad + "/01-trips.png  (no reference for this device)\n"));
        QVERIFY(review.out.contains("  de-DE/" + iPad + "/01-trips.png\n"));
        // The iPad runs now, so readiness knows its size.
        QVERIFY(m_world->vantrel({"status"}).out.endsWith(note));

        // A dialog in German on the iPad: held against the iPad's English
        // screenshot, it drifts and stops the run before the iPhone.
        QCOMPARE(m_world->devicesim({"fault", "set", "dialog", "de-DE", "trips"}).status, 0);
        const Run drifted = m_world->vantrel({"generate"});
        QCOMPARE(drifted.status, 1);
        QCOMPARE(pngsUnder(output + "/_needs-review"), QStringList{"de-DE/" + iPad + "/01-trips.png"});
        QVERIFY(drifted.out.contains("Stopped: suspicious screenshots moved to _needs-review: 01-trips.png\n"));
        QVERIFY(!drifted.out.contains("Running iPhone 15 Pro"));
    }
};

VANTREL_TEST(GenerationDevicesTest);
#include "GenerationDevicesTest.moc"
