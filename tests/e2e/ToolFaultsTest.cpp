// Simulator tools that misbehave, against the real `vantrel`: a simctl that
// never answers, Ctrl-C while it hangs, and one that writes megabytes of
// complaints. Vantrel ends what hangs with its whole process group, keeps
// messages short, and says what really went wrong.

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

    // Ctrl-C while simctl hangs ends the command at once; left alone, the
    // hanging simctl is ended at its limit. Either way with its children.
    void simctlThatNeverAnswers()
    {
        DeviceWorld world;
        QCOMPARE(world.devicesim({"fault", "set", "simctl-hangs", "list"}).status, 0);
        QProcess process;
        world.startVantrel(process, {"attach"});
        QTRY_VERIFY_WITH_TIMEOUT(hangStarted(world), 20000);
        QElapsedTimer stopping;
        stopping.start();
        ::kill(pid_t(process.processId()), SIGINT);
        QVERIFY(process.waitForFinished(10000));
        QVERIFY2(stopping.elapsed() < 5000, qPrintable(QString::number(stopping.elapsed())));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 130);
        QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString("Interrupted.\n"));
        QTRY_COMPARE(hungProcessesAlive(world), QStringList()); // the children's own exits

        QVERIFY(QFile::remove(world.devicesimHome() + "/hung-pids"));
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
};

VANTREL_TEST(ToolFaultsTest);
#include "ToolFaultsTest.moc"
