#pragma once
// Argument lists of the simulator commands that both ways of generating send:
// the launch arguments that force a language, and the status-bar override of
// store screenshots. One place, so the recorded run and the command-line
// generator make the same pictures.

#include <QString>
#include <QStringList>

namespace SimctlArguments {

// "-AppleLanguages" "(de-DE)" "-AppleLocale" "de_DE": the app shows this
// language and its region formats whatever the simulator's own settings.
QStringList languageLaunchArguments(const QString &language);

// simctl arguments: "status_bar" UDID "override" 9:41, a full battery and
// full Wi-Fi; and "status_bar" UDID "clear".
QStringList statusBarOverride(const QString &device);
QStringList statusBarClear(const QString &device);

} // namespace SimctlArguments
