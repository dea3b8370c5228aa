#include "Scenery.h"

#include <QLinearGradient>
#include <QPainterPath>
#include <QPolygonF>

namespace Scenery {

namespace {

struct Palette
{
    QColor skyTop, skyBottom, sun, far, near, accent;
};

Palette palette(const QString &id)
{
    if (id == QLatin1String("lisbon"))
        return {QColor("#ff9a4d"), QColor("#e8583a"), QColor("#fff0b3"), QColor("#2f6ea5"), QColor("#b8432c"), QColor("#f6c453")};
    if (id == QLatin1String("kyoto"))
        return {QColor("#f7c4d4"), QColor("#e0658a"), QColor("#fff4f7"), QColor("#9c3558"), QColor("#5e1a33"), QColor("#ffd6e2")};
    if (id == QLatin1String("reykjavik"))
        return {QColor("#0b2545"), QColor("#1d4e89"), QColor("#e8f1ff"), QColor("#2e3a48"), QColor("#10151c"), QColor("#3ddc97")};
    if (id == QLatin1String("marrakesh"))
        return {QColor("#f8d68c"), QColor("#f09a3e"), QColor("#fff3c4"), QColor("#d9822b"), QColor("#a8501a"), QColor("#2f6b3a")};
    if (id == QLatin1String("patagonia"))
        return {QColor("#a9d6f5"), QColor("#5ea8d8"), QColor("#ffffff"), QColor("#7b8a9a"), QColor("#2f7f78"), QColor("#f2f6f8")};
    return {QColor("#7cc6ee"), QColor("#2f86c8"), QColor("#fff6cf"), QColor("#e8c39e"), QColor("#0e4d92"), QColor("#f9e547")};
}

QPolygonF ridge(const QRectF &r, double baseline, std::initializer_list<double> peaks)
{
    QPolygonF polygon;
    polygon << QPointF(r.left(), r.bottom());
    const int n = int(peaks.size());
    int i = 0;
    for (double p : peaks) {
        const double x = r.left() + r.width() * i / double(n - 1);
        polygon << QPointF(x, r.top() + r.height() * (baseline - p));
        ++i;
    }
    polygon << QPointF(r.right(), r.bottom());
    return polygon;
}

void drawPolygon(QPainter &p, const QPolygonF &polygon, const QColor &color)
{
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    p.drawPolygon(polygon);
}

// Lisbon's hillside of tiled, coloured façades above the river.
void rooftops(QPainter &p, const QRectF &r, const Palette &c)
{
    const QColor facades[] = {c.accent, QColor("#f28b82"), QColor("#7fb3d5"), QColor("#f7e1b5"), QColor("#e8a87c")};
    const double top = r.top() + r.height() * 0.62;
    for (int i = 0; i < 9; ++i) {
        const double w = r.width() / 9.0;
        const double x = r.left() + i * w;
        const double h = r.height() * (0.16 + 0.07 * ((i * 5) % 3));
        p.fillRect(QRectF(x + 2, top + r.height() * 0.2 - h, w - 4, h + r.height() * 0.2), facades[(i * 3) % 5]);
        drawPolygon(p, QPolygonF({QPointF(x, top + r.height() * 0.2 - h), QPointF(x + w / 2, top + r.height() * 0.12 - h),
                                  QPointF(x + w, top + r.height() * 0.2 - h)}),
                    c.near);
    }
    p.fillRect(QRectF(r.left(), r.top() + r.height() * 0.86, r.width(), r.height() * 0.14), c.far);
}

void aurora(QPainter &p, const QRectF &r, const Palette &c)
{
    QColor band = c.accent;
    for (int i = 0; i < 3; ++i) {
        band.setAlphaF(0.35 - i * 0.08);
        QPainterPath path;
        const double y = r.top() + r.height() * (0.18 + i * 0.1);
        path.moveTo(r.left(), y + r.height() * 0.1);
        path.cubicTo(r.left() + r.width() * 0.3, y - r.height() * 0.12, r.left() + r.width() * 0.6,
                     y + r.height() * 0.2, r.right(), y);
        p.setPen(QPen(band, r.height() * 0.08, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawPath(path);
    }
}

void lemons(QPainter &p, const QRectF &r, const Palette &c)
{
    const QColor houses[] = {QColor("#f7d08a"), QColor("#f4a6a6"), QColor("#fdf1e0"), QColor("#f6c28b")};
    for (int i = 0; i < 7; ++i) {
        const double w = r.width() * 0.07;
        const QRectF house(r.left() + r.width() * (0.08 + i * 0.05), r.top() + r.height() * (0.42 + (i % 3) * 0.06),
                           w, r.height() * 0.12);
        p.fillRect(house, houses[i % 4]);
    }
    p.setPen(Qt::NoPen);
    p.setBrush(c.accent);
    for (int i = 0; i < 5; ++i)
        p.drawEllipse(QPointF(r.left() + r.width() * (0.1 + i * 0.08), r.top() + r.height() * 0.72), r.height() * 0.025,
                      r.height() * 0.025);
}

void pagoda(QPainter &p, const QRectF &r, const Palette &c)
{
    const double cx = r.left() + r.width() * 0.68;
    const double base = r.top() + r.height() * 0.8;
    for (int level = 0; level < 4; ++level) {
        const double w = r.width() * (0.22 - level * 0.035);
        const double y = base - level * r.height() * 0.13;
        drawPolygon(p, QPolygonF({QPointF(cx - w / 2 - 6, y), QPointF(cx + w / 2 + 6, y),
                                  QPointF(cx + w / 3, y - r.height() * 0.05), QPointF(cx - w / 3, y - r.height() * 0.05)}),
                    c.near);
        p.fillRect(QRectF(cx - w / 3, y, w * 2 / 3, r.height() * 0.08), c.far);
    }
    p.setBrush(c.accent);
    for (int i = 0; i < 6; ++i)
        p.drawEllipse(QPointF(r.left() + r.width() * (0.05 + i * 0.07), r.top() + r.height() * (0.3 + (i % 2) * 0.08)),
                      r.height() * 0.07, r.height() * 0.07);
}

} // namespace

QColor dominantColor(const QString &id)
{
    return palette(id).skyBottom;
}

void paint(QPainter &p, const QRectF &r, const QString &id, double radius)
{
    const Palette c = palette(id);
    p.save();
    QPainterPath clip;
    clip.addRoundedRect(r, radius, radius);
    p.setClipPath(clip, Qt::IntersectClip);
    QLinearGradient sky(r.topLeft(), r.bottomLeft());
    sky.setColorAt(0, c.skyTop);
    sky.setColorAt(1, c.skyBottom);
    p.fillRect(r, sky);
    p.setPen(Qt::NoPen);
    p.setBrush(c.sun);
    p.drawEllipse(QPointF(r.left() + r.width() * 0.22, r.top() + r.height() * 0.3), r.height() * 0.11, r.height() * 0.11);

    if (id == QLatin1String("lisbon")) {
        rooftops(p, r, c);
    } else if (id == QLatin1String("kyoto")) {
        drawPolygon(p, ridge(r, 1.0, {0.25, 0.32, 0.28, 0.36, 0.3}), c.far);
        pagoda(p, r, c);
    } else if (id == QLatin1String("reykjavik")) {
        aurora(p, r, c);
        drawPolygon(p, ridge(r, 1.0, {0.3, 0.42, 0.25, 0.38, 0.2}), c.far);
        drawPolygon(p, ridge(r, 1.0, {0.12, 0.16, 0.1, 0.14, 0.12}), c.near);
    } else if (id == QLatin1String("marrakesh")) {
        drawPolygon(p, ridge(r, 1.0, {0.3, 0.36, 0.24, 0.32}), c.far);
        drawPolygon(p, ridge(r, 1.0, {0.12, 0.2, 0.08, 0.16, 0.1}), c.near);
        p.fillRect(QRectF(r.left() + r.width() * 0.75, r.top() + r.height() * 0.35, r.width() * 0.02, r.height() * 0.4), c.near.darker(140));
        p.setBrush(c.accent);
        p.drawEllipse(QPointF(r.left() + r.width() * 0.76, r.top() + r.height() * 0.35), r.height() * 0.1, r.height() * 0.05);
    } else if (id == QLatin1String("patagonia")) {
        drawPolygon(p, ridge(r, 1.0, {0.3, 0.62, 0.4, 0.7, 0.35, 0.5}), c.far);
        drawPolygon(p, ridge(r, 0.75, {0.02, 0.3, 0.12, 0.36, 0.05, 0.2}), c.accent);
        p.fillRect(QRectF(r.left(), r.top() + r.height() * 0.78, r.width(), r.height() * 0.22), c.near);
    } else {
        drawPolygon(p, ridge(r, 1.0, {0.55, 0.5, 0.4, 0.2, 0.1, 0.05}), c.far);
        p.fillRect(QRectF(r.left(), r.top() + r.height() * 0.8, r.width(), r.height() * 0.2), c.near);
        lemons(p, r, c);
    }
    p.restore();
}

} // namespace Scenery
