// The generator configuration: exact text, quoting, and the checks before a run.

#include "ModelFixture.h"
#include "TestSupport.h"
#include "generation/ConfigWriter.h"
#include "model/AppError.h"

#include <QTest>

class ConfigWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void fullProjectIsWrittenLineForLine()
    {
        ScreenshotProject p;
        p.appPath = QStringLiteral("/apps/Demo.app");
        p.bundleId = QStringLiteral("com.example.demo");
        p.outputDirectory = QStringLiteral("/out");
        p.openSimulator = false;
        p.launchWaitSeconds = 0.35;
        p.devices = {QStringLiteral("UDID-1")};
        p.languages = {QStringLiteral("de-DE"), QStringLiteral("fr")};
        p.globalLaunchArguments = {QStringLiteral("-demo"), QStringLiteral("say \"hi\"")};
        p.sampleNameArgumentName = QStringLiteral("sample");
        ScreenDraft home;
        home.name = QStringLiteral("Home");
        home.state = QStringLiteral("home");
        home.sampleName = QStringLiteral("Ada");
        home.launchWaitSeconds = 60;
        home.operations = {OperationDraft::tap(120, -7), OperationDraft::swipe(1, 2, 3, 4, 0.5),
                           OperationDraft::type(QStringLiteral("a\\b")), OperationDraft::wait(2)};
        ScreenDraft empty;
        empty.name = QStringLiteral("Empty");
        empty.sampleName = QStringLiteral("ignored without a state");
        p.screens = {home, empty};

        const QString expected = QStringLiteral(
            "appPath: \"/apps/Demo.app\"\n"
            "bundleId: \"com.example.demo\"\n"
            "outputDirectory: \"/out\"\n"
            "openSimulator: false\n"
            "resetAppData: true\n"
            "launchWaitSeconds: 0.35\n"
            "devices:\n"
            "  - \"UDID-1\"\n"
            "languages:\n"
            "  - \"de-DE\"\n"
            "  - \"fr\"\n"
            "launchArguments:\n"
            "  - \"-demo\"\n"
            "  - \"say \\\"hi\\\"\"\n"
            "screens:\n"
            "  - name: \"Home\"\n"
            "    launchArguments:\n"
            "      - \"-vantrel.screen\"\n"
            "      - \"home\"\n"
            "      - \"-sample\"\n"
            "      - \"Ada\"\n"
            "    launchWaitSeconds: 60.0\n"
            "    operations:\n"
            "      - tap:\n"
            "          x: 120\n"
            "          y: -7\n"
            "      - swipe:\n"
            "          startX: 1\n"
            "          startY: 2\n"
            "          endX: 3\n"
            "          endY: 4\n"
            "          duration: 0.5\n"
            "      - type: \"a\\\\b\"\n"
            "      - wait: 2.0\n"
            "  - name: \"Empty\"\n"
            "    launchArguments:\n"
            "      - \"-sample\"\n"
            "      - \"ignored without a state\"\n"
            "    launchWaitSeconds: 0.0\n"
            "    operations:\n"
            "      []\n");
        QCOMPARE(ConfigWriter::yaml(p), expected);
    }

    void emptyListsKeepTheirOwnForms()
    {
        ScreenshotProject p;
        p.devices.clear();
        p.languages.clear();
        p.launchWaitSeconds = 2;
        const QString text = ConfigWriter::yaml(p);
        QVERIFY(text.contains(QStringLiteral("\ndevices:\nlanguages:\nlaunchArguments:\n  []\nscreens:\n")));
        QVERIFY(text.endsWith(QStringLiteral("screens:\n")));
        QVERIFY(!text.endsWith(QStringLiteral("\n\n")));
    }

    void quotingDoublesBackslashesBeforeEscapingQuotes()
    {
        QCOMPARE(ConfigWriter::quoted(QStringLiteral("a\\\"b")), QStringLiteral("\"a\\\\\\\"b\""));
        QCOMPARE(ConfigWriter::quoted(QStringLiteral("a\\\"b")).size(), 8);
        QCOMPARE(ConfigWriter::quoted(QStringLiteral("line\nbreak")), QStringLiteral("\"line\nbreak\""));
    }

    void validationReportsTheFirstProblem_data()
    {
        QTest::addColumn<QString>("breakWhat");
        QTest::addColumn<QString>("message");
        QTest::newRow("app path") << "appPath"
                                  << "Choose a valid .app bundle for full generation. Attached simulator sessions "
                                     "can use Recorder > Capture Current.";
        QTest::newRow("bundle") << "bundleId" << "Bundle ID is missing.";
        QTest::newRow("devices") << "devices" << "Select at least one simulator.";
        QTest::newRow("languages") << "languages" << "Select at least one language.";
        QTest::newRow("screens") << "screens" << "Add at least one screenshot screen.";
    }

    void validationReportsTheFirstProblem()
    {
        QFETCH(QString, breakWhat);
        QFETCH(QString, message);
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        ScreenshotProject &p = arrange(model).project;
        p.appPath = root.path();
        p.bundleId = QStringLiteral("com.example.demo");
        p.devices = {QStringLiteral("UDID")};
        p.screens = {ScreenDraft{}};
        if (breakWhat == "appPath") {
            p = ScreenshotProject{}; // everything missing: the app path still comes first
            p.appPath = root.path() + QStringLiteral("/gone.app");
        }
        if (breakWhat == "bundleId")
            p.bundleId.clear();
        if (breakWhat == "devices")
            p.devices.clear();
        if (breakWhat == "languages")
            p.languages.clear();
        if (breakWhat == "screens")
            p.screens.clear();
        try {
            model.validateRunnableProject();
            QFAIL("validation passed");
        } catch (const AppError &error) {
            QCOMPARE(error.message(), message);
        }
    }
};

VANTREL_TEST(ConfigWriterTest);
#include "ConfigWriterTest.moc"
