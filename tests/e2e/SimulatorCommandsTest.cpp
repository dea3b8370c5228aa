// The simulator commands of the real `vantrel` against the device stand-in:
// attach, detect and select the app, open it in a language, take a preview.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace E2E;

namespace {

QJsonArray jsonArray(const Run &run)
{
    return QJsonDocument::fromJson(run.out.toUtf8()).array();
}

} // namespace

class SimulatorCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn({"xcrun"}))
            QSKIP("a real xcrun would answer instead of the device stand-in");
    }

    void attachDetectOpenAndPreview()
    {
        DeviceWorld world;
        const Run attach = world.vantrel({"attach"});
        QVERIFY2(attach.status == 0, qPrintable(attach.err));
        QCOMPARE(attach.out, "Attached iPhone 15 Pro (" + iPhoneUdid + ").\nApp: " + demoAppName + " (" + demoBundleId
                                 + ")\n");
        QJsonObject project = world.savedProject();
        QCOMPARE(project.value("devices").toArray(), QJsonArray{iPhoneUdid});
        QCOMPARE(project.value("attachedDeviceName").toString(), QString("iPhone 15 Pro"));
        QCOMPARE(project.value("bundleId").toString(), demoBundleId);

        // Only the available iOS simulators; watch, TV and the unavailable iPhone 14 are left out.
        const QJsonArray devices = jsonArray(world.vantrel({"devices", "--json"}));
        QCOMPARE(devices.size(), 2);
        QCOMPARE(devices.at(0)["udid"].toString(), iPadUdid);
        QCOMPARE(devices.at(1)["runtime"].toString(), QString("iOS 17 5"));
        QCOMPARE(devices.at(1)["attached"].toBool(), true);

        const QJsonArray apps = jsonArray(world.vantrel({"apps", "--json"}));
        QCOMPARE(apps, (QJsonArray{QJsonObject{{"name", demoAppName}, {"bundleId", demoBundleId}, {"selected", true}}}));

        // Opening uses the project's first language and its region format.
        QCOMPARE(world.vantrel({"languages", "toggle", "de-DE"}).status, 0);
        QCOMPARE(world.vantrel({"languages", "toggle", "en-US"}).status, 0);
        const Run open = world.vantrel({"open-app"});
        QVERIFY2(open.status == 0, qPrintable(open.err));
        QCOMPARE(open.out, "Opened " + demoAppName + " on iPhone 15 Pro in German (Germany).\n");
        const QJsonObject running = world.demoSession();
        QCOMPARE(running.value("language").toString(), QString("de-DE"));
        QCOMPARE(running.value("locale").toString(), QString("de_DE"));

        const QString png = world.scratch() + "/shot.png";
        const Run preview = world.vantrel({"preview", "--out", png});
        QVERIFY2(preview.status == 0, qPrintable(preview.err));
        QCOMPARE(preview.out, "Saved " + png + " (1179 x 2556 pixels, scale 3.0).\n");
        QCOMPARE(QImage(png).size(), QSize(1179, 2556));

        const QJsonObject status = QJsonDocument::fromJson(world.vantrel({"status", "--json"}).out.toUtf8()).object();
        QCOMPARE(status.value("simulator").toObject(),
                 (QJsonObject{{"udid", iPhoneUdid}, {"name", "iPhone 15 Pro"}, {"state", "Booted"}}));
    }

    // What cannot be opened says why; a device renamed in the Simulator
    // since it was attached is named as the Simulator lists it now.
    void failuresNameTheAppAndDevice()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        QCOMPARE(world.vantrel({"select-app", "com.example.none"}).err,
                 "No user app with the bundle ID com.example.none is installed on iPhone 15 Pro. Run 'vantrel apps' "
                 "to see the installed apps.\n");
        QCOMPARE(world.devicesim({"fault", "set", "app-missing", iPhoneUdid}).status, 0);
        QCOMPARE(world.vantrel({"apps"}).out, QString("No user apps are installed on iPhone 15 Pro.\n"));
        const Run missing = world.vantrel({"open-app"});
        QVERIFY2(missing.err.startsWith("Could not open target app: " + demoAppName
                                        + " is not installed on iPhone 15 Pro.\n"),
                 qPrintable(missing.err));
        QCOMPARE(world.devicesim({"fault", "clear"}).status, 0);

        QCOMPARE(world.devicesim({"device", "remove", iPhoneUdid}).status, 0);
        QCOMPARE(world.devicesim({"device", "add", "Travel iPhone", "iOS-17-5", "--udid", iPhoneUdid, "--boot"}).status, 0);

        const Run open = world.vantrel({"open-app"});
        QVERIFY2(open.status == 0, qPrintable(open.err));
        QCOMPARE(open.out, "Opened " + demoAppName + " on Travel iPhone in English (United States).\n");

        QCOMPARE(world.devicesim({"fault", "set", "launch-fails", "en-US"}).status, 0);
        const Run failed = world.vantrel({"open-app"});
        QCOMPARE(failed.status, 1);
        QVERIFY2(failed.err.startsWith("Could not open target app: " + demoAppName
                                       + " is installed on Travel iPhone, but Simulator could not launch it for "
                                         "English (United States).\n"),
                 qPrintable(failed.err));
    }
};

VANTREL_TEST(SimulatorCommandsTest);
#include "SimulatorCommandsTest.moc"
