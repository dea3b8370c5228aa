// A damaged or hostile project document against the real `vantrel`: a
// checkpoint image named outside the output folder, and a "manual" folder
// that is a link elsewhere. The command refuses with its reason and the
// files outside stay byte-identical; every checkpoint operation's refusal
// is checked against the model in the recorder tests.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace E2E;

class HostileFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real developer tools would answer instead of the device stand-in");
    }

    void refusedWithTheReason_data()
    {
        QTest::addColumn<bool>("linkedFolder"); // else checkpoint 2 names a file above the output folder
        QTest::addColumn<QString>("message");   // OUTPUT: the output folder
        QTest::newRow("name leads out") << false
                                        << "Could not reorder checkpoint: Checkpoint 2 was left alone: the name "
                                           "\"../../../victim.png\" is a path, not a file name.\n";
        QTest::newRow("manual is a link") << true
                                          << "Could not reorder checkpoint: The folder OUTPUT/manual leads outside the "
                                             "output folder OUTPUT, so its files were left alone.\n";
    }

    void refusedWithTheReason()
    {
        QFETCH(bool, linkedFolder);
        QFETCH(QString, message);
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        QCOMPARE(world.record("checkpoint trips\ntap 147 790\ncheckpoint explore\nstop\n").status, 0);
        const QString output = world.savedProject()["outputDirectory"].toString();
        const QString manual = output + "/manual";
        const QString elsewhere = world.scratch() + "/photos";
        const QString victim = TestSupport::writeFile(world.root() + "/victim.png", "above the output");
        if (linkedFolder) {
            QVERIFY(QDir().rename(manual, elsewhere));
            QVERIFY(QFile::link(elsewhere, manual));
        } else {
            world.editProject([&](QJsonObject &project) {
                QJsonArray screens = project["manualScreens"].toArray();
                QJsonObject screen = screens.at(1).toObject();
                screen["filename"] = QDir(manual).relativeFilePath(victim);
                screens[1] = screen;
                project["manualScreens"] = screens;
            });
        }

        const Run run = world.vantrel({"checkpoints", "move", "1", "1"}, world.privateHome());
        QCOMPARE(run.status, 1);
        QCOMPARE(run.err, message.replace("OUTPUT", output));
        QCOMPARE(world.vantrel({"record", "reset"}).status, 0);
        QCOMPARE(TestSupport::readFile(victim), QByteArray("above the output"));
        if (linkedFolder)
            QCOMPARE(QDir(elsewhere).entryList(QDir::Files, QDir::Name), (QStringList{"01-trips.png", "02-explore.png"}));
    }
};

VANTREL_TEST(HostileFilesTest);
#include "HostileFilesTest.moc"
