#include "SimctlCommand.h"

#include "Console.h"
#include "Pause.h"
#include "SimctlSupport.h"
#include "StateStore.h"

#include <QFile>
#include <spawn.h>
#include <unistd.h>

#include <functional>
#include <map>

namespace Simctl {

ToolFailure error(const QString &domain, int code, const QString &message)
{
    const int status = code & 0xff;
    return {QStringLiteral("An error was encountered processing the command (domain=%1, code=%2):\n%3\n")
                .arg(domain)
                .arg(code)
                .arg(message),
            status == 0 ? 1 : status};
}

ToolFailure usage(const QString &message)
{
    return {message + QLatin1Char('\n'), 64};
}

void requireArguments(const QStringList &arguments, int count, const QString &usageText)
{
    if (arguments.size() < count)
        throw usage(QStringLiteral("Usage: simctl ") + usageText);
}

Device &device(World &world, const QString &token)
{
    if (token.compare(QLatin1String("booted"), Qt::CaseInsensitive) == 0) {
        for (Device &d : world.devices)
            if (d.isBooted())
                return d;
        throw error(QStringLiteral("com.apple.CoreSimulator.SimError"), 405, QStringLiteral("No devices are booted."));
    }
    if (Device *d = world.device(token))
        return *d;
    for (Device &d : world.devices)
        if (d.name == token && d.isAvailable)
            return d;
    throw ToolFailure{QStringLiteral("Invalid device: %1\n").arg(token), 148};
}

Device &bootedDevice(World &world, const QString &token)
{
    Device &d = device(world, token);
    if (!d.isBooted())
        throw error(QStringLiteral("com.apple.CoreSimulator.SimError"), 405,
                    QStringLiteral("Unable to lookup in current state: %1").arg(d.state));
    return d;
}

} // namespace Simctl

namespace SimctlCommand {

namespace {

const std::map<QString, std::function<int(const QStringList &)>> &subcommands()
{
    static const std::map<QString, std::function<int(const QStringList &)>> table = {
        {QStringLiteral("list"), Simctl::list},
        {QStringLiteral("io"), Simctl::io},
        {QStringLiteral("listapps"), Simctl::listApps},
        {QStringLiteral("get_app_container"), Simctl::getAppContainer},
        {QStringLiteral("install"), Simctl::install},
        {QStringLiteral("uninstall"), Simctl::uninstall},
        {QStringLiteral("launch"), Simctl::launch},
        {QStringLiteral("terminate"), Simctl::terminate},
        {QStringLiteral("boot"), Simctl::boot},
        {QStringLiteral("shutdown"), Simctl::shutdown},
        {QStringLiteral("bootstatus"), Simctl::bootStatus},
        {QStringLiteral("status_bar"), Simctl::statusBar},
    };
    return table;
}

int help()
{
    QString text = QStringLiteral("usage: simctl [--set <path>] [--profiles <path>] <subcommand> ...\n"
                                  "       simctl help [subcommand]\n"
                                  "Command line utility to control the Simulator (answered by the devicesim stand-in)\n\n"
                                  "Subcommands:\n");
    for (const auto &entry : subcommands())
        text += QStringLiteral("\t%1\n").arg(entry.first);
    Console::out(text);
    return 0;
}

// The hang fault: never answers, like a simulator service that is stuck,
// and leaves a child of its own waiting as well, so that only ending the
// whole process group cleans up. The child's process id is noted in
// $DEVICESIM_HOME/hung-pids for tests.
[[noreturn]] void hang()
{
    pid_t child = 0;
    char sleepName[] = "sleep";
    char hour[] = "3600";
    char *const argv[] = {sleepName, hour, nullptr};
    if (::posix_spawnp(&child, "sleep", nullptr, nullptr, argv, environ) == 0) {
        QFile pids(StateStore::home() + QStringLiteral("/hung-pids"));
        if (pids.open(QIODevice::WriteOnly | QIODevice::Append))
            pids.write(QByteArray::number(qint64(::getpid())) + ' ' + QByteArray::number(qint64(child)) + '\n');
    }
    for (;;)
        Pause::exact(3600);
}

// The chatty fault: megabytes of warnings on standard error, then the
// real reason last, as tools print it.
[[noreturn]] void chatter(const QString &subcommand)
{
    QByteArray noise;
    for (int line = 0; noise.size() < 3 * 1024 * 1024; ++line)
        noise += "simctl: warning: CoreSimulator chatter line " + QByteArray::number(line) + " of many\n";
    Console::err(QString::fromUtf8(noise));
    throw Simctl::error(QStringLiteral("com.apple.CoreSimulator.SimError"), 405,
                        QStringLiteral("The real reason: %1 failed after a lot of chatter.").arg(subcommand));
}

} // namespace

int run(const QStringList &arguments)
{
    if (arguments.isEmpty() || arguments.first() == QLatin1String("help"))
        return help();
    const Faults faults = StateStore::read().faults;
    if (faults.hangingSubcommands.contains(arguments.first()))
        hang();
    if (faults.chattySubcommands.contains(arguments.first()))
        chatter(arguments.first());
    const auto it = subcommands().find(arguments.first());
    if (it == subcommands().end())
        throw ToolFailure{QStringLiteral("Unknown subcommand '%1'\n").arg(arguments.first()), 64};
    return it->second(arguments.mid(1));
}

} // namespace SimctlCommand
