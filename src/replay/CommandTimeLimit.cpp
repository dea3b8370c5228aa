#include "CommandTimeLimit.h"

namespace CommandTimeLimit {

std::optional<int> seconds(const QString &command, const QStringList &arguments)
{
    if (command == QLatin1String("xcodebuild"))
        return std::nullopt;
    if (command == QLatin1String("xcrun") && arguments.value(0) == QLatin1String("simctl")) {
        static const QStringList deviceActions{QStringLiteral("launch"), QStringLiteral("install"),
                                               QStringLiteral("status_bar"), QStringLiteral("boot"),
                                               QStringLiteral("bootstatus"), QStringLiteral("uninstall")};
        if (deviceActions.contains(arguments.value(1)))
            return deviceActionSeconds;
    }
    return shortQuerySeconds;
}

QString exceededMessage(const QString &command, const QStringList &arguments, int seconds)
{
    const QString line = arguments.isEmpty() ? command : command + QLatin1Char(' ') + arguments.join(QLatin1Char(' '));
    return QStringLiteral("%1 did not finish within %2 seconds and was ended.").arg(line).arg(seconds);
}

} // namespace CommandTimeLimit
