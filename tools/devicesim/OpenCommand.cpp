#include "OpenCommand.h"

#include "StateStore.h"
#include "ToolFailure.h"
#include "WindowCommand.h"

#include <QFileInfo>

namespace OpenCommand {

int run(const QStringList &arguments)
{
    QString application;
    QStringList files;
    QStringList appArguments;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &a = arguments[i];
        if (a == QLatin1String("--args")) {
            appArguments = arguments.mid(i + 1);
            break;
        }
        if (a == QLatin1String("-a") && i + 1 < arguments.size())
            application = arguments[++i];
        else if (!a.startsWith(QLatin1Char('-')))
            files.append(a);
    }
    if (application.isEmpty() && files.isEmpty())
        throw ToolFailure{QStringLiteral("Usage: open [-e] [-t] [-f] [-W] [-R] [-n] [-g] [-h] [-s <partial SDK name>]"
                                         "[-b <bundle identifier>] [-a <application>] [-u URL] [filenames] [--args arguments]\n"),
                          1};
    if (!application.isEmpty() && application != QLatin1String("Simulator")
        && !application.endsWith(QLatin1String("/Simulator.app")))
        throw ToolFailure{QStringLiteral("Unable to find application named '%1'\n").arg(application), 1};
    if (!application.isEmpty() && StateStore::read().faults.openFails)
        throw ToolFailure{QStringLiteral("Unable to find application named '%1'\n").arg(application), 1};
    for (const QString &file : files)
        if (!QFileInfo::exists(file))
            throw ToolFailure{QStringLiteral("The file %1 does not exist.\n").arg(QFileInfo(file).absoluteFilePath()), 1};
    const int udidAt = appArguments.indexOf(QStringLiteral("-CurrentDeviceUDID"));
    if (!application.isEmpty() && udidAt >= 0 && udidAt + 1 < appArguments.size())
        StateStore::modify([&](World &world) { world.simulatorAppDevice = appArguments[udidAt + 1]; });
    if (!application.isEmpty())
        WindowCommand::openDetached();
    return 0;
}

} // namespace OpenCommand
