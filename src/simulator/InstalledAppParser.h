#pragma once
// Reads the old-style property-list text that `xcrun simctl listapps <udid>`
// prints: one block per installed app, opened by a line of four blanks, the
// quoted bundle id, " = " and "{". Only user apps are kept.

#include "InstalledSimulatorApp.h"

#include <QList>
#include <QPair>
#include <QString>
#include <optional>

namespace InstalledAppParser {

// The user apps of the whole output, sorted by name as a file browser sorts
// (case-insensitive, digit runs by value), equal names by bundle id.
QList<InstalledSimulatorApp> parse(const QString &output);

// One "Key = Value;" line as (key, value), the value without its quotes,
// or nothing when the line is not such a field. A quoted value also loses
// its escapes: "Caf\U00e9" reads as Café, \" as " and \\ as \.
std::optional<QPair<QString, QString>> field(const QString &line);

// The order in which app names are shown.
bool nameLess(const InstalledSimulatorApp &a, const InstalledSimulatorApp &b);

} // namespace InstalledAppParser
