// Readiness before a run: the six checks, the two run predicates, the
// message, the replay issue, the counts and the quick-start rows.

#include "ModelFixture.h"
#include "TestSupport.h"

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

    std::optional<ModelFixture> f;

    void makeComplete()
    {
        ScreenshotProject &p = arrange(*f->model).project;
        p.bundleId = QStringLiteral("com.example.demo");
        p.appName = QStringLiteral("Demo");
        p.devices = {QStringLiteral("UDID")};
        p.attachedDeviceName = QStringLiteral("iPhone 15");
        p.languages = {QStringLiteral("en-US"), QStringLiteral("de-DE")};
        p.screens = {screenWith({}), screenWith({OperationDraft::tap(1, 2)})};
    }

private slots:
    void init() { f.emplace(); }

    void newProjectIsNotReady()
    {
        arrange(*f->model).project.languages.clear();
        f->platform->accessibilityTrusted = false;
        const QList<ProductPreflightCheck> checks = f->model->preflightChecks();
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
        f->model->refreshReplayEngineAvailability();
        QCOMPARE(f->model->preflightChecks().at(5).isReady, AppModel::isReplayEngineAvailable());
        QCOMPARE(f->model->runReadinessMessage(), QStringLiteral("Attach to a booted simulator or select a device first."));
        f->model->quickStartRows();
        QCOMPARE(f->platform->accessibilityRequests, 0); // reading readiness never pops the permission prompt
    }

    void completeProjectIsReadyToReplay()
    {
        makeComplete();
        const QList<ProductPreflightCheck> checks = f->model->preflightChecks();
        QCOMPARE(checks.at(0).detail, QStringLiteral("iPhone 15"));
        QCOMPARE(checks.at(2).detail, QStringLiteral("2 locales"));
        QVERIFY(checks.at(3).isReady && checks.at(4).isReady);
        QVERIFY(f->model->canRunRecordedAttachedCapture());
        QVERIFY(!f->model->canRunAutomatedCapture());
        QCOMPARE(f->model->runReadinessMessage(),
                 QStringLiteral("Ready to generate by replaying the recorded simulator flow for every selected language."));

        arrange(*f->model).project.appPath = f->root.path(); // any existing path stands for the .app build
        QVERIFY(f->model->canRunAutomatedCapture());
        QVERIFY(!f->model->canRunRecordedAttachedCapture());
        QCOMPARE(f->model->runReadinessMessage(),
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
        arrange(*f->model).project.screens = screens;
        QCOMPARE(f->model->recordedFlowReplayIssue().value_or(QString()), issue);
        QCOMPARE(f->model->canRunRecordedAttachedCapture(), issue.isEmpty());
        if (!issue.isEmpty())
            QCOMPARE(f->model->runReadinessMessage(), issue);
    }

    void runCountsForSeveralDevices_data()
    {
        QTest::addColumn<int>("devices");
        QTest::addColumn<int>("languages");
        QTest::addColumn<int>("screens");
        QTest::addColumn<qint64>("deviceCount");
        QTest::addColumn<qint64>("total");
        QTest::newRow("two devices") << 2 << 3 << 4 << qint64(2) << qint64(24);
        QTest::newRow("no device counts as one") << 0 << 3 << 4 << qint64(1) << qint64(12);
        QTest::newRow("three devices, one language") << 3 << 1 << 2 << qint64(3) << qint64(6);
        QTest::newRow("no languages") << 2 << 0 << 4 << qint64(2) << qint64(0);
    }

    void runCountsForSeveralDevices()
    {
        QFETCH(int, devices);
        QFETCH(int, languages);
        QFETCH(int, screens);
        QFETCH(qint64, deviceCount);
        QFETCH(qint64, total);
        ScreenshotProject &p = arrange(*f->model).project;
        p.devices.clear();
        for (int i = 0; i < devices; ++i)
            p.devices.append(QStringLiteral("UDID-%1").arg(i));
        p.languages = QStringList(languages, QStringLiteral("en-US"));
        p.screens = QList<ScreenDraft>(screens);
        QCOMPARE(f->model->runDeviceCount(), deviceCount);
        QCOMPARE(f->model->runTotalCount(), total);
    }

    void quickStartRowsFollowTheSteps()
    {
        const auto describe = [this] {
            QStringList rows;
            for (const QuickStartRow &row : f->model->quickStartRows())
                rows.append(QStringLiteral("%1 %2 | %3 | %4 | %5")
                                .arg(row.number)
                                .arg(row.title, row.detail, row.isComplete ? "done" : "open",
                                     row.buttonTitle.value_or("-")));
            return rows;
        };
        f->platform->accessibilityTrusted = false;
        QCOMPARE(describe(), (QStringList{
                                 "1 Attach Simulator | Open your app in Simulator, then attach | open | Attach",
                                 "2 Allow click recording | Needed to record Simulator taps and drags | open | Allow",
                                 "3 Choose app | Choose the app running in Simulator | open | Choose",
                                 "4 Choose languages | 1 selected | done | Choose",
                                 "5 Record flow | Capture the screens you want in App Store screenshots | open | Record",
                             }));
        makeComplete();
        f->platform->accessibilityTrusted = true;
        QCOMPARE(describe(), (QStringList{
                                 "1 Attach Simulator | iPhone 15 | done | Reattach",
                                 "2 Allow click recording | Permission granted | done | -",
                                 "3 Choose app | Demo | done | Change",
                                 "4 Choose languages | 2 selected | done | Choose",
                                 "5 Record flow | 2 checkpoints recorded | done | Review",
                             }));
        arrange(*f->model).project.attachedDeviceName.reset();
        QCOMPARE(f->model->quickStartRows().first().detail, QStringLiteral("Attached"));
        arrange(*f->model).project.languages.clear();
        QCOMPARE(f->model->quickStartRows().at(3).detail, QStringLiteral("Pick App Store locales"));
    }

    // Taps replay in points: a generation device of another size in points
    // than the one the flow was recorded on gets a line of its own.
    void deviceOfAnotherSizeIsNamed()
    {
        makeComplete();
        ScreenshotProject &p = arrange(*f->model).project;
        p.devices = {QStringLiteral("IPAD"), QStringLiteral("IPHONE"), QStringLiteral("UNKNOWN")};
        arrange(*f->model).availableDevices = {{QStringLiteral("iPad Air 11-inch (M2)"), QStringLiteral("IPAD"),
                                      QStringLiteral("iOS 17 5"), QStringLiteral("Shutdown")}};
        arrange(*f->model).devicePointSizes = {{QStringLiteral("IPAD"), QSizeF(820, 1180)},
                                     {QStringLiteral("IPHONE"), QSizeF(393, 852)}};
        QVERIFY(f->model->recordedDeviceNotes().isEmpty()); // not known where it was recorded

        p.recordedOn = RecordingDevice{QStringLiteral("iPhone 15 Pro"), 393, 852};
        QCOMPARE(f->model->recordedDeviceNotes(),
                 QStringList{QStringLiteral("Taps were recorded on iPhone 15 Pro (393 \u00d7 852 points); iPad Air "
                                            "11-inch (M2) is 820 \u00d7 1180 points, so the flow may tap other places.")});
        QVERIFY(!f->model->recordedDeviceNote(QStringLiteral("IPHONE")));
        QVERIFY(!f->model->recordedDeviceNote(QStringLiteral("UNKNOWN")));

        arrange(*f->model).devicePointSizes.insert(QStringLiteral("IPHONE"), QSizeF(402.5, 874));
        QVERIFY(f->model->recordedDeviceNote(QStringLiteral("IPHONE"))->contains(" is 402.5 \u00d7 874 points"));
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
        ScreenshotProject &p = arrange(*f->model).project;
        if (change == "languages")
            p.languages.clear();
        if (change == "screens")
            p.screens.clear();
        if (change == "appPath")
            p.appPath = f->root.path() + QStringLiteral("/gone.app");
        if (change == "bundleId")
            p.bundleId.clear();
        QCOMPARE(f->model->runReadinessMessage(), message);
    }
};

VANTREL_TEST(ReadinessTest);
#include "ReadinessTest.moc"
