// The texts the simulator tools print: the device list, the display scale
// and the installed apps.

#include "SimulatorFixtures.h"
#include "TestSupport.h"

#include "model/AppError.h"
#include "simulator/InstalledAppParser.h"
#include "simulator/SimctlDeviceList.h"
#include "simulator/SimulatorDisplayScale.h"

#include <QTest>


class ParsersTest : public QObject
{
    Q_OBJECT

private slots:
    void deviceListKeepsAvailableIOSDevicesInOrder()
    {
        const QList<SimulatorDevice> devices = SimctlDeviceList::decode(SimulatorFixtures::mixedDeviceList).iOSDevices();
        const QList<SimulatorDevice> expected{
            {"No State", "E", "iOS 17 5", "Unknown"},
            {"iPad Air", "C", "iOS 18 0", "Booted"},
            {"iPad Pro", "P", "iPadOS 26 0", "Shutdown"},
            {"iPhone 15", "A", "iOS 17 5", "Booted"},
            {"iPhone 15", "B", "iOS 18 0", "Shutdown"},
        };
        QCOMPARE(devices, expected);
    }

    void badDeviceLists_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("reason");
        QTest::newRow("not json") << QByteArray("xcrun: error: unable to find utility") << "";
        QTest::newRow("empty") << QByteArray() << "";
        QTest::newRow("array") << QByteArray("[]") << "the top level is not an object";
        QTest::newRow("no devices") << QByteArray("{\"runtimes\": {}}") << "there is no \"devices\" entry";
        QTest::newRow("devices not a map") << QByteArray("{\"devices\": []}") << "\"devices\" is not an object";
        QTest::newRow("runtime not a list") << QByteArray("{\"devices\": {\"r.iOS-1\": {}}}") << "not a list";
        QTest::newRow("no udid") << QByteArray("{\"devices\": {\"r.iOS-1\": [{\"name\": \"x\"}]}}") << "has no \"udid\"";
        QTest::newRow("name not text") << QByteArray("{\"devices\": {\"r.iOS-1\": [{\"name\": 1, \"udid\": \"u\"}]}}")
                                       << "\"name\" of device 1 of r.iOS-1 is not text";
        QTest::newRow("state wrong type")
            << QByteArray("{\"devices\": {\"r.iOS-1\": [{\"name\": \"n\", \"udid\": \"u\", \"state\": 3}]}}") << "wrong type";
        QTest::newRow("isAvailable as text")
            << QByteArray("{\"devices\": {\"r.iOS-1\": [{\"name\": \"n\", \"udid\": \"u\", \"isAvailable\": \"YES\"}]}}")
            << "wrong type";
    }

    void badDeviceLists()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, reason);
        try {
            SimctlDeviceList::decode(json);
            QFAIL("decoded");
        } catch (const AppError &error) {
            QVERIFY2(error.message().startsWith("The simulator list could not be read: "), qPrintable(error.message()));
            QVERIFY2(error.message().contains(reason), qPrintable(error.message()));
        }
    }

    void displayScale_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<double>("scale");
        QTest::newRow("three") << "Port:\n  Preferred UI Scale: 3\n" << 3.0;
        QTest::newRow("no blank") << "Preferred UI Scale:2" << 2.0;
        QTest::newRow("fraction") << "  Preferred UI Scale:\t 2.5\n" << 2.5;
        QTest::newRow("first wins") << "Preferred UI Scale: 2\nPreferred UI Scale: 3" << 2.0;
        QTest::newRow("zero") << "Preferred UI Scale: 0" << 1.0;
        QTest::newRow("two points") << "Preferred UI Scale: 2.5.1" << 1.0;
        QTest::newRow("only points") << "Preferred UI Scale: ..." << 1.0;
        QTest::newRow("negative is no match") << "Preferred UI Scale: -2" << 1.0;
        QTest::newRow("missing") << "Display: 1179x2556" << 1.0;
        QTest::newRow("empty") << "" << 1.0;
    }

    void displayScale()
    {
        QFETCH(QString, output);
        QFETCH(double, scale);
        QCOMPARE(SimulatorDisplayScale::fromEnumerateOutput(output), scale);
    }

    void pointSize_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QSizeF>("size");
        QTest::newRow("iPad at 2x, TV port after it")
            << "Port:\n    Class: Display\n    Name: LCD\n    Default width: 1640\n    Default height: 2360\n"
               "    Preferred UI Scale: 2\nPort:\n    Name: TVOut\n    Default width: 720\n    Default height: 480\n"
               "    Preferred UI Scale: 1\n"
            << QSizeF(820, 1180);
        QTest::newRow("no scale: pixels are points") << "Default width: 320\nDefault height: 480\n" << QSizeF(320, 480);
        QTest::newRow("no height") << "Default width: 320\nPreferred UI Scale: 2\n" << QSizeF();
    }

    void pointSize()
    {
        QFETCH(QString, output);
        QFETCH(QSizeF, size);
        QCOMPARE(SimulatorDisplayScale::pointSizeFromEnumerateOutput(output).value_or(QSizeF()), size);
    }

    void field_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("isField");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("quoted") << "        CFBundleDisplayName = \"My App\";" << true << "CFBundleDisplayName" << "My App";
        QTest::newRow("bare") << "\tApplicationType = User;\t" << true << "ApplicationType" << "User";
        QTest::newRow("url with equals") << "Path = \"file:///a?b=c\";" << true << "Path" << "file:///a?b=c";
        QTest::newRow("leading equals") << "= = x;" << true << "" << "x";
        QTest::newRow("several semicolons") << "Key = value;;" << true << "Key" << "value";
        QTest::newRow("unicode escape") << "N = \"Caf\\U00e9\";" << true << "N" << "Caf\u00e9";
        QTest::newRow("surrogate pair") << "N = \"\\Ud83d\\Ude00!\";" << true << "N" << QString::fromUtf8("\xF0\x9F\x98\x80!");
        QTest::newRow("escaped quote and backslash") << "N = \"a \\\"b\\\" \\\\ c\";" << true << "N" << "a \"b\" \\ c";
        QTest::newRow("short escape kept") << "N = \"\\U12\";" << true << "N" << "U12";
        QTest::newRow("not one string") << "N = \"a\" \"b\";" << true << "N" << "a\" \"b";
        QTest::newRow("escaped closing quote") << "N = \"a\\\";" << true << "N" << "a\\";
        QTest::newRow("block opening") << "    \"com.x\" =     {" << false << "" << "";
        QTest::newRow("no blanks around equals") << "Key=value;" << false << "" << "";
    }

    void field()
    {
        QFETCH(QString, line);
        QFETCH(bool, isField);
        QFETCH(QString, key);
        QFETCH(QString, value);
        const auto pair = InstalledAppParser::field(line);
        QCOMPARE(pair.has_value(), isField);
        if (pair) {
            QCOMPARE(pair->first, key);
            QCOMPARE(pair->second, value);
        }
    }

    void installedApps()
    {
        const QList<InstalledSimulatorApp> apps = InstalledAppParser::parse(SimulatorFixtures::listAppsOutput);
        const QList<InstalledSimulatorApp> expected{
            {"App 2", "com.example.app2"},  {"App 10", "com.example.app10"},
            {"banana", "com.example.named"}, {"Caf\u00e9 \"Noir\" \\ Bar", "com.example.cafe"},
            {"com.example.bare", "com.example.bare"},
        };
        QCOMPARE(apps, expected);
    }

    void installedAppsOddInput_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QStringList>("bundleIds");
        QTest::newRow("empty") << "" << QStringList{};
        QTest::newRow("fields before any block") << "ApplicationType = User;\n" << QStringList{};
        QTest::newRow("last block without closing")
            << "{\n    \"a.b\" =     {\n        ApplicationType = User;" << QStringList{"a.b"};
        QTest::newRow("nested block id not an app")
            << "    \"a.b\" = {\n        \"c.d\" =     {\n        ApplicationType = User;\n"
            << QStringList{"a.b"};
        QTest::newRow("type from nested dictionary counts")
            << "    \"a.b\" =     {\n        Info =   {\n            ApplicationType = User;\n        };\n    };"
            << QStringList{"a.b"};
        QTest::newRow("lower-case user") << "    \"a.b\" =     {\n        ApplicationType = user;\n" << QStringList{};
        QTest::newRow("same names by bundle id")
            << "    \"z.z\" = {\n  CFBundleName = Same;\n  ApplicationType = User;\n"
               "    \"a.a\" = {\n  CFBundleName = same;\n  ApplicationType = User;\n"
            << QStringList{"a.a", "z.z"};
    }

    void installedAppsOddInput()
    {
        QFETCH(QString, output);
        QFETCH(QStringList, bundleIds);
        QStringList found;
        for (const InstalledSimulatorApp &app : InstalledAppParser::parse(output))
            found.append(app.bundleId);
        QCOMPARE(found, bundleIds);
    }
};

VANTREL_TEST(ParsersTest);
#include "ParsersTest.moc"
