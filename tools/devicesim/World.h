#pragma once
// Everything the stand-in remembers between invocations: the simulated
// devices, what is installed and running on each, the status bar overrides
// and the switched-on faults. Every devicesim process is short-lived: it
// loads the world from DEVICESIM_HOME, acts, and saves it back (StateStore).

#include "Faults.h"

#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

struct InstalledApp
{
    QString bundleId;
    QString displayName;   // CFBundleDisplayName; may be empty
    QString bundleName;    // CFBundleName
    QString executable;
    QString version = QStringLiteral("1.0");
    QString shortVersion = QStringLiteral("1.0");
    bool isSystem = false;
    QString bundlePath;    // the .app folder (real for user apps)
    QString dataPath;      // the data container folder

    QString label() const { return displayName.isEmpty() ? bundleName : displayName; }
};

// The running process of an app on a device and where its user interface
// stands. Only the demo app has screens worth keeping; other apps keep the
// launch facts alone.
struct AppSession
{
    QString bundleId;
    qint64 pid = 0;
    QString language = QStringLiteral("en-US"); // from -AppleLanguages
    QString locale = QStringLiteral("en_US");   // from -AppleLocale
    QStringList extraArguments;                 // the rest of the launch arguments

    QString tab = QStringLiteral("trips");
    QHash<QString, QStringList> stacks;        // tab -> screens pushed on it
    QHash<QString, double> scroll;             // screen key -> offset in points
    QHash<QString, bool> toggles;              // settings switches
    bool searchFocused = false;
    QString searchText;

    QStringList &stack() { return stacks[tab]; }
    QStringList stack() const { return stacks.value(tab); }
};

struct Device
{
    QString udid;
    QString name;
    QString runtime;          // com.apple.CoreSimulator.SimRuntime.iOS-17-5
    QString deviceTypeIdentifier;
    QString state = QStringLiteral("Shutdown");
    bool isAvailable = true;
    QString availabilityError;
    int pixelWidth = 1179;
    int pixelHeight = 2556;
    double scale = 3.0;
    QString lastBootedAt;     // ISO 8601, empty when never booted

    QList<InstalledApp> apps;
    QList<AppSession> running;
    QString foregroundApp;    // bundle id; empty shows the home screen
    QMap<QString, QString> statusBar; // override name -> value; empty: none

    bool isBooted() const { return state == QLatin1String("Booted"); }
    double pointWidth() const { return pixelWidth / scale; }
    double pointHeight() const { return pixelHeight / scale; }
    // "iOS", "watchOS", "tvOS", ... taken from the runtime identifier.
    QString platform() const;

    InstalledApp *app(const QString &bundleId);
    const InstalledApp *app(const QString &bundleId) const;
    AppSession *session(const QString &bundleId);
    const AppSession *session(const QString &bundleId) const;
    AppSession *foregroundSession();
    const AppSession *foregroundSession() const;
    void stopApp(const QString &bundleId);
    void shutDown();
};

struct World
{
    QList<Device> devices;
    Faults faults;
    qint64 nextPid = 41000;
    QString simulatorAppDevice; // the UDID the Simulator app was last pointed at

    Device *device(const QString &udid);
    const Device *device(const QString &udid) const;

    QJsonObject toJson() const;
    static World fromJson(const QJsonObject &object);
};

namespace RuntimeName {
inline const QString prefix = QStringLiteral("com.apple.CoreSimulator.SimRuntime.");
// "iOS-17-5", "iOS 17.5" or the full identifier -> the full identifier.
QString identifier(const QString &text);
// com.apple.CoreSimulator.SimRuntime.iOS-17-5 -> "iOS 17.5".
QString displayName(const QString &identifier);
}
