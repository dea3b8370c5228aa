// What the X11 adapter makes of the server's facts: stacking order to the
// front-to-back window list the Simulator is found in, the flip to the
// bottom-left desktop convention, the work area, and the filter that keeps
// clicks on this process's own windows out of a recording.

#include "TestSupport.h"

#include "platform/linux/X11DesktopRules.h"
#include "simulator/SimulatorWindowLocator.h"

#include <QTest>

using namespace X11DesktopRules;

namespace {

X11TopLevel window(quint32 id, const QString &wmClass, QRect client, quint32 pid = 0)
{
    X11TopLevel w;
    w.frame = w.client = id;
    w.frameBounds = w.clientBounds = client;
    w.wmClass = wmClass;
    w.pid = pid;
    w.viewable = true;
    return w;
}

// A window inside a window manager's frame with a 24-pixel title bar.
X11TopLevel framed(quint32 frame, quint32 client, const QString &wmClass, QRect clientBounds, quint32 pid = 0)
{
    X11TopLevel w = window(client, wmClass, clientBounds, pid);
    w.frame = frame;
    w.frameBounds = clientBounds.adjusted(0, -24, 0, 0);
    return w;
}

QStringList owners(const QList<RawWindowInfo> &windows)
{
    QStringList names;
    for (const RawWindowInfo &w : windows)
        names.append(QStringLiteral("%1@%2").arg(w.ownerName).arg(w.layer));
    return names;
}

} // namespace

Q_DECLARE_METATYPE(QList<X11TopLevel>)

class X11DesktopRulesTest : public QObject
{
    Q_OBJECT

private slots:
    void windowListIsFrontToBack_data()
    {
        QTest::addColumn<QList<X11TopLevel>>("bottomToTop");
        QTest::addColumn<QStringList>("expected");

        const X11TopLevel terminal = window(1, "XTerm", QRect(0, 0, 600, 400));
        const X11TopLevel simulator = window(2, "Simulator", QRect(100, 50, 400, 886));
        X11TopLevel hidden = window(3, "Simulator", QRect(0, 0, 400, 886));
        hidden.viewable = false; // minimised or on another desktop
        X11TopLevel inputOnly = window(4, "Qt", QRect(0, 0, 1, 1));
        inputOnly.inputOnly = true;
        X11TopLevel background = window(5, "Desktop", QRect(0, 0, 1280, 1024));
        background.kind = X11TopLevel::Kind::desktop;
        X11TopLevel panel = window(6, "Panel", QRect(0, 0, 1280, 30));
        panel.kind = X11TopLevel::Kind::dock;
        X11TopLevel menu = window(7, "Simulator", QRect(120, 80, 200, 300));
        menu.overrideRedirect = true;

        QTest::newRow("top of the stack comes first") << QList{terminal, simulator} << QStringList{"Simulator@0", "XTerm@0"};
        QTest::newRow("hidden, input-only and desktop windows left out")
            << QList{background, hidden, inputOnly, simulator} << QStringList{"Simulator@0"};
        QTest::newRow("docks and pop-ups above the normal layer")
            << QList{simulator, panel, menu} << QStringList{"Simulator@101", "Panel@20", "Simulator@0"};
        QTest::newRow("no windows") << QList<X11TopLevel>{} << QStringList{};
    }

    void windowListIsFrontToBack()
    {
        QFETCH(QList<X11TopLevel>, bottomToTop);
        QFETCH(QStringList, expected);
        QCOMPARE(owners(rawWindows(visibleFrontToBack(bottomToTop))), expected);
    }

    // The X server's facts through the core rule: the front-most Simulator
    // client area, flipped against the root window's height. (Pointer
    // positions take the same flip; ClickRecordingTest clicks through it.)
    void simulatorFrameFromTheStack()
    {
        const X11TopLevel back = framed(10, 11, "Simulator", QRect(700, 100, 400, 886));
        const X11TopLevel front = framed(20, 21, "Simulator", QRect(100, 50, 400, 886));
        const X11TopLevel small = window(30, "Simulator", QRect(0, 0, 100, 500));
        const QList<RawWindowInfo> windows = rawWindows(visibleFrontToBack({back, front, small}));
        QCOMPARE(windows.first().bounds, std::optional(QRectF(0, 0, 100, 500)));
        QCOMPARE(SimulatorWindowLocator::windowFrame(windows, QRectF(0, 0, 1280, 1024)),
                 std::optional(QRectF(100, 1024 - 936, 400, 886)));
    }

    void ownWindowFilter_data()
    {
        QTest::addColumn<QPointF>("pointer");
        QTest::addColumn<quint32>("pid");
        QTest::addColumn<bool>("expected");
        // Bottom to top: the Simulator (pid 200), our panel (pid 100) over its
        // right part, our main window (known by id only) further right.
        QTest::newRow("on the Simulator") << QPointF(150, 300) << quint32(100) << false;
        QTest::newRow("on our panel over the Simulator") << QPointF(450, 300) << quint32(100) << true;
        QTest::newRow("on our panel's title bar") << QPointF(450, 190) << quint32(100) << true;
        QTest::newRow("on our window known by id") << QPointF(1000, 300) << quint32(100) << true;
        QTest::newRow("on the bare desktop") << QPointF(1200, 900) << quint32(100) << false;
        QTest::newRow("another process's panel") << QPointF(450, 300) << quint32(300) << false;
    }

    void ownWindowFilter()
    {
        QFETCH(QPointF, pointer);
        QFETCH(quint32, pid);
        QFETCH(bool, expected);
        const X11TopLevel simulator = framed(10, 11, "Simulator", QRect(100, 100, 400, 886), 200);
        const X11TopLevel panel = framed(20, 21, "vantrel-app", QRect(400, 200, 300, 500), 100);
        const X11TopLevel main = framed(30, 31, "vantrel-app", QRect(900, 100, 300, 400));
        const QList<X11TopLevel> frontToBack = visibleFrontToBack({simulator, panel, main});
        QCOMPARE(isOverOwnWindow(pointer, frontToBack, pid, {31}), expected);
    }

    void workAreaOfTheCurrentDesktop_data()
    {
        QTest::addColumn<QList<quint32>>("values");
        QTest::addColumn<quint32>("desktop");
        QTest::addColumn<QRect>("expected");
        const QRect whole(0, 0, 1280, 1024);
        QTest::newRow("no window manager") << QList<quint32>{} << quint32(0) << whole;
        QTest::newRow("a top panel") << QList<quint32>{0, 30, 1280, 994} << quint32(0) << QRect(0, 30, 1280, 994);
        QTest::newRow("second desktop") << QList<quint32>{0, 30, 1280, 994, 60, 0, 1220, 1024} << quint32(1)
                                        << QRect(60, 0, 1220, 1024);
        QTest::newRow("desktop beyond the list") << QList<quint32>{0, 30, 1280, 994} << quint32(3) << whole;
        QTest::newRow("area beyond the screen") << QList<quint32>{0, 0, 2560, 1024} << quint32(0) << whole;
    }

    void workAreaOfTheCurrentDesktop()
    {
        QFETCH(QList<quint32>, values);
        QFETCH(quint32, desktop);
        QFETCH(QRect, expected);
        QCOMPARE(workArea(values, desktop, QSize(1280, 1024)), expected);
    }

    void classNameOfWmClass_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<QString>("expected");
        QTest::newRow("instance and class") << QByteArray("devicesim\0Simulator\0", 20) << "Simulator";
        QTest::newRow("no final zero") << QByteArray("xterm\0XTerm", 11) << "XTerm";
        QTest::newRow("instance only") << QByteArray("lonely") << "";
        QTest::newRow("unset") << QByteArray() << "";
    }

    void classNameOfWmClass()
    {
        QFETCH(QByteArray, property);
        QFETCH(QString, expected);
        QCOMPARE(wmClassName(property), expected);
    }
};

VANTREL_TEST(X11DesktopRulesTest);
#include "X11DesktopRulesTest.moc"
