// simctl list [devices|runtimes|devicetypes|pairs] [available|booted|TERM] [-j|--json]

#include "Console.h"
#include "DefaultWorld.h"
#include "SimctlSupport.h"
#include "StateStore.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <map>

namespace Simctl {

namespace {

struct ListOptions
{
    bool json = false;
    QString kind;   // devices, runtimes, devicetypes, pairs; empty for all
    QString filter; // available, booted, or a search term
};

ListOptions parseListOptions(const QStringList &arguments)
{
    ListOptions o;
    for (const QString &a : arguments) {
        if (a == QLatin1String("-j") || a == QLatin1String("--json"))
            o.json = true;
        else if (a == QLatin1String("-v") || a == QLatin1String("-e"))
            continue;
        else if (o.kind.isEmpty() && QStringList{"devices", "runtimes", "devicetypes", "pairs"}.contains(a))
            o.kind = a;
        else if (a.startsWith(QLatin1Char('-')))
            throw usage(QStringLiteral("Unrecognized option: %1").arg(a));
        else
            o.filter = a;
    }
    return o;
}

bool passes(const Device &d, const QString &filter)
{
    if (filter.isEmpty())
        return true;
    if (filter == QLatin1String("available"))
        return d.isAvailable;
    if (filter == QLatin1String("booted"))
        return d.isBooted();
    return d.name.contains(filter, Qt::CaseInsensitive) || d.udid.contains(filter, Qt::CaseInsensitive);
}

QJsonObject listedDeviceJson(const Device &d)
{
    const QString home = StateStore::home();
    QJsonObject o{{QStringLiteral("dataPath"), DefaultWorld::deviceDataPath(home, d.udid)},
                  {QStringLiteral("dataPathSize"), 18341888},
                  {QStringLiteral("logPath"), QDir(home).filePath(QStringLiteral("logs/") + d.udid)},
                  {QStringLiteral("udid"), d.udid},
                  {QStringLiteral("isAvailable"), d.isAvailable},
                  {QStringLiteral("deviceTypeIdentifier"), d.deviceTypeIdentifier},
                  {QStringLiteral("state"), d.state},
                  {QStringLiteral("name"), d.name}};
    if (!d.lastBootedAt.isEmpty())
        o.insert(QStringLiteral("lastBootedAt"), d.lastBootedAt);
    if (!d.isAvailable)
        o.insert(QStringLiteral("availabilityError"), d.availabilityError);
    return o;
}

// Runtimes in the order the world lists them; a visionOS runtime without
// devices is always there, as on a machine with that runtime installed.
std::map<QString, QList<const Device *>> byRuntime(const World &world, const QString &filter)
{
    std::map<QString, QList<const Device *>> runtimes;
    runtimes[RuntimeName::prefix + QStringLiteral("xrOS-1-2")];
    for (const Device &d : world.devices) {
        auto &list = runtimes[d.runtime];
        if (passes(d, filter))
            list.append(&d);
    }
    return runtimes;
}

QJsonObject devicesJson(const World &world, const QString &filter)
{
    QJsonObject devices;
    for (const auto &[runtime, list] : byRuntime(world, filter)) {
        QJsonArray array;
        for (const Device *d : list)
            array.append(listedDeviceJson(*d));
        devices.insert(runtime, array);
    }
    return devices;
}

QJsonArray runtimesJson(const World &world)
{
    QJsonArray runtimes;
    for (const auto &[runtime, list] : byRuntime(world, {})) {
        bool available = list.isEmpty();
        for (const Device *d : list)
            available = available || d->isAvailable;
        if (!available)
            continue;
        const QString name = RuntimeName::displayName(runtime);
        runtimes.append(QJsonObject{{QStringLiteral("identifier"), runtime},
                                    {QStringLiteral("name"), name},
                                    {QStringLiteral("version"), name.section(QLatin1Char(' '), 1)},
                                    {QStringLiteral("isAvailable"), true},
                                    {QStringLiteral("platform"), name.section(QLatin1Char(' '), 0, 0)}});
    }
    return runtimes;
}

QString devicesText(const World &world, const QString &filter)
{
    QString text = QStringLiteral("== Devices ==\n");
    for (const auto &[runtime, list] : byRuntime(world, filter)) {
        bool anyAvailable = list.isEmpty();
        for (const Device *d : list)
            anyAvailable = anyAvailable || d->isAvailable;
        text += anyAvailable ? QStringLiteral("-- %1 --\n").arg(RuntimeName::displayName(runtime))
                             : QStringLiteral("-- Unavailable: %1 --\n").arg(runtime);
        for (const Device *d : list) {
            text += QStringLiteral("    %1 (%2) (%3) ").arg(d->name, d->udid, d->state);
            if (!d->isAvailable)
                text += QStringLiteral("(unavailable, %1)").arg(d->availabilityError);
            text += QLatin1Char('\n');
        }
    }
    return text;
}

} // namespace

int list(const QStringList &arguments)
{
    const ListOptions o = parseListOptions(arguments);
    const World world = StateStore::read();
    if (o.json) {
        QJsonObject root;
        if (o.kind.isEmpty() || o.kind == QLatin1String("devices"))
            root.insert(QStringLiteral("devices"), devicesJson(world, o.filter));
        if (o.kind.isEmpty() || o.kind == QLatin1String("runtimes"))
            root.insert(QStringLiteral("runtimes"), runtimesJson(world));
        if (o.kind.isEmpty() || o.kind == QLatin1String("devicetypes"))
            root.insert(QStringLiteral("devicetypes"), QJsonArray());
        if (o.kind.isEmpty() || o.kind == QLatin1String("pairs"))
            root.insert(QStringLiteral("pairs"), QJsonObject());
        Console::out(QString::fromUtf8(QJsonDocument(root).toJson(QJsonDocument::Indented)));
        return 0;
    }
    if (o.kind.isEmpty() || o.kind == QLatin1String("devices"))
        Console::out(devicesText(world, o.filter));
    if (o.kind == QLatin1String("runtimes")) {
        QString text = QStringLiteral("== Runtimes ==\n");
        for (const QJsonValue &r : runtimesJson(world))
            text += QStringLiteral("%1 - %2\n").arg(r[QStringLiteral("name")].toString(), r[QStringLiteral("identifier")].toString());
        Console::out(text);
    }
    return 0;
}

} // namespace Simctl
