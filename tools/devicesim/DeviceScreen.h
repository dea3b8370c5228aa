#pragma once
// A device's whole screen: the app in front (the demo app, another app or
// the home screen), the unexpected dialog when a fault puts one there, the
// status bar and the home indicator. Renders it as the Simulator's
// screenshot would show it, and routes taps, swipes and typing to what is
// on it.

#include "World.h"

#include <QImage>
#include <QPointF>
#include <optional>

namespace DeviceScreen {

QImage render(const Device &device, const Faults &faults);
// Writes the screenshot; the file type follows the extension (PNG unless
// .jpg/.jpeg/.tiff). Returns an error text on failure.
std::optional<QString> save(const QImage &image, const QString &path);

void tap(World &world, Device &device, const QPointF &point);
void swipe(Device &device, const QPointF &from, const QPointF &to);
std::optional<QString> type(Device &device, const QString &text);

} // namespace DeviceScreen
