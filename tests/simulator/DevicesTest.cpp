// Discovering simulators and attaching the project to the booted one, with
// a stand-in xcrun.

#include "ModelFixture.h"
#include "TestSupport.h"
#include "XcrunStandIn.h"

#include "model/AppError.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace {

struct ListedDevice
{
    QString name;
    QString udid;
    QString state; // "" leaves the key out
    QString runtime = "com.apple.CoreSimulator.SimRuntime.iOS-17-5";
};

QByteArray deviceList(const QList<ListedDevice> &devices)
{
    QJsonObject runtimes;
    for (const ListedDevice &d : devices) {
        QJsonObject device{{"name", d.name}, {"udid", d.udid}, {"isAvailable", true}};
        if (!d.state.isEmpty())
            device.insert("state", d.state);
        QJsonArray list = runtimes.value(d.runtime).toArray();
        list.append(device);
        runtimes.insert(d.runtime, list);
    }
    return QJsonDocument(QJsonObject{{"devices", runtimes}}).toJson();
}

const ListedDevice bootedPhone{"iPhone 15", "PHONE", "Booted"};
const ListedDevice bootedPad{"iPad Air", "PAD", "Booted"};
const ListedDevice shutdownPhone{"iPhone SE", "SE", "Shutdown"};
const ListedDevice bootedWatch{"Apple Watch", "WATCH", "Booted", "com.apple.CoreSimulator.SimRuntime.watchOS-10-0"};
const ListedDevice stateless{"Mystery", "MYSTERY", ""};

} // namespace

Q_DECLARE_METATYPE(ListedDevice)

class DevicesTest : public QObject
{
    Q_OBJECT

    QTemporaryDir root;

    std::unique_ptr<AppModel> makeModel()
    {
        return std::make_unique<AppModel>(root.path(), std::make_unique<ScriptedPlatformServices>());
    }

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn({"xcrun"}))
            QSKIP("a real xcrun comes first on the runner's search path here");
    }

    void refreshKeepsTheListWhenTheToolsFail()
    {
        XcrunStandIn xcrun;
        auto model = makeModel();
        xcrun.respond("list", deviceList({bootedPhone, shutdownPhone}));
        model->refreshDevices();
        QCOMPARE(model->availableDevices().size(), 2);
        QVERIFY(!model->lastError());

        xcrun.respond("list", "", 72, "xcrun: error: unable to find utility \"simctl\"\n");
        model->refreshDevices();
        QCOMPARE(*model->lastError(), QString("Could not load simulators: Command failed: xcrun simctl list devices "
                                            "--json\nxcrun: error: unable to find utility \"simctl\"\n"));
        QCOMPARE(model->availableDevices().size(), 2);

        xcrun.respond("list", "{\"runtimes\": []}");
        model->refreshDevices();
        QVERIFY(model->lastError()->startsWith("Could not load simulators: The simulator list could not be read"));
        QCOMPARE(model->availableDevices().size(), 2);

        xcrun.respond("list", deviceList({bootedPad}));
        model->refreshDevices();
        QVERIFY(!model->lastError());
        QCOMPARE(model->availableDevices().first().name, QString("iPad Air"));
        QCOMPARE(model->availableDevices().first().runtime, QString("iOS 17 5"));
    }

    void attach_data()
    {
        QTest::addColumn<QList<ListedDevice>>("listed");
        QTest::addColumn<QStringList>("projectDevices");
        QTest::addColumn<QString>("chosen"); // "" when attach refuses
        QTest::addColumn<QString>("error");
        const QString noneBooted = "Open Simulator, launch your app, then click Attach again.";
        const QString several = "Multiple simulators are booted. Close the extras or keep only one simulator running, "
                                "then click Attach again.";
        QTest::newRow("one booted") << QList<ListedDevice>{shutdownPhone, bootedPhone} << QStringList{} << "PHONE" << "";
        QTest::newRow("none booted") << QList<ListedDevice>{shutdownPhone} << QStringList{} << "" << noneBooted;
        QTest::newRow("only a watch") << QList<ListedDevice>{bootedWatch} << QStringList{} << "" << noneBooted;
        QTest::newRow("no state") << QList<ListedDevice>{stateless} << QStringList{} << "" << noneBooted;
        QTest::newRow("project's device decides") << QList<ListedDevice>{bootedPhone, bootedPad}
                                                  << QStringList{"PAD"} << "PAD" << "";
        QTest::newRow("later project device decides") << QList<ListedDevice>{bootedPhone, bootedPad}
                                                      << QStringList{"OTHER", "PHONE"} << "PHONE" << "";
        QTest::newRow("several, none known") << QList<ListedDevice>{bootedPhone, bootedPad} << QStringList{"SE"} << ""
                                             << several;
        QTest::newRow("several, both known") << QList<ListedDevice>{bootedPhone, bootedPad}
                                             << QStringList{"PHONE", "PAD"} << "" << several;
    }

    void attach()
    {
        QFETCH(QList<ListedDevice>, listed);
        QFETCH(QStringList, projectDevices);
        QFETCH(QString, chosen);
        QFETCH(QString, error);
        XcrunStandIn xcrun;
        xcrun.respond("list", deviceList(listed));
        auto model = makeModel();
        arrange(*model).project.devices = projectDevices;
        arrange(*model).project.appPath = "/apps/Shop.app";
        arrange(*model).project.isSimulatorBuild = true;
        const ScreenshotProject before = model->project();

        model->attachToBootedSimulator();
        if (!chosen.isEmpty()) {
            QVERIFY(!model->lastError());
            QCOMPARE(model->project().devices, QStringList{chosen});
            QCOMPARE(model->project().appPath, QString());
            QCOMPARE(model->project().isSimulatorBuild, false);
            QCOMPARE(model->project().appName, QString("Attached Simulator"));
            QCOMPARE(*model->project().attachedDeviceName, model->displayNameForDeviceID(chosen));
            QVERIFY(
                TestSupport::readFile(model->projectFileURL(*model->project().projectID)).contains(chosen.toUtf8()));
        } else {
            QCOMPARE(model->lastError().value_or(QString()), error);
            QCOMPARE(model->project(), before);
        }
    }

    void activeDeviceAdoptsQuietly()
    {
        XcrunStandIn xcrun;
        xcrun.respond("list", deviceList({bootedPhone, shutdownPhone}));
        auto model = makeModel();
        arrange(*model).project.appPath = "/apps/Shop.app";
        arrange(*model).project.isSimulatorBuild = true;
        QCOMPARE(model->activeDeviceID(), std::optional<QString>("PHONE"));
        QCOMPARE(model->project().devices, QStringList{"PHONE"});
        QCOMPARE(model->project().appPath, QString("/apps/Shop.app"));
        QCOMPARE(model->project().isSimulatorBuild, true);
        QCOMPARE(model->project().attachedDeviceName, std::optional<QString>("iPhone 15"));
        QCoreApplication::processEvents();
        QCOMPARE(xcrun.calls().size(), 1); // nothing follows a quiet attach
    }
    // Only the first stored device may go by the attached name.
    void displayNameForDeviceID()
    {
        XcrunStandIn xcrun;
        xcrun.respond("list", deviceList({bootedPhone, {"iPhone 15", "PHONE", "Shutdown", "x.iOS-18-0"}}));
        auto model = makeModel();
        model->refreshDevices();
        arrange(*model).project.devices = {"STORED"};
        arrange(*model).project.attachedDeviceName = "Stored Phone";
        QCOMPARE(model->displayNameForDeviceID("PHONE"), QString("iPhone 15"));
        QCOMPARE(model->displayNameForDeviceID("STORED"), QString("Stored Phone"));
        QCOMPARE(model->displayNameForDeviceID("UNKNOWN"), QString("UNKNOWN"));
        arrange(*model).project.devices = {"OTHER", "STORED"};
        QCOMPARE(model->displayNameForDeviceID("STORED"), QString("STORED"));
    }
};

VANTREL_TEST(DevicesTest);
#include "DevicesTest.moc"
