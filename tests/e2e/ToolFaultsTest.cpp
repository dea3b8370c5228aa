// Simulator tools that misbehave, against the real `vantrel`: a simctl that
// never answers, one that writes megabytes of complaints, a test run that
// passes without its screenshots, and Ctrl-C while a tool hangs. Vantrel
// ends what hangs with its whole process group, keeps messages short, and
// says what really went wrong.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>
#include <csignal>

using namespace E2E;

namespace {

// Processes the hang fault started (the hanging simctl and its child) that
// are still alive; a zombie counts as ended.
QStringList hungProcessesAlive(const DeviceWorld &world)
{
    QStringList alive;
    const QString pids = QString::fromUtf8(TestSupport::readFile(world.devicesimHome() + "/hung-pids"));
    for (const QString &pid : pids.split(QRegularExpression("\\s+"), Qt::SkipEmptyParts)) {
        const QByteArray stat = TestSupport::readFile("/proc/" + pid + "/stat");
        const qsizetype close = stat.lastIndexOf(')');
        if (!stat.isEmpty() && close > 0 && stat.mid(close + 2, 1) != "Z")
            alive.append(pid);
    }
    return alive;
}

bool hangStarted(const DeviceWorld &world)
{
    return QFile::exists(world.devicesimHome() + "/hung-pids");
}

} // namespace

class ToolFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real developer tools would answer instead of the device stand-in");
    }

    void simctlThatNeverAnswersIsEndedAtItsLimit()
    {
        DeviceWorld world;
        QCOMPARE(world.devicesim({"fault", "set", "simctl-hangs", "list"}).status, 0);
        QElapsedTimer timer;
        timer.start();
        const Run run = world.vantrel({"devices"});
        QCOMPARE(run.status, 1);
        QVERIFY(timer.elapsed() < 60000);
        QVERIFY2(run.err.contains("Could not load simulators: xcrun simctl list devices --json did not finish within "
                                  "30 seconds and was ended."),
                 qPrintable(run.err));
        QVERIFY(hangStarted(world));
        QCOMPARE(hungProcessesAlive(world), QStringList());
    }

    void interruptWhileAttachingEndsItWithItsChildren()
    {
        DeviceWorld world;
        QCOMPARE(world.devicesim({"fault", "set", "simctl-hangs", "list"}).status, 0);
        QProcess process;
        world.startVantrel(process, {"attach"});
        QElapsedTimer waited;
        waited.start();
        while (!hangStarted(world) && waited.elapsed() < 20000)
            QTest::qWait(50);
        QVERIFY(hangStarted(world));

        QElapsedTimer stopping;
        stopping.start();
        ::kill(pid_t(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(10000));
        QVERIFY2(stopping.elapsed() < 5000, qPrintable(QString::number(stopping.elapsed())));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 130);
        QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString("Interrupted.\n"));
        QTest::qWait(200); // the children's own exits
        QCOMPARE(hungProcessesAlive(world), QStringList());
    }

    void chattyToolGivesTheEndOfItsComplaint()
    {
        DeviceWorld world;
        QCOMPARE(world.devicesim({"fault", "set", "chatty-stderr", "list"}).status, 0);
        const Run attach = world.vantrel({"attach"});
        QCOMPARE(attach.status, 1);
        // The tool's own reason, kept to its last 4 KB; not a guess that no simulator runs.
        QVERIFY2(attach.err.size() < 5000, qPrintable(QString::number(attach.err.size())));
        QVERIFY(attach.err.startsWith("Could not load simulators: Command failed: xcrun simctl list devices --json\n"
                                      "[the first "));
        QVERIFY(attach.err.contains("The real reason: list failed after a lot of chatter."));
        QVERIFY(!attach.err.contains("Open Simulator"));
        // The whole complaint is in the run log.
        QVERIFY(attach.out.size() > 3000000);
        QVERIFY(attach.out.contains("CoreSimulator chatter line 0 of many\n"));
    }

    void testRunWithoutItsScreenshotsSaysWhichAreMissing()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        QCOMPARE(world.record("checkpoint trips\ntap 147 790\ncheckpoint explore\nstop\n").status, 0);
        QCOMPARE(world.devicesim({"fault", "set", "no-screenshots"}).status, 0);
        const Run run = world.vantrel({"generate"});
        QCOMPARE(run.status, 1);
        QVERIFY2(run.err.startsWith("\nGeneration failed\nxcodebuild finished for en-US on iPhone 15 Pro without "
                                    "writing 2 of 2 screenshots: 01-trips.png, 02-explore.png\n"),
                 qPrintable(run.err));
        QVERIFY(!run.err.contains("Drift detected"));
    }
};

VANTREL_TEST(ToolFaultsTest);
#include "ToolFaultsTest.moc"
