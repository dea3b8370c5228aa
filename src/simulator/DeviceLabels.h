#pragma once
// How a simulator reads wherever one is named to the user: its name, its
// UDID in brackets and, when the tools listed it, its state.

#include <QString>

namespace DeviceLabels {

// "iPhone 15 (UDID), Booted"; without a known state "iPhone 15 (UDID)".
QString describe(const QString &name, const QString &udid, const QString &state);

} // namespace DeviceLabels
