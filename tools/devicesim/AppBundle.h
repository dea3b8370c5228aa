#pragma once
// App bundles on disk: the demo app's identity and its simulator .app
// bundle (an XML Info.plist plus one .lproj folder per translation), and
// reading the identity of a bundle handed to `simctl install`.

#include "World.h"

#include <QString>
#include <optional>

namespace AppBundle {

inline const QString demoBundleId = QStringLiteral("com.vantrel.demo.Trips");

// The demo app as installed on a device, with its containers under `deviceData`.
InstalledApp demoApp(const QString &deviceData, const QString &udid);
// Writes the demo's .app folder; returns false when it cannot be written.
bool writeDemoBundle(const QString &bundlePath);
// The identity in `bundlePath`/Info.plist (XML form only); nothing when it
// cannot be read or has no CFBundleIdentifier.
std::optional<InstalledApp> read(const QString &bundlePath);
// Where an installed user app's containers live on a device.
QString bundleContainer(const QString &deviceData, const QString &udid, const QString &bundleId);
QString dataContainer(const QString &deviceData, const QString &udid, const QString &bundleId);

} // namespace AppBundle
