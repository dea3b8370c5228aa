#include "DevicesimCommand.h"

#include "AppBundle.h"
#include "Console.h"
#include "DefaultWorld.h"
#include "OpenCommand.h"
#include "StateStore.h"
#include "ToolFailure.h"
#include "WindowCommand.h"
#include "XcodebuildCommand.h"
#include "XcrunCommand.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QUuid>

namespace DevicesimCommand {

namespace {

const char *helpText = R"(devicesim - a stand-in for Apple's simulator and build tools, for tests and demos

devicesim is NOT Xcode and runs no iOS code. It answers the command lines that
Vantrel sends to a Mac (xcrun simctl, xcrun --find, xcodebuild test, open -a
Simulator) over simulated devices kept in a state folder, with a demo iOS app
("Trips Café") whose screens it draws as real PNG screenshots, and, on an X11
display, in a live "Simulator" window.

Called as xcrun, xcodebuild or open (through links made by `devicesim shims`),
it behaves as that tool. The state folder is $DEVICESIM_HOME (default: a
devicesim-<uid> folder in the temporary directory).

Usage:
  devicesim init                       start over with the default world
  devicesim shims DIR                  link xcrun, xcodebuild and open in DIR to devicesim
  devicesim device add NAME RUNTIME [--udid UDID] [--boot] [--no-app] [--unavailable]
                                       add a device (RUNTIME such as iOS-17-5); prints its UDID
  devicesim device boot|shutdown UDID  change a device's state without simctl's checks
  devicesim device remove UDID|all     remove devices
  devicesim fault set app-missing UDID [BUNDLE_ID]   the app reads as not installed there
  devicesim fault set launch-fails LANGUAGE          simctl launch fails for it (e.g. pt-BR)
  devicesim fault set dialog LANGUAGE SCREEN         a Premium sheet covers that demo screen
                                       (trips, detail, explore, saved, settings)
  devicesim fault set build-fails      xcodebuild stops with a compile error
  devicesim fault set slow-build SECONDS
                                       the build takes that long (not time-scaled)
  devicesim fault set no-xcode         only the command-line tools: no xcodebuild
  devicesim fault set simctl-hangs SUBCOMMAND   simctl SUBCOMMAND never answers (and starts a child that waits too)
  devicesim fault set chatty-stderr SUBCOMMAND  simctl SUBCOMMAND writes 3 MB to standard error, then fails
  devicesim fault set no-screenshots   xcodebuild test succeeds but writes no screenshot
  devicesim fault set open-fails       open -a Simulator cannot start the Simulator app
  devicesim fault clear [KIND]         switch faults off (all, or one kind)
  devicesim fault list                 the faults that are on
  devicesim state                      print the state (JSON)
  devicesim window [UDID]              show a live "Simulator" window on the X11 display:
                                       clicks tap, drags swipe, keys type (UDID: that device;
                                       default: the one open -a Simulator chose, else the
                                       first booted one). open -a Simulator shows it too.
  devicesim xcrun|xcodebuild|open ARGS run a personality without links

Environment:
  DEVICESIM_HOME        the state folder
  DEVICESIM_TIME_SCALE  multiplies simulated pauses (0 = none; default 1)

The default world: an iPhone 15 Pro (iOS 17.5, booted, 1179x2556 @3x) with the
demo app com.vantrel.demo.Trips in front, a shut-down iPad Air 11-inch (M2), a
booted Apple Watch, an Apple TV and an unavailable iPhone 14 (iOS 16.4).
See tools/devicesim/README.md.
)";

ToolFailure devicesimUsage(const QString &message)
{
    return {QStringLiteral("devicesim: %1 (see devicesim --help)\n").arg(message), 64};
}

int init()
{
    StateStore::reset();
    Console::out(QStringLiteral("Initialised %1\n").arg(StateStore::home()));
    return 0;
}

int shims(const QStringList &arguments)
{
    if (arguments.size() != 1)
        throw devicesimUsage(QStringLiteral("shims takes one folder"));
    const QDir dir(arguments[0]);
    if (!QDir().mkpath(dir.absolutePath()))
        throw ToolFailure{QStringLiteral("devicesim: cannot create %1\n").arg(dir.absolutePath()), 1};
    const QString binary = QCoreApplication::applicationFilePath();
    for (const QString &name : {QStringLiteral("xcrun"), QStringLiteral("xcodebuild"), QStringLiteral("open")}) {
        const QString link = dir.absoluteFilePath(name);
        QFile::remove(link);
        if (!QFile::link(binary, link))
            throw ToolFailure{QStringLiteral("devicesim: cannot link %1\n").arg(link), 1};
    }
    Console::out(dir.absolutePath() + QLatin1Char('\n'));
    return 0;
}

int addDevice(const QStringList &arguments)
{
    QStringList positional;
    QString udid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    bool boot = false, withApp = true, unavailable = false;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &a = arguments[i];
        if (a == QLatin1String("--udid") && i + 1 < arguments.size())
            udid = arguments[++i];
        else if (a == QLatin1String("--boot"))
            boot = true;
        else if (a == QLatin1String("--no-app"))
            withApp = false;
        else if (a == QLatin1String("--unavailable"))
            unavailable = true;
        else if (a.startsWith(QLatin1String("--")))
            throw devicesimUsage(QStringLiteral("unknown option %1").arg(a));
        else
            positional.append(a);
    }
    if (positional.size() != 2)
        throw devicesimUsage(QStringLiteral("device add takes a NAME and a RUNTIME"));
    StateStore::modify([&](World &world) {
        if (world.device(udid))
            throw ToolFailure{QStringLiteral("devicesim: a device with UDID %1 exists already\n").arg(udid), 1};
        Device d = DefaultWorld::makeDevice(StateStore::home(), positional[0], positional[1], udid, withApp);
        if (unavailable) {
            d.isAvailable = false;
            d.availabilityError = QStringLiteral("runtime profile not found using \"System\" match policy");
        }
        if (boot && !unavailable) {
            d.state = QStringLiteral("Booted");
            d.lastBootedAt = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
        }
        world.devices.append(d);
    });
    Console::out(udid + QLatin1Char('\n'));
    return 0;
}

int device(const QStringList &arguments)
{
    const QString verb = arguments.value(0);
    if (verb == QLatin1String("add"))
        return addDevice(arguments.mid(1));
    if (arguments.size() != 2)
        throw devicesimUsage(QStringLiteral("device %1 takes one UDID").arg(verb));
    const QString udid = arguments[1];
    StateStore::modify([&](World &world) {
        if (verb == QLatin1String("remove") && udid == QLatin1String("all")) {
            world.devices.clear();
            return;
        }
        Device *d = world.device(udid);
        if (!d)
            throw ToolFailure{QStringLiteral("devicesim: no device %1\n").arg(udid), 1};
        if (verb == QLatin1String("boot")) {
            d->state = QStringLiteral("Booted");
            d->lastBootedAt = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
        } else if (verb == QLatin1String("shutdown")) {
            d->shutDown();
        } else if (verb == QLatin1String("remove")) {
            world.devices.removeIf([&](const Device &x) { return x.udid == d->udid; });
        } else {
            throw devicesimUsage(QStringLiteral("unknown device command \"%1\"").arg(verb));
        }
    });
    return 0;
}

int fault(const QStringList &arguments)
{
    const QString verb = arguments.value(0);
    if (verb == QLatin1String("list")) {
        const QStringList lines = StateStore::read().faults.describe();
        Console::out(lines.isEmpty() ? QString() : lines.join(QLatin1Char('\n')) + QLatin1Char('\n'));
        return 0;
    }
    if (verb != QLatin1String("set") && verb != QLatin1String("clear"))
        throw devicesimUsage(QStringLiteral("fault takes set, clear or list"));
    StateStore::modify([&](World &world) {
        const QString problem = verb == QLatin1String("set")
            ? world.faults.set(arguments.mid(1), AppBundle::demoBundleId)
            : world.faults.clear(arguments.value(1));
        if (!problem.isEmpty())
            throw ToolFailure{problem + QLatin1Char('\n'), 64};
    });
    return 0;
}

} // namespace

int run(const QStringList &arguments)
{
    const QString command = arguments.value(0);
    const QStringList rest = arguments.mid(1);
    if (command.isEmpty() || command == QLatin1String("--help") || command == QLatin1String("-h")
        || command == QLatin1String("help")) {
        Console::out(QString::fromUtf8(helpText));
        return 0;
    }
    if (command == QLatin1String("init"))
        return init();
    if (command == QLatin1String("shims"))
        return shims(rest);
    if (command == QLatin1String("device"))
        return device(rest);
    if (command == QLatin1String("fault"))
        return fault(rest);
    if (command == QLatin1String("state")) {
        Console::out(QString::fromUtf8(QJsonDocument(StateStore::read().toJson()).toJson(QJsonDocument::Indented)));
        return 0;
    }
    if (command == QLatin1String("window"))
        return WindowCommand::run(rest);
    if (command == QLatin1String("xcrun"))
        return XcrunCommand::run(rest);
    if (command == QLatin1String("xcodebuild"))
        return XcodebuildCommand::run(rest);
    if (command == QLatin1String("open"))
        return OpenCommand::run(rest);
    throw devicesimUsage(QStringLiteral("unknown command \"%1\"").arg(command));
}

} // namespace DevicesimCommand
