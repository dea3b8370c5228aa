#pragma once
// Starting an app on a device, as `simctl launch` and a tap on a home-screen
// icon do: the launch arguments decide the app's language and region
// (-AppleLanguages "(de-DE)", -AppleLocale de_DE); everything else is kept
// as the app's own arguments.

#include "World.h"

#include <QStringList>

struct LaunchRequest
{
    QString language = QStringLiteral("en-US");
    QString locale;                 // empty: taken from the language
    QStringList extraArguments;
    bool terminateRunning = false;  // --terminate-running-process

    static LaunchRequest fromArguments(const QStringList &appArguments);
};

namespace AppLauncher {
// Starts the app (or, when it runs and no restart is asked for, brings it
// to the front) and returns its session.
AppSession &start(World &world, Device &device, const QString &bundleId, const LaunchRequest &request);
}
