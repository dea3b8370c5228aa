#include "DefaultWorld.h"

#include "AppBundle.h"
#include "AppLauncher.h"
#include "DeviceCatalog.h"

#include <QDateTime>
#include <QDir>

namespace DefaultWorld {

namespace {

struct SystemApp
{
    const char *bundleId;
    const char *displayName;
    const char *bundleName;
};

const SystemApp iosSystemApps[] = {
    {"com.apple.Bridge", "Watch", "Bridge"},
    {"com.apple.Maps", "Maps", "Maps"},
    {"com.apple.MobileSMS", "Messages", "MobileSMS"},
    {"com.apple.Preferences", "Settings", "Preferences"},
    {"com.apple.mobilesafari", "Safari", "MobileSafari"},
    {"com.apple.mobileslideshow", "Photos", "MobileSlideShow"},
};

const SystemApp otherSystemApps[] = {
    {"com.apple.NanoSettings", "Settings", "NanoSettings"},
};

QList<InstalledApp> systemApps(const QString &home, const QString &runtime, bool ios)
{
    const QString root = QDir(home).filePath(QStringLiteral("runtimes/%1/RuntimeRoot/Applications")
                                                 .arg(QString(runtime).remove(RuntimeName::prefix)));
    QList<InstalledApp> apps;
    auto add = [&](const SystemApp &s) {
        InstalledApp app;
        app.bundleId = QString::fromLatin1(s.bundleId);
        app.displayName = QString::fromLatin1(s.displayName);
        app.bundleName = QString::fromLatin1(s.bundleName);
        app.executable = app.bundleName;
        app.isSystem = true;
        app.bundlePath = QDir(root).filePath(app.bundleName + QStringLiteral(".app"));
        apps.append(app);
    };
    if (ios)
        for (const SystemApp &s : iosSystemApps)
            add(s);
    else
        for (const SystemApp &s : otherSystemApps)
            add(s);
    return apps;
}

} // namespace

QString deviceDataPath(const QString &home, const QString &udid)
{
    return QDir(home).filePath(QStringLiteral("devices/%1/data").arg(udid));
}

Device makeDevice(const QString &home, const QString &name, const QString &runtime, const QString &udid,
                  bool withDemo)
{
    const DeviceType type = DeviceCatalog::find(name);
    Device d;
    d.udid = udid;
    d.name = name;
    d.runtime = RuntimeName::identifier(runtime);
    d.deviceTypeIdentifier = type.identifier;
    d.pixelWidth = type.pixelWidth;
    d.pixelHeight = type.pixelHeight;
    d.scale = type.scale;
    const bool ios = d.platform() == QLatin1String("iOS") || d.platform() == QLatin1String("iPadOS");
    d.apps = systemApps(home, d.runtime, ios);
    QDir().mkpath(deviceDataPath(home, udid));
    if (ios && withDemo) {
        InstalledApp demo = AppBundle::demoApp(deviceDataPath(home, udid), udid);
        AppBundle::writeDemoBundle(demo.bundlePath);
        QDir().mkpath(demo.dataPath);
        d.apps.append(demo);
    }
    return d;
}

World create(const QString &home)
{
    World world;
    const QString bootTime = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);

    Device phone = makeDevice(home, QStringLiteral("iPhone 15 Pro"), QStringLiteral("iOS-17-5"), iPhoneUdid, true);
    phone.state = QStringLiteral("Booted");
    phone.lastBootedAt = bootTime;
    // The demo app is in front, as if the developer had just run it.
    AppLauncher::start(world, phone, AppBundle::demoBundleId, LaunchRequest());

    Device pad = makeDevice(home, QStringLiteral("iPad Air 11-inch (M2)"), QStringLiteral("iOS-17-5"), iPadUdid, true);

    Device watch = makeDevice(home, QStringLiteral("Apple Watch Series 9 (45mm)"), QStringLiteral("watchOS-10-5"),
                              watchUdid, false);
    watch.state = QStringLiteral("Booted");
    watch.lastBootedAt = bootTime;

    Device tv = makeDevice(home, QStringLiteral("Apple TV 4K (3rd generation)"), QStringLiteral("tvOS-17-5"), tvUdid,
                           false);

    Device old = makeDevice(home, QStringLiteral("iPhone 14"), QStringLiteral("iOS-16-4"), unavailableUdid, false);
    old.isAvailable = false;
    old.availabilityError = QStringLiteral("runtime profile not found using \"System\" match policy");

    world.devices = {phone, pad, watch, tv, old};
    return world;
}

} // namespace DefaultWorld
