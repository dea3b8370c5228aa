#pragma once
// Pixels per point of a simulator's screen, read from the text that
// `xcrun simctl io <udid> enumerate` prints.

#include <QSizeF>
#include <QString>
#include <optional>

namespace SimulatorDisplayScale {
// The first "Preferred UI Scale:" value; 1.0 when there is none, or when it
// is not a number or not positive.
double fromEnumerateOutput(const QString &output);
// The main screen in points: its first "Default width:" and "Default
// height:" (pixels) over the scale; nothing when either is missing.
std::optional<QSizeF> pointSizeFromEnumerateOutput(const QString &output);
}
