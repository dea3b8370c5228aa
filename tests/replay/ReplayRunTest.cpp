// Runs the replay against stand-ins for `xcrun` and `xcodebuild` (first on
// PATH) that record what they were given and behave as each test asks.
#include "TestSupport.h"
#include "replay/XCUITestReplayInternal.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <thread>

using Kind = XCTestReplayStep::Kind;

namespace {

const QList<XCTestReplayStep> oneScreenshot{{Kind::screenshot, 0, 0, 0, 0, 0, {}, QStringLiteral("en/01.png")}};
const QString developerToolPath = QStringLiteral(
    "/Applications/Xcode.app/Contents/Developer/usr/bin:/usr/bin:/bin:/usr/sbin:/sbin:/opt/homebrew/bin:/usr/local/bin");

QStringList lines(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class ReplayRunTest : public QObject
{
    Q_OBJECT

    QByteArray m_originalPath;
    std::unique_ptr<QTemporaryDir> m_log;
    std::unique_ptr<QTemporaryDir> m_workspace;

    QString root() const { return m_workspace->filePath(QStringLiteral("XCUITestReplayRunner")); }
    QString logFile(const QString &name) const { return m_log->filePath(name); }
    QString expectedCommandLine() const
    {
        return QStringLiteral("xcodebuild test -project %1/AutomationRunner.xcodeproj -scheme AutomationHost "
                              "-destination id=UDID-1 -derivedDataPath %1/DerivedData -quiet CODE_SIGNING_ALLOWED=NO")
            .arg(root());
    }
    QString failure(const QString &toolOutput) const
    {
        return QStringLiteral("Command failed: ") + expectedCommandLine() + QLatin1Char('\n') + toolOutput;
    }
    void replay(const std::optional<QString> &outputDirectory = std::nullopt,
                const XCUITestReplay::ProgressHandler &handler = {})
    {
        XCUITestReplay::run(oneScreenshot, QStringLiteral("com.example.app"), QStringLiteral("UDID-1"),
                            m_workspace->path(), outputDirectory, handler);
    }
    QString failureOf(const char *build)
    {
        qputenv("VANTREL_STANDIN_BUILD", build);
        try {
            replay();
        } catch (const XCTestReplayError &error) {
            return error.message();
        }
        return QStringLiteral("<no error>");
    }

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn({"xcrun", "xcodebuild"}))
            QSKIP("the replay puts the developer-tool folders first, so a real Xcode would answer instead");
        m_originalPath = qgetenv("PATH");
        qputenv("PATH", VANTREL_TEST_DATA_DIR "/replay/standins:" + m_originalPath);
    }
    void cleanupTestCase() { qputenv("PATH", m_originalPath); }
    void init()
    {
        m_log = std::make_unique<QTemporaryDir>();
        m_workspace = std::make_unique<QTemporaryDir>();
        qputenv("VANTREL_STANDIN_LOG", m_log->path().toLocal8Bit());
        qunsetenv("VANTREL_STANDIN_BUILD");
        qunsetenv("VANTREL_STANDIN_XCRUN_FAIL");
    }

    void emptyStepListDoesNothing()
    {
        XCUITestReplay::run({}, QString(), QStringLiteral("UDID-1"), m_workspace->path());
        QVERIFY(!QFileInfo::exists(root()));
        QVERIFY(!QFileInfo::exists(logFile(QStringLiteral("xcrun.calls"))));
    }

    void blankBundleIdentifierIsRefusedBeforeTheToolLookup()
    {
        try {
            XCUITestReplay::run(oneScreenshot, QStringLiteral(" \n\t "), QStringLiteral("UDID-1"), m_workspace->path());
            QFAIL("expected the bundle identifier to be refused");
        } catch (const XCTestReplayError &error) {
            QCOMPARE(error.message(), QStringLiteral("Bundle ID is required for XCUITest replay."));
        }
        QVERIFY(!QFileInfo::exists(logFile(QStringLiteral("xcrun.calls"))));
        QVERIFY(!QFileInfo::exists(root()));
    }

    void runsTheBuildWithItsArgumentsEnvironmentAndMarker()
    {
        TestSupport::writeFile(root() + QStringLiteral("/progress.log"), "old/run.png\n");
        QStringList delivered;
        replay(QStringLiteral("/out/dir"), [&delivered](const QString &line) { delivered.append(line); });

        QCOMPARE(lines(TestSupport::readFile(logFile(QStringLiteral("xcrun.calls")))),
                 QStringList{QStringLiteral("--find xcodebuild")});
        QCOMPARE(lines(TestSupport::readFile(logFile(QStringLiteral("xcodebuild.args")))),
                 expectedCommandLine().split(QLatin1Char(' ')).mid(1));
        const QStringList environment = lines(TestSupport::readFile(logFile(QStringLiteral("xcodebuild.env"))));
        QCOMPARE(environment.at(0), QStringLiteral("PWD=") + root());
        QVERIFY(environment.at(1).startsWith(QStringLiteral("PATH=") + developerToolPath + QStringLiteral(":")));
        QCOMPARE(environment.at(2), QStringLiteral("OUTPUT=/out/dir"));
        QCOMPARE(environment.at(3), QStringLiteral("PROGRESS=") + root() + QStringLiteral("/progress.log"));
        // A real xcodebuild passes only TEST_RUNNER_-prefixed variables on to the UI test.
        QCOMPARE(environment.at(4), QStringLiteral("RUNNER_OUTPUT=/out/dir"));
        QCOMPARE(environment.at(5), QStringLiteral("RUNNER_PROGRESS=") + root() + QStringLiteral("/progress.log"));
        QCOMPARE(TestSupport::readFile(root() + QStringLiteral("/current-output-directory.txt")), QByteArray("/out/dir"));
        QVERIFY(!QFileInfo::exists(root() + QStringLiteral("/progress.log"))); // deleted, and nothing wrote a new one
        QVERIFY(delivered.isEmpty());
    }

    void cancelEndsARunningBuildWithTheCommandError()
    {
        XCUITestReplay::cancelActiveRuns(); // nothing running: nothing happens
        qputenv("VANTREL_STANDIN_BUILD", "hang");
        const QString started = logFile(QStringLiteral("started"));
        std::thread canceller([&started] {
            for (int tries = 0; tries < 400 && !QFileInfo::exists(started); ++tries)
                std::this_thread::sleep_for(std::chrono::milliseconds(25));
            XCUITestReplay::cancelActiveRuns();
        });
        QString message;
        try {
            replay(std::nullopt, [](const QString &) {});
        } catch (const XCTestReplayError &error) {
            message = error.message();
        }
        canceller.join();
        QVERIFY(QFileInfo::exists(started));
        QCOMPARE(message, failure(QString()));
    }

    void failingBuildReportsStandardErrorElseStandardOutput()
    {
        QCOMPARE(failureOf("fail-stderr"), failure(QStringLiteral("xcodebuild: error: Unable to find a destination\n")));
        QCOMPARE(failureOf("fail-stdout"), failure(QStringLiteral("** TEST FAILED **\n")));
    }

    void missingDeveloperToolsFailTheLookup()
    {
        qputenv("VANTREL_STANDIN_XCRUN_FAIL", "1");
        QString message;
        try {
            XCUITestReplay::ensureAvailable();
        } catch (const XCTestReplayError &error) {
            message = error.message();
        }
        QCOMPARE(message, QStringLiteral("Command failed: xcrun --find xcodebuild\n"
                                         "xcrun: error: unable to find utility \"xcodebuild\", not a developer tool or in PATH\n"));
        QVERIFY_THROWS_EXCEPTION(XCTestReplayError, replay());
        QVERIFY(!QFileInfo::exists(root()));
    }

    void commandThatCannotStartNamesTheCommand()
    {
        try {
            XCUITestReplay::runCommand(QStringLiteral("xcodebuild"), {}, QStringLiteral("/nonexistent/vantrel"), {},
                                       std::nullopt, {});
            QFAIL("expected a start error");
        } catch (const XCTestReplayError &error) {
            QCOMPARE(error.message(), QStringLiteral("Could not start xcodebuild: No such file or directory"));
        }
    }

    void childPathPutsTheDeveloperToolsFirst_data()
    {
        QTest::addColumn<QByteArray>("inherited");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << QByteArray() << developerToolPath;
        QTest::newRow("set") << QByteArray("/x/bin") << developerToolPath + QStringLiteral(":/x/bin");
    }
    void childPathPutsTheDeveloperToolsFirst()
    {
        QFETCH(QByteArray, inherited);
        QFETCH(QString, expected);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", inherited);
        const auto result = XCUITestReplay::runCommand(QStringLiteral("printenv"), {QStringLiteral("PATH")},
                                                       QDir::tempPath(), {}, std::nullopt, {});
        qputenv("PATH", path);
        QCOMPARE(result.standardOutput, expected + QLatin1Char('\n'));
    }
};

VANTREL_TEST(ReplayRunTest);
#include "ReplayRunTest.moc"
