// simctl listapps | get_app_container | install | uninstall | launch | terminate

#include "AppBundle.h"
#include "AppLauncher.h"
#include "Console.h"
#include "DefaultWorld.h"
#include "PlistDescription.h"
#include "SimctlSupport.h"
#include "StateStore.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QUrl>
#include <QVariantMap>

namespace Simctl {

namespace {

// Apps the device really offers: a missing-app fault hides one.
const InstalledApp *visibleApp(const World &world, const Device &d, const QString &bundleId)
{
    const InstalledApp *app = d.app(bundleId);
    return app && !world.faults.isAppMissing(d.udid, bundleId) ? app : nullptr;
}

QString fileUrl(const QString &path)
{
    return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) + QLatin1Char('/');
}

QVariantMap appEntry(const InstalledApp &app)
{
    QVariantMap entry;
    entry.insert(QStringLiteral("ApplicationType"), app.isSystem ? QStringLiteral("System") : QStringLiteral("User"));
    entry.insert(QStringLiteral("Bundle"), fileUrl(app.bundlePath));
    if (!app.isSystem)
        entry.insert(QStringLiteral("BundleContainer"), fileUrl(QFileInfo(app.bundlePath).absolutePath()));
    if (!app.displayName.isEmpty())
        entry.insert(QStringLiteral("CFBundleDisplayName"), app.displayName);
    entry.insert(QStringLiteral("CFBundleExecutable"), app.executable);
    entry.insert(QStringLiteral("CFBundleIdentifier"), app.bundleId);
    entry.insert(QStringLiteral("CFBundleName"), app.bundleName);
    entry.insert(QStringLiteral("CFBundleVersion"), app.version);
    if (!app.dataPath.isEmpty())
        entry.insert(QStringLiteral("DataContainer"), fileUrl(app.dataPath));
    QVariantMap groups;
    if (app.isSystem)
        groups.insert(QStringLiteral("group.") + app.bundleId,
                      fileUrl(QDir::cleanPath(app.bundlePath + QStringLiteral("/../../Shared/") + app.bundleName)));
    entry.insert(QStringLiteral("GroupContainers"), groups);
    entry.insert(QStringLiteral("Path"), app.bundlePath);
    entry.insert(QStringLiteral("SBAppTags"), QVariantList());
    if (!app.isSystem)
        entry.insert(QStringLiteral("UIDeviceFamily"), QVariantList{1, 2});
    return entry;
}

ToolFailure notInstalled(const QString &bundleId)
{
    return error(QStringLiteral("NSPOSIXErrorDomain"), 2,
                 QStringLiteral("Failed to get the application container for %1\nNo such file or directory").arg(bundleId));
}

ToolFailure openFailed(const QString &bundleId, int code, const QString &reason)
{
    return error(QStringLiteral("FBSOpenApplicationServiceErrorDomain"), code,
                 QStringLiteral("The request to open \"%1\" failed.\n"
                                "Underlying error (domain=FBSOpenApplicationErrorDomain, code=%2):\n\t%3")
                     .arg(bundleId)
                     .arg(code)
                     .arg(reason));
}

bool copyFolder(const QString &from, const QString &to)
{
    if (!QDir().mkpath(to))
        return false;
    QDirIterator it(from, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = QDir(to).filePath(QDir(from).relativeFilePath(source));
        if (it.fileInfo().isDir() ? !QDir().mkpath(target) : (QFile::exists(target) && !QFile::remove(target)) || !QFile::copy(source, target))
            return false;
    }
    return true;
}

} // namespace

int listApps(const QStringList &arguments)
{
    requireArguments(arguments, 1, QStringLiteral("listapps <device>"));
    World world = StateStore::read();
    const Device &d = bootedDevice(world, arguments[0]);
    QVariantMap apps;
    for (const InstalledApp &app : d.apps)
        if (visibleApp(world, d, app.bundleId))
            apps.insert(app.bundleId, appEntry(app));
    Console::out(PlistDescription::text(apps) + QLatin1Char('\n'));
    return 0;
}

int getAppContainer(const QStringList &arguments)
{
    requireArguments(arguments, 2, QStringLiteral("get_app_container <device> <app bundle identifier> [<container>]"));
    World world = StateStore::read();
    const Device &d = bootedDevice(world, arguments[0]);
    const InstalledApp *app = visibleApp(world, d, arguments[1]);
    if (!app)
        throw notInstalled(arguments[1]);
    const QString container = arguments.value(2, QStringLiteral("app"));
    if (container == QLatin1String("app"))
        Console::out(app->bundlePath + QLatin1Char('\n'));
    else if (container == QLatin1String("data") && !app->dataPath.isEmpty())
        Console::out(app->dataPath + QLatin1Char('\n'));
    else if (container == QLatin1String("groups"))
        Console::out(QString());
    else
        throw notInstalled(arguments[1]);
    return 0;
}

int install(const QStringList &arguments)
{
    requireArguments(arguments, 2, QStringLiteral("install <device> <path>"));
    const QString source = QFileInfo(arguments[1]).absoluteFilePath();
    StateStore::modify([&](World &world) {
        Device &d = bootedDevice(world, arguments[0]);
        std::optional<InstalledApp> app = AppBundle::read(source);
        if (!app)
            throw error(QStringLiteral("IXUserPresentableErrorDomain"), 1,
                        QStringLiteral("This app could not be installed at this time.\nFailed to get bundle ID from %1")
                            .arg(QDir(source).filePath(QStringLiteral("Info.plist"))));
        const QString deviceData = DefaultWorld::deviceDataPath(StateStore::home(), d.udid);
        app->bundlePath = AppBundle::bundleContainer(deviceData, d.udid, app->bundleId) + QLatin1Char('/')
            + QFileInfo(source).fileName();
        app->dataPath = AppBundle::dataContainer(deviceData, d.udid, app->bundleId);
        if (!copyFolder(source, app->bundlePath) || !QDir().mkpath(app->dataPath))
            throw error(QStringLiteral("NSCocoaErrorDomain"), 513, QStringLiteral("Could not copy %1").arg(source));
        d.stopApp(app->bundleId);
        if (InstalledApp *existing = d.app(app->bundleId))
            *existing = *app;
        else
            d.apps.append(*app);
    });
    return 0;
}

int uninstall(const QStringList &arguments)
{
    requireArguments(arguments, 2, QStringLiteral("uninstall <device> <app bundle identifier>"));
    StateStore::modify([&](World &world) {
        Device &d = bootedDevice(world, arguments[0]);
        d.stopApp(arguments[1]);
        d.apps.erase(std::remove_if(d.apps.begin(), d.apps.end(),
                                    [&](const InstalledApp &a) { return a.bundleId == arguments[1] && !a.isSystem; }),
                     d.apps.end());
    });
    return 0;
}

int launch(const QStringList &arguments)
{
    bool restart = false;
    QStringList rest;
    int i = 0;
    for (; i < arguments.size() && arguments[i].startsWith(QLatin1Char('-')); ++i) {
        if (arguments[i] == QLatin1String("--terminate-running-process"))
            restart = true;
        // --console, --console-pty, --stdout=, --stderr=, -w: accepted, nothing to attach to
    }
    rest = arguments.mid(i);
    requireArguments(rest, 2, QStringLiteral("launch [-w | --wait-for-debugger] [--console|--console-pty|--stdout=<path> --stderr=<path>] [--terminate-running-process] <device> <app bundle identifier> [<argv 1> <argv 2> ...]"));
    const QString bundleId = rest[1];
    LaunchRequest request = LaunchRequest::fromArguments(rest.mid(2));
    request.terminateRunning = restart;
    qint64 pid = 0;
    std::optional<ToolFailure> failure; // thrown after saving: a failed restart still ends the old process
    StateStore::modify([&](World &world) {
        Device &d = bootedDevice(world, rest[0]);
        if (!visibleApp(world, d, bundleId))
            throw openFailed(bundleId, 4,
                             QStringLiteral("The operation couldn’t be completed. Application info provider "
                                            "(FBSApplicationLibrary) returned nil for \"%1\"")
                                 .arg(bundleId));
        if (world.faults.launchFails(request.language)) {
            if (restart)
                d.stopApp(bundleId);
            failure = openFailed(bundleId, 1,
                                 QStringLiteral("The operation couldn’t be completed. The process exited during launch "
                                                "(signal 6, abort) with -AppleLanguages (%1).")
                                     .arg(request.language));
            return;
        }
        pid = AppLauncher::start(world, d, bundleId, request).pid;
    });
    if (failure)
        throw *failure;
    Console::out(QStringLiteral("%1: %2\n").arg(bundleId).arg(pid));
    return 0;
}

int terminate(const QStringList &arguments)
{
    requireArguments(arguments, 2, QStringLiteral("terminate <device> <app bundle identifier>"));
    StateStore::modify([&](World &world) {
        Device &d = bootedDevice(world, arguments[0]);
        if (!d.session(arguments[1]))
            throw error(QStringLiteral("com.apple.CoreSimulator.SimError"), 164, QStringLiteral("found nothing to terminate"));
        d.stopApp(arguments[1]);
    });
    return 0;
}

} // namespace Simctl
