// Several `vantrel` processes on one data root: changes made side by side
// all arrive, reading leaves the files alone, and a second generation waits
// its turn.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QTest>
#include <csignal>
#include <memory>

using namespace E2E;

namespace {

QMap<QString, QByteArray> workspaceFiles(const DeviceWorld &world)
{
    QMap<QString, QByteArray> files;
    const QString workspace = world.root() + "/.quillmark";
    for (const QString &folder : {workspace, workspace + "/projects"})
        for (const QFileInfo &file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
            files.insert(file.filePath(), TestSupport::readFile(file.filePath())
                                              + QByteArray::number(file.lastModified().toMSecsSinceEpoch()));
    return files;
}

} // namespace

class SharedWorkspaceCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real developer tools would answer instead of the device stand-in");
    }

    void fourProcessesAddingLanguagesLoseNone()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"status"}).status, 0);
        std::vector<std::unique_ptr<QProcess>> processes;
        QStringList expected{"en-US"};
        for (int p = 0; p < 4; ++p) {
            QStringList script;
            for (int l = 0; l < 5; ++l) {
                const QString code = QStringLiteral("x%1%2").arg(p).arg(l);
                expected.append(code);
                script.append(TestSupport::vantrelBinary() + " languages add " + code);
            }
            auto process = std::make_unique<QProcess>();
            process->setProcessEnvironment(world.environment());
            process->start("sh", {"-c", script.join(" && ")});
            processes.push_back(std::move(process));
        }
        for (const auto &process : processes) {
            QVERIFY(process->waitForFinished(120000));
            QVERIFY2(process->exitCode() == 0, process->readAllStandardError().constData());
        }
        QStringList saved;
        for (const QJsonValue &code : world.savedProject()["languages"].toArray())
            saved.append(code.toString());
        saved.sort();
        expected.sort();
        QCOMPARE(saved, expected);
    }

    void secondGenerationInTheSameWorkspaceIsRefused()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        QCOMPARE(world.record("checkpoint trips\nstop\n").status, 0);

        // Commands that only read leave every file as it was.
        const QMap<QString, QByteArray> before = workspaceFiles(world);
        QTest::qWait(20); // a rewrite would show in the modification time
        for (const QStringList &command : {QStringList{"status"}, QStringList{"status", "--json"},
                                           QStringList{"checkpoints"}, QStringList{"languages"},
                                           QStringList{"projects"}, QStringList{"devices"}})
            QVERIFY2(world.vantrel(command).status == 0, qPrintable(command.join(' ')));
        QCOMPARE(workspaceFiles(world), before);

        QCOMPARE(world.devicesim({"fault", "set", "slow-build", "60"}).status, 0);
        QProcess first;
        world.startVantrel(first, {"generate", "--plain"});
        readUntil(first, "Replaying 1 checkpoints");
        const Run second = world.vantrel({"generate", "--plain"});
        QCOMPARE(second.status, 1);
        QVERIFY2(second.err.contains("Another generation is running in this workspace (process "
                                     + QString::number(first.processId()) + ")."),
                 qPrintable(second.err));
        ::kill(pid_t(first.processId()), SIGINT);
        QVERIFY(first.waitForFinished(10000));
        QCOMPARE(first.exitCode(), 130);
        // Once it has ended, the next one may start.
        QCOMPARE(world.devicesim({"fault", "clear"}).status, 0);
        const Run third = world.vantrel({"generate", "--plain"});
        QVERIFY2(third.status == 0, qPrintable(third.err));
    }
};

VANTREL_TEST(SharedWorkspaceCommandsTest);
#include "SharedWorkspaceCommandsTest.moc"
