// The floating recorder panel: a tool window on top that never takes the
// keyboard from the Simulator, always 460 x 760, beside the Simulator window
// with their tops level, following it when it moves, shown while recording.

#include "GuiFixture.h"
#include "TestSupport.h"

#include "RecordPanel.h"
#include "RecorderPanel.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QWindow>

namespace {

RawWindowInfo simulatorWindow(QRectF bounds) { return {QStringLiteral("Simulator"), 0, bounds}; }

// As a started recording leaves the model: the window shows the panel.
void startRecording(GuiFixture &f)
{
    arrange(*f.model).isRecordingFlow = true;
    f.model->notifyChanged();
    GuiTest::settle();
}

} // namespace

class RecorderPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void isAToolWindowThatNeverTakesFocus()
    {
        GuiFixture f;
        RecorderPanel *panel = f.window->recorder();
        QCOMPARE(panel->windowTitle(), QStringLiteral("Recorder"));
        const Qt::WindowFlags flags = panel->windowFlags();
        QVERIFY(flags.testFlag(Qt::Tool));
        QVERIFY(flags.testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(flags.testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(panel->testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(panel->size(), QSize(460, 760));
        QCOMPARE(panel->minimumSize(), panel->maximumSize()); // never resized
    }

    void placement_data()
    {
        QTest::addColumn<QRectF>("simulator"); // window-server bounds, origin top left; empty: none
        QTest::addColumn<QPoint>("expected");  // the panel's top left
        // Screen 1440 x 900, visible frame 1440 x 875 (a menu bar on top);
        // the margins and clamps are PreviewAndGeometryTest::panelPlacement's.
        QTest::newRow("to the right, tops level") << QRectF(100, 50, 400, 820) << QPoint(514, 50);
        QTest::newRow("near the right edge: to the left") << QRectF(1000, 50, 400, 820) << QPoint(526, 50);
        QTest::newRow("low on the screen: kept above its bottom") << QRectF(100, 400, 400, 300) << QPoint(514, 128);
        // 28 from the visible frame's right edge, 42 below its top (25 below the screen's).
        QTest::newRow("no simulator: top right") << QRectF() << QPoint(1440 - 460 - 28, 25 + 42);
    }

    void placement()
    {
        QFETCH(QRectF, simulator);
        QFETCH(QPoint, expected);
        GuiFixture f;
        if (!simulator.isEmpty())
            f.platform->windows = {simulatorWindow(simulator)};
        startRecording(f);
        QTRY_COMPARE(f.window->recorder()->pos(), expected);
    }

    void followsTheSimulatorWindow()
    {
        GuiFixture f;
        f.platform->windows = {simulatorWindow(QRectF(100, 50, 400, 820))};
        RecorderPanel *panel = f.window->recorder();
        startRecording(f);
        QTRY_COMPARE(panel->pos(), QPoint(514, 50));
        f.platform->windows = {simulatorWindow(QRectF(300, 70, 400, 820))};
        QTRY_COMPARE(panel->pos(), QPoint(714, 70));
    }

    void shownWhileRecordingWithoutTakingFocus()
    {
        GuiFixture f;
        f.platform->windows = {simulatorWindow(QRectF(100, 50, 400, 820))};
        RecorderPanel *panel = f.window->recorder();
        QVERIFY(!panel->isVisible());
        arrange(*f.model).pendingOperations = {OperationDraft::wait(1.2), OperationDraft::tap(147, 790)};
        startRecording(f);
        QVERIFY(panel->isVisible());
        // Its Stop button is the Record panel's action, which follows the
        // model while that panel is hidden (Ctrl+R from any panel).
        QCOMPARE(f.window->currentPanel(), MainWindow::setupPanel);
        QCOMPARE(f.window->record()->toggleRecordingAction()->text(), QStringLiteral("Stop &Recording"));
        QCOMPARE(panel->pendingLine()->text(), QStringLiteral("Wait 1.2s; Tap 147, 790"));
        QCOMPARE(panel->fileNamePreview()->text(), QStringLiteral("01-auto-name.png"));
        // The name typed in either place is the same name.
        panel->checkpointName()->setText(QStringLiteral("home"));
        QCOMPARE(panel->fileNamePreview()->text(), QStringLiteral("01-home.png"));

        // Typing lends the panel the keyboard only until the text is sent.
        QTest::mouseClick(panel->typedText(), Qt::LeftButton);
        QVERIFY(!panel->windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        panel->typedText()->setText(QStringLiteral("hello"));
        QTest::keyClick(panel->typedText(), Qt::Key_Return);
        QVERIFY(panel->windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        GuiTest::settle();
        QCOMPARE(f.model->lastError().value_or(QString()),
                 QStringLiteral("Attach to a booted simulator before typing."));

        arrange(*f.model).isRecordingFlow = false;
        f.model->notifyChanged();
        GuiTest::settle();
        QVERIFY(!panel->isVisible());
        QCOMPARE(f.window->record()->toggleRecordingAction()->text(), QStringLiteral("Start &Recording"));
    }
};

VANTREL_TEST(RecorderPanelTest);
#include "RecorderPanelTest.moc"
