// The third tab: a map of the saved places with pins, and a card that
// counts them.

#include "DemoChrome.h"
#include "DemoScreens.h"
#include "Scenery.h"

#include <QPainterPath>

namespace DemoScreens {

namespace {

// Pin positions as fractions of the map.
struct Pin
{
    const char *trip;
    double x, y;
};
const Pin pins[] = {{"lisbon", 0.28, 0.30}, {"kyoto", 0.70, 0.22}, {"marrakesh", 0.55, 0.52},
                    {"reykjavik", 0.20, 0.12}, {"patagonia", 0.80, 0.48}, {"amalfi", 0.42, 0.18}};

void landscape(Canvas &c, const QRectF &map)
{
    c.fill(map, QColor("#a9d18e"));
    QPainter *p = c.painter();
    if (!p)
        return;
    QPainterPath sea;
    sea.moveTo(map.left(), map.top() + map.height() * 0.36);
    sea.cubicTo(map.left() + map.width() * 0.35, map.top() + map.height() * 0.30, map.left() + map.width() * 0.5,
                map.top() + map.height() * 0.62, map.right(), map.top() + map.height() * 0.56);
    sea.lineTo(map.bottomRight());
    sea.lineTo(map.bottomLeft());
    sea.closeSubpath();
    p->setPen(Qt::NoPen);
    p->setBrush(QColor("#4f97d6"));
    p->drawPath(sea);
    p->setBrush(QColor("#7fb86a"));
    p->drawEllipse(QPointF(map.left() + map.width() * 0.62, map.top() + map.height() * 0.3), map.width() * 0.16, map.height() * 0.08);
    const QColor road("#ffffff"), border("#b9c7a9");
    const QList<QLineF> roads = {
        QLineF(map.left(), map.top() + map.height() * 0.25, map.right(), map.top() + map.height() * 0.1),
        QLineF(map.left() + map.width() * 0.35, map.top(), map.left() + map.width() * 0.5, map.top() + map.height() * 0.6),
        QLineF(map.left() + map.width() * 0.75, map.top(), map.left() + map.width() * 0.9, map.top() + map.height() * 0.6),
    };
    for (const QLineF &l : roads)
        c.line(l.p1(), l.p2(), border, 9);
    for (const QLineF &l : roads)
        c.line(l.p1(), l.p2(), road, 6);
}

void pin(Canvas &c, const QPointF &at, const QString &label, bool saved)
{
    const QColor color = saved ? QColor("#e8505b") : QColor("#8e8e93");
    c.circle(at, 14, Qt::white);
    c.circle(at, 11, color);
    c.circle(at, 4, Qt::white);
    const TextStyle style{13, true, QColor("#1c1c1e")};
    const double w = c.textWidth(label, style) + 14;
    const QRectF bubble(at.x() - w / 2, at.y() + 17, w, 22);
    c.fill(bubble, QColor(255, 255, 255, 235), 11);
    c.text(bubble, label, style, Qt::AlignCenter);
}

} // namespace

void saved(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), DemoTheme::background);
    DemoChrome::largeTitle(c, view.text("title.saved"));
    const QRectF map(0, DemoChrome::contentTop(g), g.width, DemoChrome::tabBarTop(g) - DemoChrome::contentTop(g));
    c.pushClip(map);
    landscape(c, map);
    QList<const DemoTrip *> savedTrips;
    for (const Pin &p : pins) {
        const DemoTrip *trip = DemoTrips::find(QString::fromLatin1(p.trip));
        const bool isSaved = view.toggle(QStringLiteral("saved:") + trip->id);
        if (isSaved)
            savedTrips.append(trip);
        const QPointF at(map.left() + map.width() * p.x, map.top() + map.height() * p.y);
        pin(c, at, trip->cityIn(view.language), isSaved);
        c.hit(QRectF(at.x() - 24, at.y() - 24, 48, 64), QStringLiteral("push:detail:") + trip->id);
    }

    const QRectF card(12, map.bottom() - 12 - 150, g.width - 24, 150);
    c.fill(card.translated(0, 2), QColor(0, 0, 0, 30), 18);
    c.fill(card, Qt::white, 18);
    c.hit(card, QStringLiteral("none"));
    c.text(QRectF(card.left() + 16, card.top() + 12, card.width() - 32, 26),
           view.text("saved.count").arg(savedTrips.size()), Typography::headline());
    c.text(QRectF(card.left() + 16, card.top() + 38, card.width() - 32, 18), view.text("saved.nearby"), Typography::footnote());
    const double thumb = 64;
    for (int i = 0; i < savedTrips.size() && i < 4; ++i) {
        const QRectF box(card.left() + 16 + i * (thumb + 22), card.top() + 62, thumb, 52);
        if (QPainter *p = c.painter())
            Scenery::paint(*p, box, savedTrips[i]->id, 10);
        c.text(QRectF(box.left() - 8, box.bottom() + 2, thumb + 16, 18), savedTrips[i]->cityIn(view.language),
               {12, false, QColor("#3a3a3c")}, Qt::AlignCenter);
        c.hit(box, QStringLiteral("push:detail:") + savedTrips[i]->id);
    }
    c.popClip();
}

} // namespace DemoScreens
