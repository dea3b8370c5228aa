#pragma once
// Where things sit in the stand-in's Simulator window, in window pixels
// (origin top left): a title strip the stand-in draws itself, then the
// device screen with its aspect ratio kept, centred in the rest. This is
// the layout the recorder assumes of the real Simulator window, so a click
// lands on the same device point for both of them.

#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QSizeF>
#include <optional>

namespace WindowLayout {

// min(window height x 0.18, 34).
double titleStripHeight(double windowHeight);
// The device screen, fitted into the window below the title strip.
QRectF screenRect(const QSizeF &window, const QSizeF &devicePoints);
// The device point under `windowPoint`, or nothing off the screen (title
// strip, letterbox bars).
std::optional<QPointF> devicePoint(const QPointF &windowPoint, const QSizeF &window, const QSizeF &devicePoints);
// A first window size that shows the device whole at up to one pixel per
// point, within 85 % of the available height.
QSize initialSize(const QSizeF &devicePoints, const QSize &available);

} // namespace WindowLayout
