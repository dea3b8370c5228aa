// How the model announces changes to the views: once per turn of the event
// loop, after the operation that made them.

#include "ModelFixture.h"
#include "TestSupport.h"

#include "app/RunLogFollower.h"

#include <QSignalSpy>
#include <QTest>

class ModelChangesTest : public QObject
{
    Q_OBJECT

private slots:
    void changesOfOneTurnAreAnnouncedOnce()
    {
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        QSignalSpy spy(&model, &AppModel::changed);
        model.appendLog(QStringLiteral("one"));
        model.setLastError(QStringLiteral("two"));
        model.clearLastError();
        QCOMPARE(spy.count(), 0); // never half-way through an operation
        QCoreApplication::processEvents();
        QCOMPARE(spy.count(), 1);
        model.appendLog(QStringLiteral("three"));
        QCoreApplication::processEvents();
        QCOMPARE(spy.count(), 2);
    }

    void runLogIsFollowedAndTheLastRunIsKnown()
    {
        QTemporaryDir root;
        AppModel model(root.path(), std::make_unique<ScriptedPlatformServices>());
        RunLogFollower follower(model.runLog());
        model.appendLog(QStringLiteral("before the run"));
        QCOMPARE(follower.take(model.runLog()).text, QStringLiteral("before the run\n"));
        arrange(model).lastRunLogStart = model.runLog().size();
        model.appendLog(QStringLiteral("Running iPhone / de-DE"));
        model.appendLog(QStringLiteral("Generation complete."));
        QCOMPARE(model.lastRunLog(), QStringLiteral("Running iPhone / de-DE\nGeneration complete.\n"));
        const RunLogFollower::Update added = follower.take(model.runLog());
        QVERIFY(!added.replaced);
        QCOMPARE(added.text, QStringLiteral("Running iPhone / de-DE\nGeneration complete.\n"));

        model.resetProjectRuntimeState(QStringLiteral("Opened another project.\n"));
        const RunLogFollower::Update replaced = follower.take(model.runLog());
        QVERIFY(replaced.replaced);
        QCOMPARE(replaced.text, QStringLiteral("Opened another project.\n"));
        QVERIFY(model.lastRunLog().isEmpty());
    }
};

VANTREL_TEST(ModelChangesTest);
#include "ModelChangesTest.moc"
