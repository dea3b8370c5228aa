// The recorder on the model: presses and releases from the desktop monitor
// become operations, waits come from the time between actions, and the
// flow's state moves as the user starts, resets and stops.

#include "ModelFixture.h"
#include "TestSupport.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

Q_DECLARE_METATYPE(std::optional<double>)

namespace {

// A 200 x 400 point device (400 x 800 pixels at 2x) in a Simulator window
// whose desktop frame is (100, 50, 300, 434): the screen spans x 150...350 and
// y 50...450, the title strip lies above 450, the letterbox left and right.
struct Recorder : ModelFixture
{
    Recorder()
    {
        // Window-server bounds have their origin at the top left of the 900-high screen.
        platform->windows = {{QStringLiteral("Simulator"), 0, QRectF(100, 900 - 484, 300, 434)}};
        arrange(*model).recorderPreviewPixelSize = QSizeF(400, 800);
        arrange(*model).recorderPreviewScale = 2.0;
    }

    void startRecording(ReferenceSeconds at = 1000)
    {
        arrange(*model).isRecordingFlow = true;
        arrange(*model).lastRecordedActionAt = at;
        model->startSimulatorEventMonitoring();
    }

    void press(QPointF point, ReferenceSeconds at) { model->handleSimulatorMouseEvent({MouseEventType::leftMouseDown, point}, at); }
    void release(QPointF point, ReferenceSeconds at) { model->handleSimulatorMouseEvent({MouseEventType::leftMouseUp, point}, at); }

    QStringList pending() const
    {
        QStringList identities;
        for (const OperationDraft &operation : model->pendingOperations())
            identities.append(operation.identity());
        return identities;
    }
};

const QPointF centre(250, 250);    // device (100, 200)
const QPointF titleStrip(250, 470);
const QPointF letterbox(120, 250);

} // namespace

class FlowRecordingTest : public QObject
{
    Q_OBJECT

private slots:
    void waitBeforeAnAction_data()
    {
        QTest::addColumn<double>("gap");
        QTest::addColumn<std::optional<double>>("expected");
        QTest::newRow("0.59 s: no wait") << 0.59 << std::optional<double>();
        QTest::newRow("0.6 s") << 0.6 << std::optional(0.6);
        QTest::newRow("1.26 s: one decimal") << 1.26 << std::optional(1.3);
        QTest::newRow("1.25 s: half away from zero") << 1.25 << std::optional(1.3);
        QTest::newRow("75 s: capped") << 75.0 << std::optional(60.0);
    }

    void waitBeforeAnAction()
    {
        QFETCH(double, gap);
        QFETCH(std::optional<double>, expected);
        Recorder r;
        r.startRecording(1000);
        const std::optional<OperationDraft> wait = r.model->recordedDelayOperation(1000 + gap);
        QCOMPARE(wait.has_value(), expected.has_value());
        if (expected)
            QCOMPARE(*wait, OperationDraft::wait(*expected));
        arrange(*r.model).isRecordingFlow = false;
        QVERIFY(!r.model->recordedDelayOperation(1000 + gap));
    }

    void clickThroughTheMonitorRecordsATap()
    {
        Recorder r;
        r.platform->accessibilityTrusted = false; // recording goes on, the status says where to allow it
        r.startRecording(ReferenceDate::now());
        QVERIFY(r.platform->mouseHandler);
        QVERIFY(r.model->simulatorEventRecordingStatus().contains("Privacy & Security > Accessibility"));
        QCOMPARE(r.platform->accessibilityRequests, 1); // the desktop's prompt, once, when recording starts
        r.platform->sendMouse(MouseEventType::leftMouseDown, centre);
        r.platform->sendMouse(MouseEventType::leftMouseUp, centre + QPointF(3, 3));
        QCOMPARE(r.pending(), QStringList{"tap-100-200"});
        QCOMPARE(r.model->simulatorEventRecordingStatus(), QStringLiteral("Recorded Tap 100, 200"));
        QVERIFY(!r.model->simulatorMouseDown());
    }

    // The scripted recorder enters its taps itself: no monitor, no prompt.
    void frontWithoutDesktopClicksInstallsNoMonitor()
    {
        Recorder r;
        r.model->setObservesDesktopClicks(false);
        r.startRecording(ReferenceDate::now());
        QVERIFY(r.model->isRecordingFlow());
        QVERIFY(!r.platform->mouseHandler);
        QVERIFY(!r.model->simulatorEventMonitorInstalled());
        QCOMPARE(r.platform->accessibilityRequests, 0);
    }

    void pressOffTheScreenCancelsThePendingPress_data()
    {
        QTest::addColumn<QPointF>("offScreen");
        QTest::newRow("title strip") << titleStrip;
        QTest::newRow("letterbox") << letterbox;
    }

    void pressOffTheScreenCancelsThePendingPress()
    {
        QFETCH(QPointF, offScreen);
        Recorder r;
        r.startRecording(1000);
        r.press(centre, 1000.1);
        r.press(offScreen, 1000.2);
        QVERIFY(!r.model->simulatorMouseDown());
        r.release(centre, 1000.3);
        QVERIFY(r.pending().isEmpty());
    }

    void nothingIsRecordedWithout_data()
    {
        QTest::addColumn<QString>("missing");
        QTest::newRow("recording") << "recording";
        QTest::newRow("preview") << "preview";
        QTest::newRow("window") << "window";
        QTest::newRow("press") << "press";
    }

    void nothingIsRecordedWithout()
    {
        QFETCH(QString, missing);
        Recorder r;
        r.startRecording(1000);
        if (missing == "recording")
            arrange(*r.model).isRecordingFlow = false;
        if (missing == "preview")
            arrange(*r.model).recorderPreviewPixelSize = QSizeF(0, 0);
        if (missing == "window")
            r.platform->windows.clear();
        if (missing != "press")
            r.press(centre, 1000.1);
        r.release(centre, 1000.2);
        QVERIFY(r.pending().isEmpty());
    }

    // A desktop without a display to watch says so in the status line.
    void desktopWithoutMonitorSaysWhy()
    {
        Recorder r;
        r.platform->canInstallMonitor = false;
        r.platform->monitorProblem = QStringLiteral("Recording clicks needs an X11 display (set DISPLAY).");
        r.startRecording(1000);
        QVERIFY(!r.model->simulatorEventMonitorInstalled());
        QCOMPARE(r.model->simulatorEventRecordingStatus(), *r.platform->monitorProblem);
    }

    void replacingTheProjectEndsTheRecording()
    {
        Recorder r;
        r.model->loadSavedProject();
        r.startRecording(1000);
        arrange(*r.model).pendingOperations = {OperationDraft::tap(1, 1)};
        r.model->startNewProject("Next");
        QVERIFY(!r.model->isRecordingFlow() && !r.model->lastRecordedActionAt() && !r.platform->mouseHandler);
        QVERIFY(r.model->pendingOperations().isEmpty());
    }

    void resetKeepsTheRecordingButNotTheFlow()
    {
        Recorder r;
        r.startRecording(1000);
        const QString manual = r.model->manualCaptureDirectory();
        TestSupport::writeFile(manual + "/01-home.png", "png");
        arrange(*r.model).project.screens.append(ScreenDraft{.name = "home"});
        r.model->upsertManualScreen(1, "home", "01-home.png");
        arrange(*r.model).project.manualCaptureIndex = 2;
        arrange(*r.model).pendingOperations = {OperationDraft::tap(1, 1)};
        QVERIFY(r.model->canResetRecordedFlow());

        r.model->resetRecordedFlow();
        QVERIFY(r.model->isRecordingFlow());
        QVERIFY(r.platform->mouseHandler);
        QVERIFY(r.model->lastRecordedActionAt() && *r.model->lastRecordedActionAt() > 1000);
        QVERIFY(!QFileInfo::exists(manual + "/01-home.png")); // the user's own files: CheckpointsTest
        QVERIFY(r.model->project().screens.isEmpty() && r.model->manualScreens().isEmpty());
        QCOMPARE(r.model->project().manualCaptureIndex, 1);
        QVERIFY(!r.model->canResetRecordedFlow());

        r.model->stopFlowRecording();
        arrange(*r.model).lastManualCaptureURL = manual + "/gone.png";
        QVERIFY(r.model->canResetRecordedFlow());
        r.model->resetRecordedFlow();
        QVERIFY(!r.model->isRecordingFlow() && !r.model->lastRecordedActionAt() && !r.platform->mouseHandler);
    }
};

VANTREL_TEST(FlowRecordingTest);
#include "FlowRecordingTest.moc"
