// The generator configuration read back: the writer's own text, a
// hand-edited equivalent, every kind of refusal with its place in the file,
// the checks against the build on disk and the simulators, and the replay it
// turns into.

#include "TestSupport.h"
#include "generation/ConfigWriter.h"
#include "generation/GeneratorConfigCheck.h"
#include "generation/GeneratorConfigReader.h"
#include "model/AppModel.h"

#include <QTemporaryDir>

Q_DECLARE_METATYPE(QList<ConfigPosition>)
#include <QTest>

namespace {

GeneratorConfig readOrFail(const QByteArray &text)
{
    auto result = GeneratorConfigReader::read(text, QStringLiteral("c.yaml"));
    if (const ConfigRefusal *refusal = std::get_if<ConfigRefusal>(&result))
        qFatal("refused: %s", qPrintable(refusal->text()));
    return std::get<GeneratorConfig>(result);
}

QString refusalOf(const QByteArray &text)
{
    auto result = GeneratorConfigReader::read(text, QStringLiteral("c.yaml"));
    const ConfigRefusal *refusal = std::get_if<ConfigRefusal>(&result);
    return refusal ? refusal->text() : QStringLiteral("(accepted)");
}

// What the generator runs from for the project below.
GeneratorConfig expectedConfig()
{
    GeneratorConfig c;
    c.appPath = QStringLiteral("/apps/My \"Demo\".app");
    c.bundleId = QStringLiteral("com.example.demo");
    c.outputDirectory = QStringLiteral("C:\\out");
    c.openSimulator = false;
    c.resetAppData = true;
    c.launchWaitSeconds = 0.35;
    c.devices = {QStringLiteral("UDID-1"), QStringLiteral("UDID-2")};
    c.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE")};
    c.screens = {
        {QStringLiteral("Home \"1\""),
         {QStringLiteral("-vantrel.screen"), QStringLiteral("home"), QStringLiteral("-sample"), QStringLiteral("Ada")},
         60,
         {OperationDraft::tap(120, -7), OperationDraft::swipe(1, 2, 3, 4, 0.5),
          OperationDraft::type(QStringLiteral("a\\b \"q\"")), OperationDraft::wait(2)}},
        {QStringLiteral("Empty"), {}, 0, {}},
    };
    return c;
}

// Lines 8-9 hold the devices, so the second device stands at 9:5.
const QByteArray validText = "appPath: /apps/Demo.app\n"
                             "bundleId: com.example.demo\n"
                             "outputDirectory: out\n"
                             "devices:\n"
                             "  - UDID-1\n"
                             "languages: [en-US]\n"
                             "screens:\n"
                             "  - name: Home\n";

} // namespace

class GeneratorConfigTest : public QObject
{
    Q_OBJECT

private slots:
    // The writer's own text and a hand-edited equivalent (other order, other
    // quoting, flow style, optional keys left out) read as the same run.
    void textsReadAsTheConfiguration_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QList<ConfigPosition>>("positions"); // bundleId, then each device
        ScreenshotProject p;
        const GeneratorConfig expected = expectedConfig();
        p.appPath = expected.appPath;
        p.bundleId = expected.bundleId;
        p.outputDirectory = expected.outputDirectory;
        p.openSimulator = false;
        p.launchWaitSeconds = 0.35;
        p.devices = expected.devices;
        p.languages = expected.languages;
        p.sampleNameArgumentName = QStringLiteral("sample");
        p.screens = {ScreenDraft{.name = expected.screens[0].name, .state = QStringLiteral("home"),
                                 .sampleName = QStringLiteral("Ada"), .launchWaitSeconds = 60,
                                 .operations = expected.screens[0].operations},
                     ScreenDraft{.name = QStringLiteral("Empty")}};
        QTest::newRow("written") << ConfigWriter::yaml(p).toUtf8() << QList<ConfigPosition>{{2, 11}, {8, 5}, {9, 5}};
        QTest::newRow("hand-edited")
            << QByteArray("screens:\n"
                          "  - {name: 'Home \"1\"', launchWaitSeconds: 60,\n"
                          "     launchArguments: [-vantrel.screen, home, -sample, Ada],\n"
                          "     operations: [{tap: {x: 120, y: -7}},\n"
                          "                  {swipe: {startX: 1, startY: 2, endX: 3, endY: 4, duration: .5}},\n"
                          "                  {type: 'a\\b \"q\"'}, {wait: 2}]}\n"
                          "  - name: Empty\n"
                          "languages: [en-US, de-DE]\n"
                          "devices: [UDID-1, UDID-2]\n"
                          "launchWaitSeconds: 0.35\n"
                          "openSimulator: no\n"
                          "outputDirectory: 'C:\\out'\n"
                          "bundleId: com.example.demo\n"
                          "appPath: '/apps/My \"Demo\".app'\n")
            << QList<ConfigPosition>{{13, 11}, {9, 11}, {9, 19}};
    }

    void textsReadAsTheConfiguration()
    {
        QFETCH(QByteArray, text);
        QFETCH(QList<ConfigPosition>, positions);
        const GeneratorConfig read = readOrFail(text);
        const GeneratorConfig expected = expectedConfig();
        QCOMPARE(read.screens, expected.screens);
        QCOMPARE(read.appPath, expected.appPath);
        QCOMPARE(read.outputDirectory, expected.outputDirectory);
        QCOMPARE(read.devices, expected.devices);
        QCOMPARE(read.languages, expected.languages);
        QVERIFY(read.launchArguments.isEmpty()); // the writer's flow-style "  []"
        QCOMPARE(read.resetAppData, true);
        QCOMPARE(read.openSimulator, false);
        QCOMPARE(read.launchWait(read.screens[1]), 0.35); // no wait of its own: the file's
        QCOMPARE(read.screenshotCount(), 8);
        QCOMPARE(QList<ConfigPosition>{read.bundleIdPosition} + read.devicePositions, positions);
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("syntax error") << QByteArray("appPath: [a, b\nbundleId: x\n")
                                      << "c.yaml:2:9: syntax error: end of sequence flow not found\n";
        QTest::newRow("not a mapping") << QByteArray("- a\n")
                                       << "c.yaml:1:1: the configuration must be a mapping of keys to values, not a list\n";
        QTest::newRow("empty file") << QByteArray("# nothing\n")
                                    << "c.yaml: the file holds no configuration; it needs appPath, bundleId, "
                                       "outputDirectory, devices, languages and screens\n";
        QTest::newRow("wrong types") << validText + "openSimulator: maybe\nlaunchWaitSeconds: soon\nlaunchArguments: -x\n"
                                     << "c.yaml:9:16: openSimulator must be true or false, not 'maybe'\n"
                                        "c.yaml:10:20: launchWaitSeconds must be a number of seconds, not 'soon'\n"
                                        "c.yaml:11:18: launchArguments must be a list of text, not '-x'\n";
        QTest::newRow("negative wait") << validText + "    launchWaitSeconds: -1\n"
                                       << "c.yaml:9:24: screen 1 launchWaitSeconds must not be negative\n";
        QTest::newRow("unknown and repeated keys")
            << validText + "resetAppDta: false\nbundleId: again\n"
            << "c.yaml:9:1: unknown key 'resetAppDta' in the configuration; the keys there are appPath, bundleId, "
               "outputDirectory, openSimulator, resetAppData, launchWaitSeconds, devices, languages, "
               "launchArguments, screens\n"
               "c.yaml:10:1: 'bundleId' appears twice in the configuration\n";
        QTest::newRow("missing key") << QByteArray(validText).replace("bundleId: com.example.demo\n", "")
                                     << "c.yaml:1:1: the configuration lacks the key 'bundleId'\n";
        QTest::newRow("empty lists") << QByteArray(validText)
                                            .replace("  - UDID-1\n", "")
                                            .replace("[en-US]", "[]")
                                            .replace("screens:\n  - name: Home\n", "screens:\n")
                                     << "c.yaml:4:1: devices is empty; list at least one simulator by its UDID\n"
                                        "c.yaml:5:12: languages is empty; list at least one language code, such as en-US\n"
                                        "c.yaml:6:1: screens is empty; describe at least one screen\n";
        QTest::newRow("empty text and repeated entry")
            << QByteArray(validText).replace("bundleId: com.example.demo", "bundleId: ''").replace("[en-US]", "[en-US, en-US]")
            << "c.yaml:2:11: bundleId is empty\nc.yaml:6:20: languages lists en-US twice\n";
        QTest::newRow("operations")
            << validText + "    operations:\n      - tap: {x: 1.5, y: 2}\n      - click: {x: 1}\n"
                           "      - swipe: {startX: 1, startY: 2, endX: 3, endY: 4}\n      - wait\n"
            << "c.yaml:10:18: screen 1 operation 1 (tap) x must be a whole number of points, not '1.5'\n"
               "c.yaml:11:9: unknown operation 'click' in screen 1 operation 2; the operations are tap, swipe, type "
               "and wait\n"
               "c.yaml:12:16: screen 1 operation 3 (swipe) lacks the key 'duration'\n"
               "c.yaml:13:9: screen 1 operation 4 must be one of tap, swipe, type or wait (one per list entry), not "
               "'wait'\n";
        QTest::newRow("screen without a name") << QByteArray(validText).replace("- name: Home", "- state: x")
                                               << "c.yaml:8:5: unknown key 'state' in screen 1; the keys there are "
                                                  "name, launchArguments, launchWaitSeconds, operations\n"
                                                  "c.yaml:8:5: screen 1 lacks the key 'name'\n";
    }

    void refusals()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, refusal);
        QCOMPARE(refusalOf(text), refusal);
    }

    void machineChecks_data()
    {
        QTest::addColumn<QString>("bundle");    // created under a temporary folder; empty: none
        QTest::addColumn<QByteArray>("plist");  // Info.plist; empty: none
        QTest::addColumn<QString>("problem");   // what the check says, after the bundle's path
        const QByteArray plist = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                                 "<key>CFBundleIdentifier</key><string>com.example.other</string></dict></plist>\n";
        QTest::newRow("missing .app") << QString() << QByteArray() << "there is no .app bundle at %1";
        QTest::newRow("not an .app") << "Demo" << plist
                                     << "%1 is not an .app bundle; choose the .app that the simulator build produced";
        QTest::newRow("no Info.plist") << "Demo.app" << QByteArray()
                                       << "%1 has no Info.plist; choose the .app that the simulator build produced";
        QTest::newRow("other bundle id") << "Demo.app" << plist
                                         << "bundleId is com.example.demo, but the build at %1 is com.example.other";
        QTest::newRow("matching bundle") << "Demo.app" << QByteArray(plist).replace("other", "demo") << QString();
    }

    void machineChecks()
    {
        QFETCH(QString, bundle);
        QFETCH(QByteArray, plist);
        QFETCH(QString, problem);
        QTemporaryDir dir;
        GeneratorConfig config = readOrFail(validText);
        config.appPath = dir.filePath(bundle.isEmpty() ? QStringLiteral("Demo.app") : bundle);
        if (!bundle.isEmpty())
            QVERIFY(QDir().mkpath(config.appPath));
        if (!plist.isEmpty())
            TestSupport::writeFile(config.appPath + QStringLiteral("/Info.plist"), plist);
        const QList<ConfigProblem> problems = GeneratorConfigCheck::buildProblems(config);
        QCOMPARE(problems.size(), problem.isEmpty() ? 0 : 1);
        if (!problem.isEmpty())
            QCOMPARE(problems.first().message, problem.arg(config.appPath));
    }

    void relativePathsCountFromTheFilesFolder()
    {
        GeneratorConfig config = readOrFail(validText);
        config.resolvePaths(QStringLiteral("/work/configs"));
        QCOMPARE(config.outputDirectory, QStringLiteral("/work/configs/out"));
        QCOMPARE(config.appPath, QStringLiteral("/apps/Demo.app"));
    }

    // A device unknown to the simulators is named at its line: BuildGeneratorTest.

    // One build per language: every screen starts with a launch in that
    // language, the file's arguments, then the screen's own.
    void replayLaunchesEveryScreenWithItsArguments()
    {
        GeneratorConfig config = readOrFail(validText + "  - name: Settings\n    launchArguments: [-vantrel.screen, settings]\n"
                                                        "    launchWaitSeconds: 0.5\n    operations:\n      - tap:\n"
                                                        "          x: 3\n          y: 4\n"
                                                        "launchArguments: [-UITests]\nlaunchWaitSeconds: 1.5\n");
        const QList<XCTestReplayStep> steps = AppModel::replaySteps(config, QStringLiteral("pt-BR"));
        using Kind = XCTestReplayStep::Kind;
        QCOMPARE(steps.size(), 5);
        QCOMPARE(steps[0].kind, Kind::launch);
        QCOMPARE(steps[0].launchArguments(),
                 (QStringList{"-AppleLanguages", "(pt-BR)", "-AppleLocale", "pt_BR", "-UITests"}));
        QCOMPARE(steps[0].duration, 1.5);
        QCOMPARE(steps[1].outputPath, QStringLiteral("01-Home.png"));
        QCOMPARE(steps[2].launchArguments(), (QStringList{"-AppleLanguages", "(pt-BR)", "-AppleLocale", "pt_BR",
                                                          "-UITests", "-vantrel.screen", "settings"}));
        QCOMPARE(steps[2].duration, 0.5);
        QCOMPARE(steps[3], (XCTestReplayStep{Kind::tap, 3, 4, 0, 0, 0.45, {}, {}}));
        QCOMPARE(steps[4].outputPath, QStringLiteral("02-Settings.png"));
    }
};

VANTREL_TEST(GeneratorConfigTest);
#include "GeneratorConfigTest.moc"
