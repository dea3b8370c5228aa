#include "TestSupport.h"
#include "replay/ChildProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>
#include <csignal>

namespace {

QHash<QString, QString> plainEnvironment()
{
    return {{QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin")}};
}

ChildProcess::Output runShell(const QString &script, const QHash<QString, QString> &environment = plainEnvironment())
{
    ChildProcess child(QStringLiteral("sh"), {QStringLiteral("-c"), script}, QDir::tempPath(), environment);
    if (!child.waitForExit(20000))
        qFatal("child did not finish");
    return child.output();
}

// A zombie counts as ended: its parent has gone and nobody reaps it here.
bool isRunning(const QByteArray &pid)
{
    const QByteArray stat = TestSupport::readFile(QStringLiteral("/proc/") + QString::fromLatin1(pid) + QStringLiteral("/stat"));
    const qsizetype close = stat.lastIndexOf(')');
    return close > 0 && stat.mid(close + 2, 1) != "Z";
}

} // namespace

class ChildProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void largeOutputOnBothStreamsDoesNotBlock()
    {
        // Far more than a pipe holds, on both streams at once.
        const auto output = runShell(QStringLiteral(
            "head -c 204800 /dev/zero | tr '\\0' o; head -c 204800 /dev/zero | tr '\\0' e >&2"));
        QCOMPARE(output.standardOutput.size(), 204800);
        QCOMPARE(output.standardError.size(), 204800);
        QVERIFY(!output.standardOutput.contains('e'));
        QVERIFY(!output.standardError.contains('o'));
    }

    void exitStatusWorkingDirectoryAndEnvironment()
    {
        QTemporaryDir directory;
        QHash<QString, QString> environment = plainEnvironment();
        environment.insert(QStringLiteral("GREETING"), QStringLiteral("hello world"));
        ChildProcess child(QStringLiteral("sh"),
                           {QStringLiteral("-c"), QStringLiteral("pwd; echo \"$GREETING\"; echo oops >&2; exit 3")},
                           directory.path(), environment);
        QVERIFY(child.waitForExit(10000));
        QVERIFY(!child.isRunning());
        QCOMPARE(child.output().exitStatus, 3);
        QVERIFY(child.output().exitedNormally);
        const QString canonical = QDir(directory.path()).canonicalPath();
        QCOMPARE(QString::fromUtf8(child.output().standardOutput), canonical + QStringLiteral("\nhello world\n"));
        QCOMPARE(child.output().standardError, QByteArray("oops\n"));
    }

    // Ending a child ends what it started: the whole process group goes.
    void terminateEndsTheChildsOwnChildren()
    {
        QTemporaryDir directory;
        const QString pidFile = directory.filePath("sleeper");
        ChildProcess child(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("sleep 30 & echo $! > sleeper; wait")},
                           directory.path(), plainEnvironment());
        QElapsedTimer timer;
        timer.start();
        while (TestSupport::readFile(pidFile).trimmed().isEmpty() && timer.elapsed() < 10000)
            QTest::qWait(20);
        const QByteArray sleeper = TestSupport::readFile(pidFile).trimmed();
        QVERIFY(!sleeper.isEmpty());
        child.terminate();
        QVERIFY(child.waitForExit(10000));
        QTRY_VERIFY_WITH_TIMEOUT(!isRunning(sleeper), 5000);
    }

    // Past its time limit a child is ended; one that ignores SIGTERM is killed.
    void timeLimitEndsAChild_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("signal");
        QTest::newRow("ends on request") << "exec sleep 30" << SIGTERM;
        QTest::newRow("ignores the request") << "trap '' TERM; sleep 30" << SIGKILL;
    }

    void timeLimitEndsAChild()
    {
        QFETCH(QString, script);
        QFETCH(int, signal);
        ChildProcess child(QStringLiteral("sh"), {QStringLiteral("-c"), script}, QDir::tempPath(), plainEnvironment());
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!child.finishWithin(1));
        QVERIFY(timer.elapsed() < 10000);
        QCOMPARE(child.output().exitStatus, 128 + signal);
        ChildProcess quick(QStringLiteral("true"), {}, QDir::tempPath(), plainEnvironment());
        QVERIFY(quick.finishWithin(5));
        QVERIFY(quick.finishWithin(std::nullopt));
    }

    void destructorEndsARunningChild()
    {
        QElapsedTimer timer;
        timer.start();
        {
            ChildProcess child(QStringLiteral("sleep"), {QStringLiteral("30")}, QDir::tempPath(), plainEnvironment());
        }
        QVERIFY(timer.elapsed() < 5000);
    }
};

VANTREL_TEST(ChildProcessTest);
#include "ChildProcessTest.moc"
