#include "WindowCommand.h"

#include "Pause.h"
#include "SimulatorWindow.h"
#include "StateStore.h"
#include "ToolFailure.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QLockFile>
#include <QProcess>
#include <QTimer>

namespace WindowCommand {

namespace {

const char *needsDisplay = "devicesim: the Simulator window needs an X11 display (set DISPLAY)\n";

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY");
}

// One window per state folder, as there is one Simulator app on a Mac.
QString lockPath()
{
    return QDir(StateStore::home()).filePath(QStringLiteral("window.lock"));
}

} // namespace

bool isRequested(const QString &personality, int argc, char **argv)
{
    const bool asDevicesim = personality != QLatin1String("xcrun") && personality != QLatin1String("xcodebuild")
                             && personality != QLatin1String("open");
    return asDevicesim && argc > 1 && qstrcmp(argv[1], "window") == 0;
}

void prepareApplication()
{
    // The recorder finds the window by its WM_CLASS: "Simulator" as the
    // instance name here, and as the class name from the application name.
    qputenv("RESOURCE_NAME", "Simulator");
    // Without a reachable display the application still starts (offscreen)
    // so that the command can say why no window opens.
    qputenv("QT_QPA_PLATFORM", hasDisplay() ? "xcb;offscreen" : "offscreen");
}

int run(const QStringList &arguments)
{
    if (arguments.size() > 1)
        throw ToolFailure{QStringLiteral("devicesim: window takes at most one UDID (see devicesim --help)\n"), 64};
    if (!hasDisplay() || QGuiApplication::platformName() != QLatin1String("xcb"))
        throw ToolFailure{QString::fromLatin1(needsDisplay), 1};
    const World world = StateStore::read(); // the default world on first use
    const QString udid = arguments.value(0);
    if (!udid.isEmpty() && !world.device(udid))
        throw ToolFailure{QStringLiteral("devicesim: no device %1\n").arg(udid), 1};

    // Taken before the application is renamed: the lock records the
    // program's own name, which is how a later check knows it is alive.
    QLockFile lock(lockPath());
    if (!lock.tryLock(0)) {
        qint64 pid = 0;
        lock.getLockInfo(&pid, nullptr, nullptr);
        throw ToolFailure{QStringLiteral("devicesim: the Simulator window is open already (process %1)\n").arg(pid), 1};
    }
    QCoreApplication::setApplicationName(QStringLiteral("Simulator"));

    SimulatorWindow window(udid);
    window.refresh();
    window.show();
    // SIGTERM and SIGINT only set a flag (see Pause); the window closes
    // when it notices, and the caller then ends as the signal asked.
    QTimer termination;
    QObject::connect(&termination, &QTimer::timeout, [] {
        if (Pause::terminationRequested())
            QCoreApplication::quit();
    });
    termination.start(100);
    QGuiApplication::exec();
    return 0;
}

void openDetached()
{
    if (!hasDisplay())
        return;
    {
        QLockFile lock(lockPath());
        if (!QDir().mkpath(StateStore::home()) || !lock.tryLock(0))
            return; // open already (or nowhere to keep the state)
    }
    // A process of its own, with its output in the state folder: whoever
    // ran `open` reads its pipes to the end and must not wait for the window.
    QProcess window;
    window.setProgram(QCoreApplication::applicationFilePath());
    window.setArguments({QStringLiteral("window")});
    window.setStandardInputFile(QProcess::nullDevice());
    const QString log = QDir(StateStore::home()).filePath(QStringLiteral("window.log"));
    window.setStandardOutputFile(log, QIODevice::Append);
    window.setStandardErrorFile(log, QIODevice::Append);
    window.startDetached();
}

} // namespace WindowCommand
