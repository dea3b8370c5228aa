// The stand-in answers the simulator commands in the real tools' formats,
// and fails where they fail, with their texts and exit statuses.

#include "StandInWorld.h"
#include "TestSupport.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

class SimctlAnswersTest : public QObject
{
    Q_OBJECT

private slots:
    void listsDevicesInTheRealJsonForm()
    {
        StandInWorld world;
        const auto r = world.run(QStringLiteral("xcrun"), {"simctl", "list", "devices", "--json"});
        QCOMPARE(r.exitCode, 0);
        const QJsonObject devices = QJsonDocument::fromJson(r.out.toUtf8()).object().value("devices").toObject();
        const QJsonArray ios = devices.value("com.apple.CoreSimulator.SimRuntime.iOS-17-5").toArray();
        QCOMPARE(ios.size(), 2);
        QCOMPARE(ios[0]["udid"].toString(), StandInWorld::iPhone);
        QCOMPARE(ios[0]["state"].toString(), QStringLiteral("Booted"));
        QCOMPARE(ios[1]["state"].toString(), QStringLiteral("Shutdown"));
        QCOMPARE(devices.value("com.apple.CoreSimulator.SimRuntime.watchOS-10-5")[0]["state"].toString(), QStringLiteral("Booted"));
        const QJsonObject old = devices.value("com.apple.CoreSimulator.SimRuntime.iOS-16-4")[0].toObject();
        QCOMPARE(old["isAvailable"].toBool(true), false);
        QVERIFY(!old["availabilityError"].toString().isEmpty());
    }

    void enumerateReportsTheScaleFirst()
    {
        StandInWorld world;
        world.run(QStringLiteral("xcrun"), {"simctl", "boot", StandInWorld::iPad});
        const QRegularExpression scale(QStringLiteral("Preferred UI Scale:\\s*([0-9.]+)"));
        const auto phone = world.run(QStringLiteral("xcrun"), {"simctl", "io", StandInWorld::iPhone, "enumerate"});
        const auto pad = world.run(QStringLiteral("xcrun"), {"simctl", "io", StandInWorld::iPad, "enumerate"});
        QCOMPARE(scale.match(phone.out).captured(1), QStringLiteral("3"));
        QCOMPARE(scale.match(pad.out).captured(1), QStringLiteral("2"));
        QVERIFY(phone.out.contains(QStringLiteral("Pixel Size: {1179, 2556}")));
    }

    void listsAppsAsOldStylePropertyListText()
    {
        StandInWorld world;
        const auto r = world.run(QStringLiteral("xcrun"), {"simctl", "listapps", StandInWorld::iPhone});
        QCOMPARE(r.exitCode, 0);
        QVERIFY(r.out.startsWith(QStringLiteral("{\n")));
        QVERIFY(r.out.contains(QStringLiteral("\n    \"com.vantrel.demo.Trips\" =     {\n")));
        QVERIFY(r.out.contains(QStringLiteral("\n        ApplicationType = User;\n")));
        QVERIFY(r.out.contains(QStringLiteral("\n        CFBundleDisplayName = \"Trips Caf\\U00e9\";\n")));
        QVERIFY(r.out.contains(QStringLiteral("\n        CFBundleIdentifier = \"com.apple.Maps\";\n")));
        QVERIFY(r.out.contains(QStringLiteral("\n        SBAppTags =         (\n        );\n")));
        QCOMPARE(r.out.count(QStringLiteral("ApplicationType = System;")), 6);
    }

    void launchSetsLanguageLocaleAndArguments()
    {
        StandInWorld world;
        const auto launch = world.run(QStringLiteral("xcrun"),
                                      {"simctl", "launch", "--terminate-running-process", StandInWorld::iPhone,
                                       StandInWorld::demoApp, "-AppleLanguages", "(de-DE)", "-AppleLocale", "de_DE",
                                       "-vantrel.screen", "home"});
        QCOMPARE(launch.exitCode, 0);
        QVERIFY(QRegularExpression(QStringLiteral("^com\\.vantrel\\.demo\\.Trips: \\d+\\n$")).match(launch.out).hasMatch());
        const QJsonObject state = QJsonDocument::fromJson(world.run("devicesim", {"state"}).out.toUtf8()).object();
        const QJsonObject session = state["devices"][0]["running"][0].toObject();
        QCOMPARE(session["language"].toString(), QStringLiteral("de-DE"));
        QCOMPARE(session["locale"].toString(), QStringLiteral("de_DE"));
        QCOMPARE(session["extraArguments"].toArray(), QJsonArray({"-vantrel.screen", "home"}));

        const QString shot = world.path(QStringLiteral("shot.png"));
        const auto screenshot = world.run(QStringLiteral("xcrun"), {"simctl", "io", "booted", "screenshot", shot});
        QCOMPARE(screenshot.exitCode, 0);
        QCOMPARE(QImage(shot).size(), QSize(1179, 2556));
    }

    void statusBarOverridesLastUntilCleared()
    {
        StandInWorld world;
        const QStringList list = {"simctl", "status_bar", StandInWorld::iPhone, "list"};
        world.run(QStringLiteral("xcrun"), {"simctl", "status_bar", StandInWorld::iPhone, "override", "--time", "9:41",
                                            "--batteryState", "charged", "--batteryLevel", "100"});
        QVERIFY(world.run(QStringLiteral("xcrun"), list).out.contains(QStringLiteral("time: 9:41")));
        QCOMPARE(world.run(QStringLiteral("xcrun"), {"simctl", "status_bar", StandInWorld::iPhone, "clear"}).exitCode, 0);
        QVERIFY(!world.run(QStringLiteral("xcrun"), list).out.contains(QStringLiteral("9:41")));
    }

    void failsLikeTheRealTools_data()
    {
        QTest::addColumn<QStringList>("fault");
        QTest::addColumn<QString>("tool");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("message");
        const QString phone = StandInWorld::iPhone;
        QTest::newRow("boot a booted device") << QStringList() << "xcrun" << QStringList{"simctl", "boot", phone} << 149
                                              << "Unable to boot device in current state: Booted";
        QTest::newRow("unknown device") << QStringList() << "xcrun" << QStringList{"simctl", "listapps", "NOPE"} << 148
                                        << "Invalid device: NOPE";
        QTest::newRow("shut-down device") << QStringList() << "xcrun"
                                          << QStringList{"simctl", "io", StandInWorld::iPad, "screenshot", "x.png"} << 149
                                          << "Unable to lookup in current state: Shutdown";
        QTest::newRow("app missing") << QStringList{"app-missing", phone} << "xcrun"
                                     << QStringList{"simctl", "get_app_container", phone, StandInWorld::demoApp, "app"} << 2
                                     << "domain=NSPOSIXErrorDomain, code=2";
        QTest::newRow("launch fails for a language")
            << QStringList{"launch-fails", "pt-BR"} << "xcrun"
            << QStringList{"simctl", "launch", phone, StandInWorld::demoApp, "-AppleLanguages", "(pt-BR)"} << 1
            << "The request to open \"com.vantrel.demo.Trips\" failed.";
        QTest::newRow("terminate what is not running") << QStringList() << "xcrun"
                                                      << QStringList{"simctl", "terminate", phone, "com.apple.Maps"} << 164
                                                      << "found nothing to terminate";
        QTest::newRow("no Xcode: find") << QStringList{"no-xcode"} << "xcrun" << QStringList{"--find", "xcodebuild"} << 72
                                        << "xcrun: error: unable to find utility \"xcodebuild\"";
        QTest::newRow("no Xcode: build") << QStringList{"no-xcode"} << "xcodebuild" << QStringList{"-version"} << 1
                                         << "requires Xcode, but active developer directory";
        QTest::newRow("open another app") << QStringList() << "open" << QStringList{"-a", "Safari"} << 1
                                          << "Unable to find application named 'Safari'";
    }

    void failsLikeTheRealTools()
    {
        QFETCH(QStringList, fault);
        QFETCH(QString, tool);
        QFETCH(QStringList, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, message);
        StandInWorld world;
        if (!fault.isEmpty())
            QCOMPARE(world.run("devicesim", QStringList{"fault", "set"} + fault).exitCode, 0);
        const auto r = world.run(tool, arguments, {}, world.path(QString()));
        QCOMPARE(r.exitCode, exitCode);
        QVERIFY2(r.err.contains(message), qPrintable(r.err));
    }

    void preparesDevicesAsTheGenerationRunDoes()
    {
        StandInWorld world;
        const auto find = world.run(QStringLiteral("xcrun"), {"--find", "xcodebuild"});
        QCOMPARE(find.out, QStringLiteral("/Applications/Xcode.app/Contents/Developer/usr/bin/xcodebuild\n"));
        QCOMPARE(world.run(QStringLiteral("open"), {"-a", "Simulator", "--args", "-CurrentDeviceUDID", StandInWorld::iPad}).exitCode, 0);
        const auto status = world.run(QStringLiteral("xcrun"), {"simctl", "bootstatus", StandInWorld::iPad, "-b"});
        QCOMPARE(status.exitCode, 0);
        const auto list = world.run(QStringLiteral("xcrun"), {"simctl", "list", "devices", "booted", "--json"});
        QVERIFY(list.out.contains(StandInWorld::iPad));
    }
};

VANTREL_TEST(SimctlAnswersTest);
#include "SimctlAnswersTest.moc"
