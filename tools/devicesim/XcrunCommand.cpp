#include "XcrunCommand.h"

#include "Console.h"
#include "SimctlCommand.h"
#include "StateStore.h"
#include "ToolFailure.h"
#include "XcodebuildCommand.h"

namespace XcrunCommand {

namespace {

const QString developerBin = QStringLiteral("/Applications/Xcode.app/Contents/Developer/usr/bin/");
const QStringList tools = {QStringLiteral("simctl"), QStringLiteral("xcodebuild")};

ToolFailure unableToFind(const QString &tool)
{
    return {QStringLiteral("xcrun: error: unable to find utility \"%1\", not a developer tool or in PATH\n").arg(tool), 72};
}

// With only the command-line tools installed, xcodebuild cannot be found.
bool isInstalled(const QString &tool)
{
    if (!tools.contains(tool))
        return false;
    return tool != QLatin1String("xcodebuild") || !StateStore::read().faults.noXcode;
}

} // namespace

int run(const QStringList &arguments)
{
    QStringList args = arguments;
    // Options that only choose an SDK or toolchain change nothing here.
    while (!args.isEmpty() && (args.first() == QLatin1String("--sdk") || args.first() == QLatin1String("--toolchain"))) {
        args.removeFirst();
        if (!args.isEmpty())
            args.removeFirst();
    }
    if (args.isEmpty())
        throw ToolFailure{QStringLiteral("Usage: xcrun [options] <tool name> ... arguments ...\n"), 1};
    const QString first = args.first();
    if (first == QLatin1String("--find") || first == QLatin1String("-f")) {
        if (args.size() < 2)
            throw ToolFailure{QStringLiteral("xcrun: error: missing tool name after --find\n"), 1};
        if (!isInstalled(args[1]))
            throw unableToFind(args[1]);
        Console::out(developerBin + args[1] + QLatin1Char('\n'));
        return 0;
    }
    if (first == QLatin1String("simctl"))
        return SimctlCommand::run(args.mid(1));
    if (first == QLatin1String("xcodebuild"))
        return XcodebuildCommand::run(args.mid(1));
    throw unableToFind(first);
}

} // namespace XcrunCommand
