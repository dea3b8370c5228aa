#pragma once
// The painted "photos" of the demo trips: a sky, a sun or moon and a
// landscape in the colours of each place, so that every trip card and hero
// image has its own big coloured shapes.

#include <QPainter>
#include <QRectF>
#include <QString>

namespace Scenery {
// Paints the scenery of trip `id` into `rect`, clipped to a rounded shape.
void paint(QPainter &painter, const QRectF &rect, const QString &id, double radius = 0);
// The colour that dominates the scenery (used for thumbnails and tiles).
QColor dominantColor(const QString &id);
}
