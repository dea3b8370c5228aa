// Smoke checks of the stand-in's own formats; the product's end-to-end tests
// drive it through every other path.

#include "StandInWorld.h"
#include "TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
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

    void failsLikeTheRealToolWhenAFaultIsSet()
    {
        StandInWorld world;
        QCOMPARE(world.run("devicesim", {"fault", "set", "launch-fails", "pt-BR"}).exitCode, 0);
        const auto r = world.run(QStringLiteral("xcrun"), {"simctl", "launch", StandInWorld::iPhone, StandInWorld::demoApp,
                                                           "-AppleLanguages", "(pt-BR)"});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.contains("The request to open \"com.vantrel.demo.Trips\" failed."), qPrintable(r.err));
    }
};

VANTREL_TEST(SimctlAnswersTest);
#include "SimctlAnswersTest.moc"
