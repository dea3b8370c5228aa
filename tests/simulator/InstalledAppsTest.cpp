// Detecting and choosing the installed app, and starting it on the device
// in a language, with a stand-in xcrun.

#include "ModelFixture.h"
#include "TestSupport.h"
#include "XcrunStandIn.h"

#include "model/AppError.h"
#include "model/LanguageCatalog.h"

#include <QTest>

namespace {

QByteArray listApps(const QList<QPair<QString, QString>> &userApps)
{
    QByteArray text = "{\n    \"com.apple.Preferences\" =     {\n        ApplicationType = System;\n"
                      "        CFBundleDisplayName = Settings;\n    };\n";
    for (const auto &[bundleId, name] : userApps)
        text += "    \"" + bundleId.toUtf8() + "\" =     {\n        ApplicationType = User;\n"
                "        CFBundleDisplayName = \"" + name.toUtf8() + "\";\n    };\n";
    return text + "}\n";
}

QString errorOf(const std::function<void()> &operation)
{
    try {
        operation();
    } catch (const AppError &error) {
        return error.message();
    }
    return "(no error)";
}

} // namespace

class InstalledAppsTest : public QObject
{
    Q_OBJECT

    QTemporaryDir root;

    // A model attached to PHONE, named "iPhone 15" in messages.
    std::unique_ptr<AppModel> attachedModel()
    {
        auto model = std::make_unique<AppModel>(root.path(), std::make_unique<ScriptedPlatformServices>());
        arrange(*model).project.devices = {"PHONE"};
        arrange(*model).project.attachedDeviceName = "iPhone 15";
        return model;
    }

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn({"xcrun"}))
            QSKIP("a real xcrun comes first on the runner's search path here");
    }

    void theOnlyUserAppIsSelected()
    {
        XcrunStandIn xcrun;
        xcrun.respond("listapps", listApps({{"com.example.demo", "Demo App"}}));
        auto model = attachedModel();
        model->setLastError("stale");
        model->refreshInstalledApps();
        QVERIFY(!model->lastError());
        QCOMPARE(model->installedApps(), (QList<InstalledSimulatorApp>{{"Demo App", "com.example.demo"}}));
        QCOMPARE(model->project().bundleId, QString("com.example.demo"));
        QCOMPARE(model->project().appName, QString("Demo App"));
        QVERIFY(
            model->project().outputDirectory.endsWith("/demo-app-" + model->project().projectID->left(8).toLower()));
        QVERIFY(model->runLog().isEmpty());
    }

    void nothingIsSelectedAmongSeveralOrWhenChosen()
    {
        XcrunStandIn xcrun;
        xcrun.respond("listapps", listApps({{"b.two", "Two"}, {"a.one", "One"}}));
        auto model = attachedModel();
        model->refreshInstalledApps();
        QCOMPARE(model->installedApps().size(), 2);
        QCOMPARE(model->project().bundleId, QString());

        xcrun.respond("listapps", listApps({{"a.one", "One"}}));
        arrange(*model).project.bundleId = "chosen.before";
        model->refreshInstalledApps();
        QCOMPARE(model->project().bundleId, QString("chosen.before"));
    }

    void selectingAnotherAppKeepsTheFlowAndSaysSo()
    {
        XcrunStandIn xcrun;
        auto model = attachedModel();
        arrange(*model).project.bundleId = "a.one";
        arrange(*model).project.screens = {ScreenDraft{"S1", "Home"}};
        model->selectInstalledApp({"One", "a.one"});
        QVERIFY(model->runLog().isEmpty());
        model->selectInstalledApp({"Two", "b.two"});
        QCOMPARE(model->runLog(), QString("Selected a different app. Existing checkpoints were kept; re-record if "
                                        "this flow belongs to the previous app.\n"));
        QCOMPARE(model->project().screens.size(), 1);
        QCOMPARE(model->project().attachedDeviceName, std::optional<QString>("iPhone 15"));

        // A project without a device name takes it from the device list.
        arrange(*model).project.attachedDeviceName.reset();
        arrange(*model).availableDevices
            = {{"iPad Air", "PAD", "iOS 17 5", "Booted"}, {"iPhone 15 Pro", "PHONE", "iOS 18 0", "Booted"}};
        model->selectInstalledApp({"Two", "b.two"});
        QCOMPARE(model->project().attachedDeviceName, std::optional<QString>("iPhone 15 Pro"));
    }

    void launchPassesTheLocale()
    {
        XcrunStandIn xcrun;
        xcrun.respond("terminate", "", 3, "found nothing to terminate\n");
        auto model = attachedModel();
        arrange(*model).project.bundleId = "com.example.demo";
        arrange(*model).project.globalLaunchArguments = {"-UITests", "YES"};
        model->launchRecordedApp("PHONE", "pt-BR");
        const QList<QStringList> expected{
            {"simctl", "get_app_container", "PHONE", "com.example.demo", "app"},
            {"simctl", "terminate", "PHONE", "com.example.demo"},
            {"simctl", "launch", "--terminate-running-process", "PHONE", "com.example.demo", "-AppleLanguages",
             "(pt-BR)", "-AppleLocale", "pt_BR", "-UITests", "YES"},
        };
        QCOMPARE(xcrun.calls(), expected);
    }

    void statusBar()
    {
        XcrunStandIn xcrun;
        auto model = attachedModel();
        model->overrideStatusBar("PHONE");
        model->resetStatusBar("PHONE");
        const QList<QStringList> expected{
            {"simctl", "status_bar", "PHONE", "override", "--time", "9:41", "--batteryState", "charged",
             "--batteryLevel", "100", "--wifiMode", "active", "--wifiBars", "3"},
            {"simctl", "status_bar", "PHONE", "clear"},
        };
        QCOMPARE(xcrun.calls(), expected);
        xcrun.respond("status_bar", "", 1);
        QVERIFY(errorOf([&] { model->resetStatusBar("PHONE"); }).startsWith("Command failed: xcrun simctl status_bar"));
    }
};

VANTREL_TEST(InstalledAppsTest);
#include "InstalledAppsTest.moc"
