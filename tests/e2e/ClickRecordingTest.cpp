// Recording by clicks for real, on a private X11 display: the stand-in's
// Simulator window shows the demo app, `vantrel record --clicks` listens
// to the desktop, and xdotool clicks and drags at points computed from the
// window's geometry while checkpoints are saved on standard input.

#include "DemoOnScreen.h"
#include "E2ESupport.h"
#include "TestSupport.h"
#include "XDisplay.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>
#include <csignal>
#include <functional>

using namespace E2E;

namespace {

// `vantrel record --clicks` with its standard input held by the test.
class LiveRecorder
{
public:
    LiveRecorder(const DeviceWorld &world, const QHash<QString, QString> &extra)
    {
        world.start(m_process, TestSupport::vantrelBinary(), {"record", "--clicks"}, extra);
    }

    void send(const QByteArray &line) { m_process.write(line + "\n"); }

    // The next line of output (after those already taken) that matches
    // `pattern`; an empty match when none came in time.
    QRegularExpressionMatch next(const QString &pattern, QStringList *skipped = nullptr)
    {
        const QRegularExpression expression(pattern);
        QDeadlineTimer deadline(30000);
        for (;;) {
            while (m_taken < m_lines.size()) {
                const QString line = m_lines.at(m_taken++);
                const QRegularExpressionMatch match = expression.match(line);
                if (match.hasMatch())
                    return match;
                if (skipped)
                    skipped->append(line);
            }
            if (deadline.hasExpired() || m_process.state() == QProcess::NotRunning)
                return {};
            m_process.waitForReadyRead(100);
            readLines();
        }
    }

    // A status round trip: every event sent to the recorder before it has been handled.
    void sync()
    {
        send("status");
        next("^Next checkpoint: ");
    }

    bool checkpoint()
    {
        send("checkpoint");
        return next("^Saved checkpoint ").hasMatch();
    }

    int finish()
    {
        m_process.closeWriteChannel();
        const int status = m_process.exitStatusWithin(60000);
        readLines();
        return status;
    }

    QString output() const { return m_lines.join("\n"); }
    QString errors() { return QString::fromUtf8(m_process.readAllStandardError()); }

private:
    void readLines()
    {
        m_pending += QString::fromUtf8(m_process.readAllStandardOutput());
        for (qsizetype end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n')) {
            m_lines.append(m_pending.left(end));
            m_pending.remove(0, end + 1);
        }
    }

    OwnedProcess m_process;
    QStringList m_lines;
    QString m_pending;
    qsizetype m_taken = 0;
};

QPointF tapPoint(const QRegularExpressionMatch &recorded)
{
    return {recorded.captured(1).toDouble(), recorded.captured(2).toDouble()};
}

} // namespace

class ClickRecordingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (TestSupport::realToolShadowsStandIn())
            QSKIP("real developer tools would answer instead of the device stand-in");
    }

    // Without a display nothing can be clicked: recording by clicks says so
    // and leaves the recorded flow alone.
    void clicksNeedADisplay()
    {
        DeviceWorld world;
        QCOMPARE(world.vantrel({"attach"}).status, 0);
        QCOMPARE(world.record("checkpoint\n", world.privateHome()).status, 0);
        const Run run = world.vantrel({"record", "--clicks"}, world.privateHome());
        QCOMPARE(run.status, 1);
        QCOMPARE(run.err, QStringLiteral("Recording clicks needs an X11 display (set DISPLAY).\n"));
        QCOMPARE(world.savedProject()["screens"].toArray().size(), 1);
    }

    void clicksAndDragsInTheSimulatorWindowAreRecorded()
    {
        XDisplay display;
        if (!display.problem().isEmpty())
            QSKIP(qPrintable(display.problem()));
        DeviceWorld world;
        QHash<QString, QString> env = privateDesktop(world, display);
        QCOMPARE(world.vantrel({"attach"}, env).status, 0);

        QProcess simulator;
        world.start(simulator, TestSupport::devicesimBinary(), {"window"}, env);
        const QStringList windows = display.waitForWindows("Simulator");
        QVERIFY2(windows.size() == 1, qPrintable(QString::fromUtf8(simulator.readAllStandardError())));
        const QString window = windows.first();
        // WM_CLASS "Simulator" as the instance name too.
        QCOMPARE(display.xdotool({"search", "--onlyvisible", "--classname", "^Simulator$"}).out.trimmed(), window);
        QCOMPARE(display.xdotool({"getwindowname", window}).out.trimmed(), QStringLiteral("iPhone 15 Pro \u2013 iOS 17.5"));
        QVERIFY(display.moveWindow(window, QPoint(40, 20)));

        LiveRecorder recorder(world, env);
        QVERIFY2(recorder.next("^Recording real Simulator clicks\\.").hasMatch(), qPrintable(recorder.errors()));
        QVERIFY(recorder.next("^Recording\\. One command per line").hasMatch());
        QVERIFY(recorder.checkpoint());

        // A tap on the Explore tab.
        QRect frame = display.geometry(window);
        QPoint pixel = pixelFor(QPointF(147, 790), frame);
        display.click(pixel);
        QRegularExpressionMatch recorded = recorder.next("^Recorded Tap (\\d+), (\\d+)$");
        QVERIFY2(recorded.hasMatch(), qPrintable(recorder.output()));
        QVERIFY2(within1(tapPoint(recorded), pointAt(pixel, frame)), qPrintable(recorded.captured()));
        QVERIFY(waitForDemo(world, [](const QJsonObject &s) { return s["tab"] == "explore"; }));
        QVERIFY(recorder.checkpoint());

        // The window moves; the next tap (Settings) is found at its new place.
        QVERIFY(display.moveWindow(window, QPoint(600, 90)));
        frame = display.geometry(window);
        pixel = pixelFor(QPointF(343, 790), frame);
        display.click(pixel);
        recorded = recorder.next("^Recorded Tap (\\d+), (\\d+)$");
        QVERIFY2(within1(tapPoint(recorded), pointAt(pixel, frame)), qPrintable(recorded.captured()));
        QVERIFY(waitForDemo(world, [](const QJsonObject &s) { return s["tab"] == "settings"; }));
        QVERIFY(recorder.checkpoint());

        // A vertical drag scrolls the settings up.
        const QPoint from = pixelFor(QPointF(196, 600), frame);
        const QPoint to = pixelFor(QPointF(196, 250), frame);
        display.xdotool({"mousemove", QString::number(from.x()), QString::number(from.y()), "mousedown", "1"});
        recorder.sync(); // the press is read where it happened
        for (int step = 1; step <= 5; ++step) {
            const QPoint at = from + (to - from) * step / 5;
            display.xdotool({"mousemove", QString::number(at.x()), QString::number(at.y())});
        }
        display.xdotool({"mouseup", "1"});
        recorded = recorder.next("^Recorded Swipe (\\d+),(\\d+) to (\\d+),(\\d+) in [0-9.]+s$");
        QVERIFY2(recorded.hasMatch(), qPrintable(recorder.output()));
        QVERIFY(within1(tapPoint(recorded), pointAt(from, frame)));
        QVERIFY(within1({recorded.captured(3).toDouble(), recorded.captured(4).toDouble()}, pointAt(to, frame)));
        QVERIFY(waitForDemo(world, [](const QJsonObject &s) { return !s["scroll"].toObject().isEmpty(); }));

        // Clicks on the bare desktop and on the title strip record nothing;
        // the tap on the My Trips tab after them is the next thing recorded.
        display.click(QPoint(20, 1000));
        display.click(QPoint(frame.center().x(), frame.top() + 10));
        pixel = pixelFor(QPointF(49, 790), frame);
        display.click(pixel);
        QStringList between;
        recorded = recorder.next("^Recorded ", &between);
        QVERIFY2(recorded.hasMatch() && between.isEmpty(), qPrintable(recorder.output()));
        QVERIFY(waitForDemo(world, [](const QJsonObject &s) { return s["tab"] == "trips"; }));
        QVERIFY(recorder.checkpoint());
        recorder.send("stop");
        QCOMPARE(recorder.finish(), 0);
        QVERIFY2(recorder.output().endsWith("Stopped recording: 4 checkpoints, 4 recorded actions."),
                 qPrintable(recorder.output()));

        const QStringList actions = screenActions(world.savedProject());
        QCOMPARE(actions.size(), 4);
        QVERIFY(actions[0].isEmpty());
        QVERIFY2(QRegularExpression("^tap 14[6-8] 79[01]$").match(actions[1]).hasMatch(), qPrintable(actions[1]));
        QVERIFY2(QRegularExpression("^tap 34[2-4] 79[01]$").match(actions[2]).hasMatch(), qPrintable(actions[2]));
        QVERIFY2(QRegularExpression("^swipe 19[5-7] (599|60[01]) 19[5-7] 2(49|5[01]), tap (4[89]|50) 79[01]$")
                     .match(actions[3])
                     .hasMatch(),
                 qPrintable(actions[3]));

        // The reference images show the screens the clicks opened: their
        // names are read from the screen text.
        QCOMPARE(world.checkpointFiles(),
                 (QStringList{"01-my-trips.png", "02-explore.png", "03-settings.png", "04-my-trips.png"}));

        // The window ends on SIGTERM.
        simulator.terminate();
        QVERIFY(simulator.waitForFinished(10000));
    }

    // `open -a Simulator` shows the window once, in a process of its own.
    void openShowsTheWindowOnce()
    {
        XDisplay display;
        if (!display.problem().isEmpty())
            QSKIP(qPrintable(display.problem()));
        DeviceWorld world;
        const QStringList open{"open", "-a", "Simulator", "--args", "-CurrentDeviceUDID", iPhoneUdid};
        QCOMPARE(world.devicesim(open, display.environment()).status, 0);
        const QStringList windows = display.waitForWindows("Simulator");
        QCOMPARE(windows.size(), 1);
        QCOMPARE(world.devicesim(open, display.environment()).status, 0);
        QCOMPARE(display.waitForWindows("Simulator"), windows);
        const Run another = world.devicesim({"window"}, display.environment());
        QCOMPARE(another.status, 1);
        QVERIFY2(another.err.contains("the Simulator window is open already"), qPrintable(another.err));

        const qint64 pid = display.xdotool({"getwindowpid", windows.first()}).out.trimmed().toLongLong();
        QVERIFY(pid > 0);
        ::kill(pid_t(pid), SIGTERM);
        QDeadlineTimer deadline(10000);
        while (::kill(pid_t(pid), 0) == 0 && !deadline.hasExpired())
            QTest::qWait(50);
        QVERIFY(::kill(pid_t(pid), 0) != 0);
    }

    // The display goes away mid-recording: the recording stops and says
    // why, and the checkpoint saved before stays.
    void displayThatGoesAwayStopsTheRecording()
    {
        XDisplay display;
        if (!display.problem().isEmpty())
            QSKIP(qPrintable(display.problem()));
        DeviceWorld world;
        QHash<QString, QString> env = privateDesktop(world, display);
        QCOMPARE(world.vantrel({"attach"}, env).status, 0);
        LiveRecorder recorder(world, env);
        QVERIFY2(recorder.next("^Recording\\. One command per line").hasMatch(), qPrintable(recorder.errors()));
        QVERIFY(recorder.checkpoint());
        display.shutDown();
        QVERIFY(recorder.next("^Stopped recording: 1 checkpoints, 0 recorded actions\\.$").hasMatch());
        QCOMPARE(recorder.finish(), 1);
        QVERIFY(recorder.errors().contains("The connection to the X11 display was lost. Recording stopped; the "
                                           "checkpoints saved so far are kept.\n"));
        QCOMPARE(world.savedProject()["screens"].toArray().size(), 1);
    }
};

VANTREL_TEST(ClickRecordingTest);
#include "ClickRecordingTest.moc"
