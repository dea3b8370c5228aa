// The scriptable recorder of the real `vantrel` against the device stand-in:
// a script records taps, typing and checkpoints named from their screen
// text; the checkpoints command then reorders and deletes them.

#include "E2ESupport.h"
#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>

using namespace E2E;

namespace {

QJsonObject checkpoints(const DeviceWorld &world, const QStringList &action = {})
{
    const Run run = world.vantrel(QStringList{"checkpoints", "--json"} + action, world.privateHome());
    if (run.status != 0)
        qWarning("%s", qPrintable(run.err));
    return QJsonDocument::fromJson(run.out.toUtf8()).object();
}

QStringList filenames(const QJsonObject &listing)
{
    QStringList values;
    for (const QJsonValue &checkpoint : listing["checkpoints"].toArray())
        values.append(checkpoint["filename"].toString());
    return values;
}

} // namespace

class RecordCommandTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real developer tools would answer instead of the device stand-in");
    }

    // The script's waits are recorded as written, whatever the tap before
    // them took; blank typing does nothing; the status line speaks of clicks
    // in the Simulator window only, and none were made.
    void scriptRecordsAFlowWithNamedCheckpoints()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);

        // The demo app on an iPhone 15 Pro: tab bar at y 790, the search field
        // on Explore at (196, 178), the first search result below it.
        const Run run = world.record("checkpoint\n"
                                     "tap 343 790\n"
                                     "checkpoint\n"
                                     "tap 147 790\n"
                                     "wait 0.6\n"
                                     "tap 196 178\n"
                                     "wait 0.3\n"
                                     "type   \n"
                                     "wait 0.4\n"
                                     "type   Lisbon \n"
                                     "status\n"
                                     "checkpoint\n"
                                     "wait 0.8\n"
                                     "tap 196 284\n"
                                     "checkpoint\n", world.privateHome());
        QVERIFY2(run.status == 0, qPrintable(run.out + run.err));
        QCOMPARE(run.err, QString());
        QVERIFY(run.out.contains("Recorded Tap 196, 178\nRecorded Type \"Lisbon\"\n"));
        QVERIFY(run.out.contains("Status: Recording the taps, swipes and text entered here.\n"));
        QVERIFY(run.out.endsWith("Stopped recording: 4 checkpoints, 5 recorded actions.\n"));

        const QJsonObject listing = checkpoints(world);
        const QStringList files{"01-my-trips.png", "02-settings.png", "03-explore.png", "04-lisbon.png"};
        QCOMPARE(filenames(listing), files);
        const QDir manual(listing["folder"].toString());
        QCOMPARE(manual.entryList(QDir::Files | QDir::Hidden, QDir::Name), files);
        for (const QString &file : files)
            QVERIFY(!QImage(manual.filePath(file)).isNull());

        // No action waited but those the script asked for (carrying out a
        // command takes no script time).
        QCOMPARE(screenActions(world.savedProject(), true),
                 (QStringList{"", "tap 343 790", "tap 147 790, wait 0.6, tap 196 178, wait 0.7, type Lisbon",
                              "wait 0.8, tap 196 284"}));
        QCOMPARE(world.savedProject()["manualCaptureIndex"].toInt(), 5);

        // Moving checkpoint 1 by +1 swaps both images and the navigation.
        const QByteArray trips = TestSupport::readFile(manual.filePath("01-my-trips.png"));
        const QByteArray settings = TestSupport::readFile(manual.filePath("02-settings.png"));
        const QJsonObject moved = checkpoints(world, {"move", "1", "1"});
        QCOMPARE(filenames(moved), (QStringList{"01-settings.png", "02-my-trips.png", files[2], files[3]}));
        QCOMPARE(TestSupport::readFile(manual.filePath("01-settings.png")), settings);
        QCOMPARE(TestSupport::readFile(manual.filePath("02-my-trips.png")), trips);
        QCOMPARE(screenActions(world.savedProject()).mid(0, 2), (QStringList{"tap 343 790", ""}));

        // Deleting the newest frees its number for the next checkpoint.
        const QJsonObject deleted = checkpoints(world, {"delete-last"});
        QCOMPARE(deleted["checkpoints"].toArray().size(), 3);
        QCOMPARE(deleted["nextIndex"].toInt(), 4);
        QVERIFY(!manual.exists("04-lisbon.png"));
        QVERIFY(QFileInfo::exists(world.scratch() + "/home/.local/share/Trash/files/04-lisbon.png"));
        QCOMPARE(world.savedProject()["screens"].toArray().size(), 3);
    }

    void refusalsDoNotEndTheSession()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        const Run run = world.record("checkpoint Home Screen / Main\n"
                                      "wait 0.7\n"
                                      "checkpoint again\n"
                                      "tap here\n"
                                      "fly 1 2\n"
                                      "tap 147 790\n"
                                      "status\n"
                                      "checkpoint\n"
                                      "stop\n"
                                      "tap 245 790\n", world.privateHome());
        QCOMPARE(run.status, 1);
        QVERIFY(run.err.contains("No recorded navigation since the previous checkpoint."));
        QVERIFY(run.err.contains("Usage: tap X Y"));
        QVERIFY(run.err.contains("Unknown recorder command 'fly'"));
        QVERIFY(QRegularExpression("Pending: (Wait [0-9.]+s; )?Tap 147, 790\n").match(run.out).hasMatch());
        QVERIFY(run.out.contains("Next checkpoint: 02-auto-name.png\n"));
        // Nothing after "stop" is read.
        QCOMPARE(screenActions(world.savedProject()), (QStringList{"", "tap 147 790"}));
        QCOMPARE(filenames(checkpoints(world)), (QStringList{"01-Home-Screen-Main.png", "02-explore.png"}));
    }
};

VANTREL_TEST(RecordCommandTest);
#include "RecordCommandTest.moc"
