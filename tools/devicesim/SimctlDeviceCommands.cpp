// simctl boot | shutdown | bootstatus: a device's life cycle.

#include "Console.h"
#include "Pause.h"
#include "SimctlSupport.h"
#include "StateStore.h"

#include <QDateTime>
#include <QElapsedTimer>

namespace Simctl {

namespace {

const QString simError = QStringLiteral("com.apple.CoreSimulator.SimError");

void bootDevice(Device &d)
{
    if (!d.isAvailable)
        throw error(simError, 403, QStringLiteral("Unable to boot device because the runtime is unavailable: %1")
                                       .arg(d.availabilityError));
    if (d.isBooted())
        throw error(simError, 405, QStringLiteral("Unable to boot device in current state: Booted"));
    d.state = QStringLiteral("Booted");
    d.lastBootedAt = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    d.running.clear();
    d.foregroundApp.clear();
}

} // namespace

int boot(const QStringList &arguments)
{
    requireArguments(arguments, 1, QStringLiteral("boot <device> [--arch=<arch>] [--disabledJob=<job>] [--enabledJob=<job>]"));
    StateStore::modify([&](World &world) { bootDevice(device(world, arguments[0])); });
    Pause::scaled(0.4);
    return 0;
}

int shutdown(const QStringList &arguments)
{
    requireArguments(arguments, 1, QStringLiteral("shutdown <device> | all"));
    StateStore::modify([&](World &world) {
        if (arguments[0] == QLatin1String("all")) {
            for (Device &d : world.devices)
                d.shutDown();
            return;
        }
        Device &d = device(world, arguments[0]);
        if (!d.isBooted())
            throw error(simError, 405, QStringLiteral("Unable to shutdown device in current state: %1").arg(d.state));
        d.shutDown();
    });
    return 0;
}

// Waits until the device has booted; with -b it boots the device first.
int bootStatus(const QStringList &arguments)
{
    requireArguments(arguments, 1, QStringLiteral("bootstatus <device> [-bcd]"));
    const bool bootIfNeeded = arguments.mid(1).contains(QStringLiteral("-b"));
    bool wasBooted = false;
    QString label;
    StateStore::modify([&](World &world) {
        Device &d = device(world, arguments[0]);
        label = QStringLiteral("%1 (%2)").arg(d.name, d.udid);
        wasBooted = d.isBooted();
        if (!wasBooted && bootIfNeeded)
            bootDevice(d);
    });
    Console::out(QStringLiteral("Monitoring boot status for %1.\n").arg(label));
    if (wasBooted) {
        Console::out(QStringLiteral("Device already booted, nothing to do.\n"));
        return 0;
    }
    QElapsedTimer waited;
    waited.start();
    while (!bootIfNeeded) {
        World world = StateStore::read();
        if (device(world, arguments[0]).isBooted())
            break;
        if (waited.elapsed() > 120 * 1000)
            throw error(simError, 60, QStringLiteral("Timed out waiting for the device to boot."));
        Pause::exact(0.2);
    }
    Pause::scaled(0.6);
    Console::out(QStringLiteral("Finished: Boot completed.\n"));
    return 0;
}

} // namespace Simctl
