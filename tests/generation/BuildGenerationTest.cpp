// Generation from an .app build on the model's side: the fields the
// configuration carries, where the generator is looked for, and how its
// output becomes progress.

#include "ModelFixture.h"
#include "TestSupport.h"
#include "generation/ConfigWriter.h"

#include <QFile>
#include <QTest>

namespace {

// Sets an environment variable for one scope.
class ScopedVariable
{
public:
    ScopedVariable(const char *name, const QByteArray &value) : m_name(name), m_old(qgetenv(name)), m_had(qEnvironmentVariableIsSet(name))
    {
        qputenv(name, value);
    }
    ~ScopedVariable()
    {
        if (m_had)
            qputenv(m_name, m_old);
        else
            qunsetenv(m_name);
    }

private:
    const char *m_name;
    QByteArray m_old;
    bool m_had;
};

QString executable(const QString &path)
{
    TestSupport::writeFile(path, "#!/bin/sh\nexit 0\n");
    QFile(path).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}

} // namespace

class BuildGenerationTest : public QObject
{
    Q_OBJECT

private slots:
    void fieldsRefuseWhatTheConfigurationCannotCarry()
    {
        ModelFixture f;
        AppModel &m = *f.model;
        m.setLaunchWaitSeconds(-1);
        QCOMPARE(m.lastError(), QStringLiteral("The launch wait must be zero or more seconds."));
        m.setStateArgumentName(QStringLiteral("-vantrel.screen"));
        QVERIFY(m.lastError()->startsWith(QStringLiteral("Give the argument name without its leading dash")));
        m.setStateArgumentName(QString());
        QVERIFY(m.lastError()->startsWith(QStringLiteral("The state argument name cannot be empty")));
        m.setScreenState(1, QStringLiteral("x"));
        QCOMPARE(m.lastError(), QStringLiteral("There is no screen 1; the project has 0."));
        QCOMPARE(m.project().launchWaitSeconds, 2.0);
        QCOMPARE(m.project().stateArgumentName, QStringLiteral("vantrel.screen"));

        m.setLaunchWaitSeconds(0.5);
        m.setSampleNameArgumentName(QStringLiteral(" demo.sample "));
        m.setGlobalLaunchArguments({QStringLiteral("-UITests"), QString()});
        m.setResetAppData(false);
        QVERIFY(!m.lastError());
        const QString yaml = ConfigWriter::yaml(m.project());
        QVERIFY(yaml.contains(QStringLiteral("resetAppData: false\nlaunchWaitSeconds: 0.5\n")));
        QVERIFY(yaml.contains(QStringLiteral("launchArguments:\n  - \"-UITests\"\n  - \"\"\n")));
        QCOMPARE(m.project().sampleNameArgumentName, QStringLiteral("demo.sample"));
    }

    // Screens added without a recording keep later checkpoints paired with
    // their screens, and a rename carries the checkpoint image along.
    void addedScreensStayPairedWithTheirCheckpoints()
    {
        ModelFixture f;
        AppModel &m = *f.model;
        arrange(m).project.outputDirectory = f.root.filePath(QStringLiteral("out"));
        m.addScreen(QStringLiteral("  Home "));
        m.addScreen(QStringLiteral("Settings"));
        m.setScreenState(2, QStringLiteral("settings"));
        m.setScreenSampleName(2, QStringLiteral("Ada"));
        m.setScreenLaunchWaitSeconds(2, 4);
        QVERIFY(!m.lastError());
        QCOMPARE(m.project().screens.size(), 2);
        QCOMPARE(m.project().screens[0].name, QStringLiteral("Home"));
        QCOMPARE(m.project().screens[1].state, QStringLiteral("settings"));
        QCOMPARE(m.project().screens[1].launchWaitSeconds, 4.0);
        QCOMPARE(m.nextManualCaptureIndex(), 3);
        QCOMPARE(m.manualScreens().size(), 2);
        QCOMPARE(m.manualScreens()[1].index, 2);

        const QString image = TestSupport::writeFile(m.manualCaptureDirectory() + QStringLiteral("/02-Settings.png"), "png");
        m.renameScreen(2, QStringLiteral("Preferences"));
        QVERIFY(!m.lastError());
        QVERIFY(!QFile::exists(image));
        QVERIFY(QFile::exists(m.manualCaptureDirectory() + QStringLiteral("/02-Preferences.png")));
        QCOMPARE(m.manualScreens()[1].name, QStringLiteral("Preferences"));
        QCOMPARE(m.project().screens[1].name, QStringLiteral("Preferences"));

        arrange(m).isRecordingFlow = true;
        m.addScreen(QStringLiteral("Later"));
        QVERIFY(m.lastError()->startsWith(QStringLiteral("Stop recording before adding a screen")));
    }

    void generatorIsLookedForInOrder()
    {
        QTemporaryDir root;
        const QString debugBuild = executable(root.filePath(QStringLiteral(".build/debug/quillmark")));
        const QString releaseBuild = executable(root.filePath(QStringLiteral(".build/release/vantrel")));
        using Command = AppModel::GeneratorCommand;
        {
            ScopedVariable vantrel("VANTREL_CLI", "/bin/false");
            ScopedVariable quillmark("QUILLMARK_CLI", "/bin/true");
            QCOMPARE(AppModel::findGeneratorCommand(root.path()), (Command{QStringLiteral("/bin/false"), {}}));
        }
        {
            ScopedVariable vantrel("VANTREL_CLI", "");
            ScopedVariable quillmark("QUILLMARK_CLI", "\"/opt/my tools/gen\" --verbose");
            QCOMPARE(AppModel::findGeneratorCommand(root.path()),
                     (Command{QStringLiteral("/opt/my tools/gen"), {QStringLiteral("--verbose")}}));
        }
        ScopedVariable vantrel("VANTREL_CLI", "");
        ScopedVariable quillmark("QUILLMARK_CLI", "");
        // vantrel before quillmark, then debug before release.
        QCOMPARE(AppModel::findGeneratorCommand(root.path()), (Command{releaseBuild, {}}));
        QFile::remove(releaseBuild);
        QCOMPARE(AppModel::findGeneratorCommand(root.path()), (Command{debugBuild, {}}));
        QFile::remove(debugBuild);
        // Last, the generator of the build folder these tests run from.
        const std::optional<Command> built = AppModel::findGeneratorCommand(root.path());
        QVERIFY(built);
        QCOMPARE(built->executable, TestSupport::vantrelBinary());
    }

    void generatorLinesAdvanceTheirPair()
    {
        ModelFixture f;
        AppModel &m = *f.model;
        arrange(m).project.devices = {QStringLiteral("UDID-1")};
        arrange(m).project.attachedDeviceName = QStringLiteral("iPhone 15 Pro");
        arrange(m).project.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE")};
        arrange(m).project.screens = QList<ScreenDraft>(2);
        arrange(m).runProgress = m.initializedRunProgress();
        m.handleGeneratorOutputLine(QStringLiteral("Running iPhone 15 Pro / de-DE"));
        m.handleGeneratorOutputLine(QStringLiteral("Screenshot 3 of 4: de-DE / iPhone 15 Pro / 01-Home.png"));
        m.handleGeneratorOutputLine(QStringLiteral("Screenshot 3 of 4: fr-FR / iPhone 15 Pro / 01-Home.png"));
        QCOMPARE(m.runProgress().value(RunProgress::key(QStringLiteral("de-DE"), QStringLiteral("UDID-1"))).completed,
                 1);
        QCOMPARE(m.completedRunProgressCount(), 1);
        QVERIFY(m.runLog().endsWith(QStringLiteral("Screenshot 3 of 4: fr-FR / iPhone 15 Pro / 01-Home.png\n")));
    }
};

VANTREL_TEST(BuildGenerationTest);
#include "BuildGenerationTest.moc"
