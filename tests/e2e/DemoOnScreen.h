#pragma once
// The demo app as a person at the stand-in's Simulator window sees it: where
// a device point lies on the screen, and when the app shows what a click
// should have opened, for the tests that click through it.

#include "E2ESupport.h"
#include "XDisplay.h"

#include <QJsonObject>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QStringList>
#include <functional>

namespace E2E {

// Where the device screen sits in a Simulator window's client area (root
// coordinates): below a title strip of min(height x 0.18, 34) pixels, its
// aspect ratio fitted and centred.
QRectF screenRect(const QRect &window);
// The root pixel over a device point, and the device point under a pixel.
QPoint pixelFor(const QPointF &point, const QRect &window);
QPointF pointAt(const QPoint &pixel, const QRect &window);
bool within1(const QPointF &a, const QPointF &b);

// The world's private home and DISPLAY: the environment of programs on the
// test's own desktop.
QHash<QString, QString> privateDesktop(const DeviceWorld &world, const XDisplay &display);

// Waits until the app on the Simulator has reached what `reached` looks for.
bool waitForDemo(const DeviceWorld &world, const std::function<bool(const QJsonObject &)> &reached);

} // namespace E2E
