#include "SimctlCommand.h"

#include "Console.h"
#include "SimctlSupport.h"

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

} // namespace

int run(const QStringList &arguments)
{
    if (arguments.isEmpty() || arguments.first() == QLatin1String("help"))
        return help();
    const auto it = subcommands().find(arguments.first());
    if (it == subcommands().end())
        throw ToolFailure{QStringLiteral("Unknown subcommand '%1'\n").arg(arguments.first()), 64};
    return it->second(arguments.mid(1));
}

} // namespace SimctlCommand
