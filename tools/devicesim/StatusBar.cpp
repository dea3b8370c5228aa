#include "StatusBar.h"

#include <QTime>

namespace StatusBar {

namespace {

void signalBars(Canvas &c, const QPointF &bottomLeft, int bars, const QColor &color)
{
    QColor off = color;
    off.setAlphaF(0.3);
    for (int i = 0; i < 4; ++i) {
        const double h = 4 + i * 2.6;
        c.fill(QRectF(bottomLeft.x() + i * 4.5, bottomLeft.y() - h, 3, h), i < bars ? color : off, 1);
    }
}

void wifi(Canvas &c, const QPointF &centre, int bars, const QColor &color)
{
    QPainter *p = c.painter();
    if (!p)
        return;
    QColor off = color;
    off.setAlphaF(0.3);
    p->save();
    for (int i = 0; i < 3; ++i) {
        const double r = 3.5 + i * 3.6;
        p->setPen(QPen(i < bars ? color : off, 2.2, Qt::SolidLine, Qt::FlatCap));
        p->setBrush(Qt::NoBrush);
        p->drawArc(QRectF(centre.x() - r, centre.y() - r, 2 * r, 2 * r), 50 * 16, 80 * 16);
    }
    p->restore();
}

void battery(Canvas &c, const QRectF &body, int level, bool charging, const QColor &color)
{
    QColor frame = color;
    frame.setAlphaF(0.4);
    if (QPainter *p = c.painter()) {
        p->save();
        p->setPen(QPen(frame, 1));
        p->setBrush(Qt::NoBrush);
        p->drawRoundedRect(body, 4, 4);
        p->restore();
    }
    c.fill(QRectF(body.right() + 1.5, body.center().y() - 2, 1.5, 4), frame, 0.7);
    const QRectF inner = body.adjusted(2, 2, -2, -2);
    const QColor fillColor = level <= 20 && !charging ? QColor("#ff3b30") : color;
    c.fill(QRectF(inner.left(), inner.top(), inner.width() * qBound(0, level, 100) / 100.0, inner.height()), fillColor, 2);
}

} // namespace

void draw(Canvas &c, const QMap<QString, QString> &overrides, bool light)
{
    const ScreenGeometry &g = c.geometry();
    if (g.isWatch)
        return;
    const QColor color = light ? Qt::white : Qt::black;
    const bool overridden = !overrides.isEmpty();
    const QString time = overrides.value(QStringLiteral("time"), QTime::currentTime().toString(QStringLiteral("h:mm")));
    const int level = overrides.value(QStringLiteral("batteryLevel"), overridden ? QStringLiteral("100") : QStringLiteral("76")).toInt();
    const QString state = overrides.value(QStringLiteral("batteryState"));
    const int wifiBars = overrides.value(QStringLiteral("wifiBars"), QStringLiteral("2")).toInt();
    const int cellBars = overrides.value(QStringLiteral("cellularBars"), QStringLiteral("3")).toInt();
    const bool tall = g.topInset > 40;
    const double midY = tall ? g.topInset / 2 + 2 : g.topInset / 2;
    const TextStyle clock{tall ? 17.0 : 15.0, true, color};
    if (tall)
        c.text(QRectF(0, midY - 12, g.width / 2 - 62, 24), time, clock, Qt::AlignCenter);
    else
        c.text(QRectF(g.isPad ? 20 : 6, midY - 10, 120, 20), time, clock);
    const double right = g.width - (tall ? 30 : 8);
    battery(c, QRectF(right - 26, midY - 6.5, 25, 13), level, state == QLatin1String("charging"), color);
    wifi(c, QPointF(right - 42, midY + 6), wifiBars, color);
    if (!g.isPad)
        signalBars(c, QPointF(right - 72, midY + 5.5), cellBars, color);
}

} // namespace StatusBar
