#include "World.h"

#include <QJsonArray>
#include <QRegularExpression>

// ---- runtime names ---------------------------------------------------------

QString RuntimeName::identifier(const QString &text)
{
    if (text.startsWith(prefix))
        return text;
    QString id = text.trimmed();
    id.replace(QLatin1Char(' '), QLatin1Char('-')).replace(QLatin1Char('.'), QLatin1Char('-'));
    return prefix + id;
}

QString RuntimeName::displayName(const QString &identifier)
{
    QString rest = identifier;
    rest.remove(prefix);
    const int dash = rest.indexOf(QLatin1Char('-'));
    if (dash < 0)
        return rest;
    // The visionOS runtime keeps its old name in its identifier.
    const QString platform = rest.left(dash) == QLatin1String("xrOS") ? QStringLiteral("visionOS") : rest.left(dash);
    return platform + QLatin1Char(' ') + rest.mid(dash + 1).replace(QLatin1Char('-'), QLatin1Char('.'));
}

// ---- device ----------------------------------------------------------------

QString Device::platform() const
{
    QString rest = runtime;
    rest.remove(RuntimeName::prefix);
    return rest.section(QLatin1Char('-'), 0, 0);
}

InstalledApp *Device::app(const QString &bundleId)
{
    for (InstalledApp &a : apps)
        if (a.bundleId == bundleId)
            return &a;
    return nullptr;
}

const InstalledApp *Device::app(const QString &bundleId) const
{
    return const_cast<Device *>(this)->app(bundleId);
}

AppSession *Device::session(const QString &bundleId)
{
    for (AppSession &s : running)
        if (s.bundleId == bundleId)
            return &s;
    return nullptr;
}

const AppSession *Device::session(const QString &bundleId) const
{
    return const_cast<Device *>(this)->session(bundleId);
}

AppSession *Device::foregroundSession()
{
    return foregroundApp.isEmpty() ? nullptr : session(foregroundApp);
}

const AppSession *Device::foregroundSession() const
{
    return const_cast<Device *>(this)->foregroundSession();
}

void Device::stopApp(const QString &bundleId)
{
    running.erase(std::remove_if(running.begin(), running.end(),
                                 [&](const AppSession &s) { return s.bundleId == bundleId; }),
                  running.end());
    if (foregroundApp == bundleId)
        foregroundApp.clear();
}

void Device::shutDown()
{
    state = QStringLiteral("Shutdown");
    running.clear();
    foregroundApp.clear();
    statusBar.clear();
}

Device *World::device(const QString &udid)
{
    for (Device &d : devices)
        if (d.udid.compare(udid, Qt::CaseInsensitive) == 0)
            return &d;
    return nullptr;
}

const Device *World::device(const QString &udid) const
{
    return const_cast<World *>(this)->device(udid);
}

// ---- JSON coding -----------------------------------------------------------

namespace {

QString str(const QJsonObject &o, const char *key, const QString &fallback = {})
{
    return o.value(QLatin1String(key)).toString(fallback);
}

QJsonObject appJson(const InstalledApp &a)
{
    return {{QStringLiteral("bundleId"), a.bundleId},         {QStringLiteral("displayName"), a.displayName},
            {QStringLiteral("bundleName"), a.bundleName},     {QStringLiteral("executable"), a.executable},
            {QStringLiteral("version"), a.version},           {QStringLiteral("shortVersion"), a.shortVersion},
            {QStringLiteral("isSystem"), a.isSystem},         {QStringLiteral("bundlePath"), a.bundlePath},
            {QStringLiteral("dataPath"), a.dataPath}};
}

InstalledApp appFromJson(const QJsonObject &o)
{
    InstalledApp a;
    a.bundleId = str(o, "bundleId");
    a.displayName = str(o, "displayName");
    a.bundleName = str(o, "bundleName");
    a.executable = str(o, "executable");
    a.version = str(o, "version", a.version);
    a.shortVersion = str(o, "shortVersion", a.shortVersion);
    a.isSystem = o.value(QStringLiteral("isSystem")).toBool();
    a.bundlePath = str(o, "bundlePath");
    a.dataPath = str(o, "dataPath");
    return a;
}

template<typename T, typename F>
QJsonObject hashJson(const QHash<QString, T> &hash, F convert)
{
    QJsonObject o;
    for (auto it = hash.begin(); it != hash.end(); ++it)
        o.insert(it.key(), convert(it.value()));
    return o;
}

QJsonObject sessionJson(const AppSession &s)
{
    return {{QStringLiteral("bundleId"), s.bundleId},
            {QStringLiteral("pid"), s.pid},
            {QStringLiteral("language"), s.language},
            {QStringLiteral("locale"), s.locale},
            {QStringLiteral("extraArguments"), QJsonArray::fromStringList(s.extraArguments)},
            {QStringLiteral("tab"), s.tab},
            {QStringLiteral("stacks"), hashJson(s.stacks, [](const QStringList &l) { return QJsonArray::fromStringList(l); })},
            {QStringLiteral("scroll"), hashJson(s.scroll, [](double v) { return QJsonValue(v); })},
            {QStringLiteral("toggles"), hashJson(s.toggles, [](bool v) { return QJsonValue(v); })},
            {QStringLiteral("searchFocused"), s.searchFocused},
            {QStringLiteral("searchText"), s.searchText}};
}

QStringList stringList(const QJsonValue &v)
{
    QStringList list;
    for (const QJsonValue &item : v.toArray())
        list.append(item.toString());
    return list;
}

AppSession sessionFromJson(const QJsonObject &o)
{
    AppSession s;
    s.bundleId = str(o, "bundleId");
    s.pid = o.value(QStringLiteral("pid")).toInteger();
    s.language = str(o, "language", s.language);
    s.locale = str(o, "locale", s.locale);
    s.extraArguments = stringList(o.value(QStringLiteral("extraArguments")));
    s.tab = str(o, "tab", s.tab);
    const QJsonObject stacks = o.value(QStringLiteral("stacks")).toObject();
    for (auto it = stacks.begin(); it != stacks.end(); ++it)
        s.stacks.insert(it.key(), stringList(it.value()));
    const QJsonObject scroll = o.value(QStringLiteral("scroll")).toObject();
    for (auto it = scroll.begin(); it != scroll.end(); ++it)
        s.scroll.insert(it.key(), it.value().toDouble());
    const QJsonObject toggles = o.value(QStringLiteral("toggles")).toObject();
    for (auto it = toggles.begin(); it != toggles.end(); ++it)
        s.toggles.insert(it.key(), it.value().toBool());
    s.searchFocused = o.value(QStringLiteral("searchFocused")).toBool();
    s.searchText = str(o, "searchText");
    return s;
}

QJsonObject savedDeviceJson(const Device &d)
{
    QJsonArray apps, running;
    for (const InstalledApp &a : d.apps)
        apps.append(appJson(a));
    for (const AppSession &s : d.running)
        running.append(sessionJson(s));
    QJsonObject statusBar;
    for (auto it = d.statusBar.begin(); it != d.statusBar.end(); ++it)
        statusBar.insert(it.key(), it.value());
    return {{QStringLiteral("udid"), d.udid},
            {QStringLiteral("name"), d.name},
            {QStringLiteral("runtime"), d.runtime},
            {QStringLiteral("deviceTypeIdentifier"), d.deviceTypeIdentifier},
            {QStringLiteral("state"), d.state},
            {QStringLiteral("isAvailable"), d.isAvailable},
            {QStringLiteral("availabilityError"), d.availabilityError},
            {QStringLiteral("pixelWidth"), d.pixelWidth},
            {QStringLiteral("pixelHeight"), d.pixelHeight},
            {QStringLiteral("scale"), d.scale},
            {QStringLiteral("lastBootedAt"), d.lastBootedAt},
            {QStringLiteral("apps"), apps},
            {QStringLiteral("running"), running},
            {QStringLiteral("foregroundApp"), d.foregroundApp},
            {QStringLiteral("statusBar"), statusBar}};
}

Device deviceFromJson(const QJsonObject &o)
{
    Device d;
    d.udid = str(o, "udid");
    d.name = str(o, "name");
    d.runtime = str(o, "runtime");
    d.deviceTypeIdentifier = str(o, "deviceTypeIdentifier");
    d.state = str(o, "state", d.state);
    d.isAvailable = o.value(QStringLiteral("isAvailable")).toBool(true);
    d.availabilityError = str(o, "availabilityError");
    d.pixelWidth = o.value(QStringLiteral("pixelWidth")).toInt(d.pixelWidth);
    d.pixelHeight = o.value(QStringLiteral("pixelHeight")).toInt(d.pixelHeight);
    d.scale = o.value(QStringLiteral("scale")).toDouble(d.scale);
    d.lastBootedAt = str(o, "lastBootedAt");
    for (const QJsonValue &v : o.value(QStringLiteral("apps")).toArray())
        d.apps.append(appFromJson(v.toObject()));
    for (const QJsonValue &v : o.value(QStringLiteral("running")).toArray())
        d.running.append(sessionFromJson(v.toObject()));
    d.foregroundApp = str(o, "foregroundApp");
    const QJsonObject statusBar = o.value(QStringLiteral("statusBar")).toObject();
    for (auto it = statusBar.begin(); it != statusBar.end(); ++it)
        d.statusBar.insert(it.key(), it.value().toString());
    return d;
}

} // namespace

QJsonObject World::toJson() const
{
    QJsonArray list;
    for (const Device &d : devices)
        list.append(savedDeviceJson(d));
    return {{QStringLiteral("devices"), list},
            {QStringLiteral("faults"), faults.toJson()},
            {QStringLiteral("nextPid"), nextPid},
            {QStringLiteral("simulatorAppDevice"), simulatorAppDevice}};
}

World World::fromJson(const QJsonObject &o)
{
    World w;
    for (const QJsonValue &v : o.value(QStringLiteral("devices")).toArray())
        w.devices.append(deviceFromJson(v.toObject()));
    w.faults = Faults::fromJson(o.value(QStringLiteral("faults")).toObject());
    w.nextPid = o.value(QStringLiteral("nextPid")).toInteger(w.nextPid);
    w.simulatorAppDevice = str(o, "simulatorAppDevice");
    return w;
}
