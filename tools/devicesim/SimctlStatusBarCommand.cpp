// simctl status_bar <device> override <flags> | clear | list

#include "Console.h"
#include "SimctlSupport.h"
#include "StateStore.h"

namespace Simctl {

namespace {

const QStringList overrideNames = {
    QStringLiteral("time"),         QStringLiteral("dataNetwork"),  QStringLiteral("wifiMode"),
    QStringLiteral("wifiBars"),     QStringLiteral("cellularMode"), QStringLiteral("cellularBars"),
    QStringLiteral("operatorName"), QStringLiteral("batteryState"), QStringLiteral("batteryLevel"),
};

QMap<QString, QString> parseOverrides(const QStringList &flags)
{
    QMap<QString, QString> values;
    for (int i = 0; i < flags.size(); ++i) {
        const QString name = flags[i].mid(2);
        if (!flags[i].startsWith(QLatin1String("--")) || !overrideNames.contains(name))
            throw usage(QStringLiteral("Unrecognized option: %1").arg(flags[i]));
        if (i + 1 >= flags.size())
            throw usage(QStringLiteral("Missing value for %1").arg(flags[i]));
        values.insert(name, flags[++i]);
    }
    if (values.isEmpty())
        throw usage(QStringLiteral("Usage: simctl status_bar <device> override <override arguments>"));
    return values;
}

QString listText(const Device &d)
{
    QString text = QStringLiteral("Current Status Bar Overrides:\n=============================\n");
    for (auto it = d.statusBar.begin(); it != d.statusBar.end(); ++it)
        text += QStringLiteral("%1: %2\n").arg(it.key(), it.value());
    return text;
}

} // namespace

int statusBar(const QStringList &arguments)
{
    requireArguments(arguments, 2, QStringLiteral("status_bar <device> [list | clear | override <override arguments>]"));
    const QString operation = arguments[1];
    if (operation == QLatin1String("list")) {
        World world = StateStore::read();
        Console::out(listText(bootedDevice(world, arguments[0])));
        return 0;
    }
    if (operation != QLatin1String("override") && operation != QLatin1String("clear"))
        throw usage(QStringLiteral("Unknown status_bar operation '%1'").arg(operation));
    const QMap<QString, QString> values =
        operation == QLatin1String("override") ? parseOverrides(arguments.mid(2)) : QMap<QString, QString>();
    StateStore::modify([&](World &world) {
        Device &d = bootedDevice(world, arguments[0]);
        if (operation == QLatin1String("clear"))
            d.statusBar.clear();
        else
            d.statusBar.insert(values);
    });
    return 0;
}

} // namespace Simctl
