#pragma once
// Where the simulated device screen lies inside the Simulator window, and
// which device point a desktop point falls on. Desktop coordinates have their
// origin at the bottom left (y grows upwards); device points have theirs at
// the top left (y grows downwards).

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>

namespace SimulatorScreenMapper {

// The window's title strip: a fixed share of its height, at most 34 points.
constexpr double titleStripShare = 0.18;
constexpr double maximumTitleStrip = 34.0;

// The device size in points, or nothing while no preview has been taken.
std::optional<QSizeF> deviceSize(QSizeF previewPixelSize, double previewScale);

// The window frame without its title strip (the top of the frame).
QRectF contentRect(const QRectF &windowFrame);

// The device screen: the device's aspect ratio fitted into the content
// rectangle and centred in it; what is left beside it is letterbox.
QRectF fittedDeviceRect(const QRectF &windowFrame, QSizeF deviceSize);

// The device point under `pointer`, clamped to the screen, or nothing when
// the pointer is on the title strip, the letterbox or outside the window.
std::optional<QPointF> devicePoint(QPointF pointer, const QRectF &windowFrame, QSizeF deviceSize);

} // namespace SimulatorScreenMapper
