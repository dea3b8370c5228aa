// Running external commands: search path, environment, streams and the
// failure text.

#include "ModelFixture.h"
#include "TestSupport.h"

#include "model/AppError.h"
#include "replay/ChildProcess.h"
#include "simulator/ProcessRunner.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <csignal>

namespace {

const QString fixedPath = "/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin";

ProcessRunner::Result shell(const QString &script)
{
    return ProcessRunner::run("sh", {"-c", script}, QDir::tempPath());
}

QString failureText(const QString &command, const QStringList &arguments)
{
    try {
        ProcessRunner::run(command, arguments, QDir::tempPath());
    } catch (const AppError &error) {
        return error.message();
    }
    return "(succeeded)";
}

} // namespace

class ProcessRunnerTest : public QObject
{
    Q_OBJECT

private slots:
    void searchPath_data()
    {
        QTest::addColumn<bool>("isSet");
        QTest::addColumn<QByteArray>("inherited");
        QTest::addColumn<QString>("expected");
        QTest::newRow("absent") << false << QByteArray() << fixedPath;
        QTest::newRow("empty") << true << QByteArray() << fixedPath;
        QTest::newRow("inherited") << true << QByteArray("/x") << fixedPath + ":/x";
        QTest::newRow("repeats kept") << true << QByteArray("/usr/bin:/y") << fixedPath + ":/usr/bin:/y";
    }

    void searchPath()
    {
        QFETCH(bool, isSet);
        QFETCH(QByteArray, inherited);
        QFETCH(QString, expected);
        const QByteArray saved = qgetenv("PATH");
        if (isSet)
            qputenv("PATH", inherited);
        else
            qunsetenv("PATH");
        const ProcessRunner::Result result = shell("printf %s \"$PATH\"");
        qputenv("PATH", saved);
        QCOMPARE(result.standardOutput, expected);
    }

    void failures_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("output only, exit 3") << "sh" << QStringList{"-c", "printf 'out\\n'; exit 3"}
                                             << "Command failed: sh -c printf 'out\\n'; exit 3\nout\n";
        QTest::newRow("both streams") << "sh" << QStringList{"-c", "echo out; echo err >&2; exit 1"}
                                      << "Command failed: sh -c echo out; echo err >&2; exit 1\nerr\n";
        QTest::newRow("no arguments, silent") << "false" << QStringList{} << "Command failed: false \n";
        QTest::newRow("killed by a signal") << "sh" << QStringList{"-c", "kill -9 $$"}
                                            << "Command failed: sh -c kill -9 $$\n";
        QTest::newRow("empty argument kept") << "sh" << QStringList{"-c", "exit 1", ""}
                                             << "Command failed: sh -c exit 1 \n";
    }

    void failures()
    {
        QFETCH(QString, command);
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QCOMPARE(failureText(command, arguments), message);
    }

    // A tool that writes megabytes before its reason: the message keeps the
    // last 4 KB, which hold the reason; the whole text stays in the details.
    void longComplaintsAreCutToTheirEnd()
    {
        try {
            ProcessRunner::run("sh", {"-c", "head -c 1000000 /dev/zero | tr '\\0' e >&2; echo ' the reason' >&2; exit 4"},
                               QDir::tempPath());
            QFAIL("the command should fail");
        } catch (const AppError &error) {
            QVERIFY(error.message().startsWith("Command failed: sh -c "));
            QVERIFY(error.message().contains("\n[the first 995916 bytes are left out]\n"));
            QVERIFY(error.message().endsWith("eee the reason\n"));
            QVERIFY(error.message().toUtf8().size() < 4096 + 200);
            QCOMPARE(error.details().size(), error.message().section('\n', 0, 0).size() + 1 + 1000000 + 12);
        }
    }

    void invalidUtf8ReadsAsEmpty()
    {
        const ProcessRunner::Result result = shell("printf 'ok\\377\\376'; printf 'caf\\303\\251' >&2");
        QCOMPARE(result.standardOutput, QString());
        QCOMPARE(result.standardError, QString("caf\u00e9"));
    }

    void offMainRunsInThePackageRoot()
    {
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        const ProcessRunner::Result result = model.runProcessOffMain("sh", {"-c", "pwd -P"});
        QCOMPARE(result.standardOutput.trimmed(), QDir(root.path()).canonicalPath());
        QVERIFY_THROWS_EXCEPTION(AppError, model.runProcessOffMain("sh", {"-c", "exit 2"}));
    }

    // A long-running generator: its status is awaited without failing, and a
    // cancel ends it while the wait is under way.
    void waitsForAProcessThatCancelEnds()
    {
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        const auto start = [&](const QString &script) {
            return std::make_shared<ChildProcess>("sh", QStringList{"-c", script}, root.path(),
                                                  ChildProcess::currentEnvironment());
        };
        QCOMPARE(AppModel::waitForProcess(start("echo lots; exit 3")), 3);

        const std::shared_ptr<ChildProcess> sleeper = start("exec sleep 30");
        arrange(model).runProcess = sleeper;
        QTimer::singleShot(200, &model, [&model] { model.cancelRun(); });
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(AppModel::waitForProcess(sleeper), 128 + SIGTERM);
        QVERIFY(clock.elapsed() < 5000);
        QVERIFY(!arrange(model).runProcess);
    }
};

VANTREL_TEST(ProcessRunnerTest);
#include "ProcessRunnerTest.moc"
