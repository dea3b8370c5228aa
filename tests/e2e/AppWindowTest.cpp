// The desktop application for real, on a private X11 display beside the
// stand-in's Simulator window: the Vantrel window shows, Ctrl+R brings up
// the floating recorder panel beside the Simulator, Ctrl+S saves
// checkpoints, a click in the Simulator window is recorded as a tap, and
// Ctrl+Q quits. Keys and clicks come from xdotool, as from a person.

#include "DemoOnScreen.h"
#include "E2ESupport.h"
#include "TestSupport.h"
#include "XDisplay.h"

#include <QRegularExpression>
#include <QTest>

using namespace E2E;

namespace {

// vantrel-app in a world of its own; ended when the test ends early.
class RunningApp
{
public:
    RunningApp(const DeviceWorld &world, const QHash<QString, QString> &extra)
    {
        world.start(m_process, TestSupport::appBinary(), {}, extra);
    }

    // The exit status once it ended by itself; -1 when it crashed or still runs.
    int waitForExit() { return m_process.exitStatusWithin(30000); }

    QString errors() { return QString::fromUtf8(m_process.readAllStandardError()); }
    void terminate() { m_process.terminate(); } // SIGTERM

private:
    OwnedProcess m_process;
};

} // namespace

class AppWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real developer tools would answer instead of the device stand-in");
    }

    void recordsAClickThroughTheShortcuts()
    {
        XDisplay display;
        if (!display.problem().isEmpty())
            QSKIP(qPrintable(display.problem()));
        DeviceWorld world;
        QHash<QString, QString> env = privateDesktop(world, display);

        QProcess simulator;
        world.start(simulator, TestSupport::devicesimBinary(), {"window"}, env);
        const QStringList simulators = display.waitForWindows("Simulator");
        QVERIFY2(simulators.size() == 1, qPrintable(QString::fromUtf8(simulator.readAllStandardError())));
        const QString simulatorWindow = simulators.first();
        QVERIFY(display.moveWindow(simulatorWindow, QPoint(820, 40)));
        const QRect simulatorFrame = display.geometry(simulatorWindow);

        // The tests themselves draw offscreen; the application is on the display.
        env.insert("QT_QPA_PLATFORM", "xcb");
        RunningApp app(world, env);
        const QStringList windows = display.waitForTitle("^Vantrel");
        QVERIFY2(windows.size() == 1, qPrintable(app.errors()));
        const QString window = windows.first();
        // Start-up attaches the booted iPhone and picks the demo app: the
        // title names the project after it.
        QVERIFY2(!display.waitForTitle(QStringLiteral("^Vantrel \u2014 %1$").arg(demoAppName)).isEmpty(),
                 qPrintable(display.xdotool({"getwindowname", window}).out));

        // The last steps of start-up may still be talking to the Simulator,
        // and a shortcut pressed meanwhile is ignored (its action waits for
        // the running one), as it would be for a person, who presses again.
        for (int attempt = 0; attempt < 4 && !display.hasWindowTitled("^Recorder$"); ++attempt) {
            display.pressKeys(window, "ctrl+r");
            eventually([&] { return display.hasWindowTitled("^Recorder$"); }, 5000);
        }
        const QStringList recorders = display.waitForTitle("^Recorder$", 1000);
        QVERIFY2(recorders.size() == 1, qPrintable(app.errors()));
        const QString recorder = recorders.first();
        // Beside the Simulator window, tops level, never over it.
        QVERIFY2(eventually([&] { return display.geometry(recorder).top() == simulatorFrame.top(); }, 5000),
                 qPrintable(QStringLiteral("recorder %1, Simulator %2")
                                .arg(QVariant(display.geometry(recorder)).toString(),
                                     QVariant(simulatorFrame).toString())));
        const QRect panel = display.geometry(recorder);
        QCOMPARE(panel.size(), QSize(460, 760));
        QVERIFY(!panel.intersects(simulatorFrame));
        QVERIFY(panel.right() < simulatorFrame.left() || panel.left() > simulatorFrame.right());
        // Showing it took no keyboard from the Vantrel window.
        QCOMPARE(display.xdotool({"getwindowfocus"}).out.trimmed(), window);

        display.pressKeys(window, "ctrl+s");
        QVERIFY2(eventually([&] { return world.checkpointFiles().size() == 1; }), qPrintable(app.errors()));

        // A click on the panel is not the app's navigation; the click on the
        // Explore tab in the Simulator window is.
        display.click(panel.topLeft() + QPoint(panel.width() / 2, 120));
        display.xdotool({"windowraise", simulatorWindow});
        display.click(pixelFor(QPointF(147, 790), simulatorFrame));
        QVERIFY(waitForDemo(world, [](const QJsonObject &s) { return s["tab"] == "explore"; }));
        // The Simulator window has the keyboard after the click, and, as on a
        // Mac, Vantrel's shortcuts reach only its own windows: the user
        // brings the Vantrel window forward (or clicks the panel's Save
        // Checkpoint) to save.
        display.pressKeys(window, "ctrl+s");
        QVERIFY2(eventually([&] { return world.checkpointFiles().size() == 2; }), qPrintable(app.errors()));
        const QStringList actions = screenActions(world.savedProject());
        QCOMPARE(actions.size(), 2);
        QVERIFY2(actions[0].isEmpty(), qPrintable(actions[0]));
        QVERIFY2(QRegularExpression("^tap 14[6-8] 79[01]$").match(actions[1]).hasMatch(), qPrintable(actions[1]));
        QCOMPARE(world.checkpointFiles(), (QStringList{"01-my-trips.png", "02-explore.png"}));

        display.pressKeys(window, "ctrl+r");
        QVERIFY(eventually([&] { return !display.hasWindowTitled("^Recorder$"); }));
        display.pressKeys(window, "ctrl+q");
        QCOMPARE(app.waitForExit(), 0);
        QCOMPARE(world.checkpointFiles().size(), qsizetype(2));

        simulator.terminate();
        QVERIFY(simulator.waitForFinished(10000));
    }

    // Ctrl+Q or SIGTERM while a build runs: the run is cancelled, its build
    // ended, and the application quits (normally, or with 130 for the
    // signal), leaving no process behind.
    void quittingDuringARunCancelsIt_data()
    {
        QTest::addColumn<bool>("bySignal");
        QTest::addColumn<int>("status");
        QTest::newRow("Ctrl+Q") << false << 0;
        QTest::newRow("SIGTERM") << true << 130;
    }

    void quittingDuringARunCancelsIt()
    {
        QFETCH(bool, bySignal);
        QFETCH(int, status);
        XDisplay display;
        if (!display.problem().isEmpty())
            QSKIP(qPrintable(display.problem()));
        DeviceWorld world;
        QHash<QString, QString> env = privateDesktop(world, display);
        QCOMPARE(world.vantrel({"attach"}, env).status, 0);
        QCOMPARE(world.record("checkpoint home\ntap 147 790\ncheckpoint explore\nstop\n", env).status, 0);
        QCOMPARE(world.devicesim({"fault", "set", "slow-build", "60"}).status, 0);

        env.insert("QT_QPA_PLATFORM", "xcb");
        RunningApp app(world, env);
        const QStringList windows = display.waitForTitle(QStringLiteral("^Vantrel \u2014 %1$").arg(demoAppName));
        QVERIFY2(windows.size() == 1, qPrintable(app.errors()));
        // Ctrl+G is ignored while start-up still talks to the Simulator.
        for (int attempt = 0; attempt < 4 && world.runningBuilds().isEmpty(); ++attempt) {
            display.pressKeys(windows.first(), "ctrl+g");
            eventually([&] { return !world.runningBuilds().isEmpty(); }, 5000);
        }
        QCOMPARE(world.runningBuilds().size(), 1);

        if (bySignal)
            app.terminate();
        else
            display.pressKeys(windows.first(), "ctrl+q");
        QCOMPARE(app.waitForExit(), status);
        QVERIFY2(world.runningBuilds().isEmpty(), qPrintable(world.runningBuilds().join("\n")));
        // The device has its own status bar back: no override is left.
        QVERIFY(world.xcrun({"simctl", "status_bar", iPhoneUdid, "list"}).out.endsWith("=\n"));
    }
};

VANTREL_TEST(AppWindowTest);
#include "AppWindowTest.moc"
