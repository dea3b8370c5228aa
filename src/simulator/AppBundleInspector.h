#pragma once
// What an .app bundle on disk says about itself: its Info.plist (binary or
// XML) and the localizations it ships.

#include <QString>
#include <QStringList>

namespace AppBundleInspector {

struct Info
{
    QString displayName;
    QString bundleIdentifier; // never empty in a returned value
    bool isSimulatorBuild = false;
    QStringList localizations; // "de", "en", ...: sorted, without "Base"
};

// Throws AppError: with the file system's or the parser's description when
// Info.plist cannot be read, and "Could not read CFBundleIdentifier from
// Info.plist." when it names no bundle identifier.
Info inspect(const QString &bundlePath);

} // namespace AppBundleInspector
