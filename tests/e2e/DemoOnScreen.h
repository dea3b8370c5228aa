#pragma once
// The demo app as a person at the stand-in's Simulator window sees it: where
// a device point lies on the screen, what the app shows now, and the flow a
// recording saved, for the tests that click through it.

#include "E2ESupport.h"

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

// HOME and XDG_DATA_HOME inside the world's scratch folder (the Trash lives there).
QHash<QString, QString> privateHome(const DeviceWorld &world);

// The demo app's session on the booted iPhone, as the stand-in keeps it.
QJsonObject demoSession(const DeviceWorld &world);
// Waits until the app on the Simulator has reached what `reached` looks for.
bool waitForDemo(const DeviceWorld &world, const std::function<bool(const QJsonObject &)> &reached);

// The recorded operations of each checkpoint of a saved project, waits left
// out, as "tap X Y" and "swipe X1 Y1 X2 Y2".
QStringList screenActions(const QJsonObject &project);

} // namespace E2E
