#pragma once
// Pixels per point of a simulator's screen, read from the text that
// `xcrun simctl io <udid> enumerate` prints.

#include <QString>

namespace SimulatorDisplayScale {
// The first "Preferred UI Scale:" value; 1.0 when there is none, or when it
// is not a number or not positive.
double fromEnumerateOutput(const QString &output);
}
