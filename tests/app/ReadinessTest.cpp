// Readiness before a run: the six checks, the two run predicates, the
// message, the replay issue, the counts and the quick-start rows.

#include "TestSupport.h"
#include "model/AppModel.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QTest>

namespace {

ScreenDraft screenWith(QList<OperationDraft> operations)
{
    ScreenDraft screen;
    screen.operations = std::move(operations);
    return screen;
}

} // namespace

class ReadinessTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<AppModel> m_model;
    ScriptedPlatformServices *m_platform = nullptr;

    void makeComplete()
    {
        ScreenshotProject &p = m_model->project;
        p.bundleId = QStringLiteral("com.example.demo");
        p.appName = QStringLiteral("Demo");
        p.devices = {QStringLiteral("UDID")};
        p.attachedDeviceName = QStringLiteral("iPhone 15");
        p.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE")};
        p.screens = {screenWith({}), screenWith({OperationDraft::tap(1, 2)})};
    }

private slots:
    void init()
    {
        m_root = std::make_unique<QTemporaryDir>();
        auto platform = std::make_unique<ScriptedPlatformServices>();
        m_platform = platform.get();
        m_model = std::make_unique<AppModel>(m_root->path(), std::move(platform));
    }

    void newProjectIsNotReady()
    {
        m_model->project.languages.clear();
        m_platform->accessibilityTrusted = false;
        const QList<ProductPreflightCheck> checks = m_model->preflightChecks();
        const QList<ProductPreflightCheck> expected{
            {"Simulator attached", "Attach a running iOS Simulator", false},
            {"App detected", "Detect the foreground app", false},
            {"Languages selected", "0 locales", false},
            {"Flow recorded", "0 checkpoints", false},
            {"Simulator click access", "Accessibility permission", false},
            {"Replay engine ready", "Xcode XCUITest runner", false}, // not asked yet
        };
        QCOMPARE(checks, expected);
        // Reading readiness asks no tool; a refresh does, and is remembered.
        m_model->refreshReplayEngineAvailability();
        QCOMPARE(m_model->preflightChecks().at(5).isReady, AppModel::isReplayEngineAvailable());
        QCOMPARE(m_model->runReadinessMessage(), QStringLiteral("Attach to a booted simulator or select a device first."));
        m_model->quickStartRows();
        QCOMPARE(m_platform->accessibilityRequests, 0); // reading readiness never pops the permission prompt
    }

    void completeProjectIsReadyToReplay()
    {
        makeComplete();
        const QList<ProductPreflightCheck> checks = m_model->preflightChecks();
        QCOMPARE(checks.at(0).detail, QStringLiteral("iPhone 15"));
        QCOMPARE(checks.at(2).detail, QStringLiteral("2 locales"));
        QVERIFY(checks.at(3).isReady && checks.at(4).isReady);
        QVERIFY(m_model->canRunRecordedAttachedCapture());
        QVERIFY(!m_model->canRunAutomatedCapture());
        QCOMPARE(m_model->runReadinessMessage(),
                 QStringLiteral("Ready to generate by replaying the recorded simulator flow for every selected language."));

        m_model->project.appPath = m_root->path(); // any existing path stands for the .app build
        QVERIFY(m_model->canRunAutomatedCapture());
        QVERIFY(!m_model->canRunRecordedAttachedCapture());
        QCOMPARE(m_model->runReadinessMessage(),
                 QStringLiteral("Ready to generate from the selected .app build and recorded screen flow."));
    }

    void replayIssueNamesTheFirstCheckpointWithoutAction_data()
    {
        QTest::addColumn<QList<ScreenDraft>>("screens");
        QTest::addColumn<QString>("issue");
        QTest::newRow("one empty checkpoint") << QList<ScreenDraft>{screenWith({})} << QString();
        QTest::newRow("second has only waits")
            << QList<ScreenDraft>{screenWith({}), screenWith({OperationDraft::wait(1)}),
                                  screenWith({OperationDraft::tap(1, 1)})}
            << QStringLiteral("Checkpoint 02 has no recorded tap, swipe, or typed text. Click or drag inside the "
                              "real Simulator window before saving each later checkpoint.");
        QTest::newRow("typing counts")
            << QList<ScreenDraft>{screenWith({}), screenWith({OperationDraft::type(QStringLiteral("a"))})} << QString();
        QTest::newRow("swipe counts")
            << QList<ScreenDraft>{screenWith({}), screenWith({OperationDraft::swipe(1, 2, 3, 4, 0.5)})} << QString();
    }

    void replayIssueNamesTheFirstCheckpointWithoutAction()
    {
        QFETCH(QList<ScreenDraft>, screens);
        QFETCH(QString, issue);
        makeComplete();
        m_model->project.screens = screens;
        QCOMPARE(m_model->recordedFlowReplayIssue().value_or(QString()), issue);
        QCOMPARE(m_model->canRunRecordedAttachedCapture(), issue.isEmpty());
        if (!issue.isEmpty())
            QCOMPARE(m_model->runReadinessMessage(), issue);
    }

    void messageFallsThroughInOrder_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<QString>("message");
        QTest::newRow("no languages") << "languages" << "Select at least one language.";
        QTest::newRow("no screens") << "screens" << "Record a flow and save at least one checkpoint in Recorder.";
        QTest::newRow("vanished app build") << "appPath"
                                            << "Runs is not ready yet. Check Recorder, Languages, and Devices.";
        QTest::newRow("no bundle")
            << "bundleId" << "Select the installed app bundle ID in Recorder so the app can relaunch for each language.";
    }

    void messageFallsThroughInOrder()
    {
        QFETCH(QString, change);
        QFETCH(QString, message);
        makeComplete();
        ScreenshotProject &p = m_model->project;
        if (change == "languages")
            p.languages.clear();
        if (change == "screens")
            p.screens.clear();
        if (change == "appPath")
            p.appPath = m_root->path() + QStringLiteral("/gone.app");
        if (change == "bundleId")
            p.bundleId.clear();
        QCOMPARE(m_model->runReadinessMessage(), message);
    }
};

VANTREL_TEST(ReadinessTest);
#include "ReadinessTest.moc"
