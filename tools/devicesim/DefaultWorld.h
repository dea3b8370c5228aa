#pragma once
// The world a fresh state folder starts with, and the making of devices
// for it: one booted iPhone running the demo app, a shut-down iPad, a booted
// Apple Watch (which the product must ignore), an Apple TV and an iPhone
// whose runtime is gone (unavailable).

#include "World.h"

namespace DefaultWorld {

// Fixed identifiers, so that tests and documentation can name them.
inline const QString iPhoneUdid = QStringLiteral("6E1A9C2B-4D3F-4B7A-9E51-7C2D8A4F1B36");
inline const QString iPadUdid = QStringLiteral("B8F02D6C-1E7A-4C39-8D25-3A9E6F0C4D17");
inline const QString watchUdid = QStringLiteral("3C7D5E91-8A2B-4F60-B1D4-9E8F2A6C5B03");
inline const QString tvUdid = QStringLiteral("D4A61F38-5B9C-4E27-A08D-6F1B3C7E9A52");
inline const QString unavailableUdid = QStringLiteral("F29B7E04-6C1D-4A85-9B3E-2D7A5C8F1E69");

World create(const QString &home);

// A device of a known or unknown type with the platform's system apps and,
// for iOS devices when `withDemo` is set, the demo app installed.
Device makeDevice(const QString &home, const QString &name, const QString &runtime, const QString &udid,
                  bool withDemo);
// The folder that stands for the device's data (containers live in it).
QString deviceDataPath(const QString &home, const QString &udid);

} // namespace DefaultWorld
