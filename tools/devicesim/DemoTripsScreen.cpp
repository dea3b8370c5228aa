// The first tab: upcoming trips as large photo cards under a large title.

#include "DemoChrome.h"
#include "DemoScreens.h"
#include "Scenery.h"

namespace DemoScreens {

namespace {

const double photoHeight = 172;
const double cardHeight = 252;
const double cardGap = 18;

void tripCard(Canvas &c, const QRectF &r, const DemoView &view, const DemoTrip &trip)
{
    const QRectF photo(r.left(), r.top(), r.width(), photoHeight);
    if (QPainter *p = c.painter())
        Scenery::paint(*p, photo, trip.id, 16);
    if (view.toggle(QStringLiteral("saved:") + trip.id)) {
        c.circle(QPointF(photo.right() - 26, photo.top() + 26), 17, QColor(255, 255, 255, 230));
        DemoChrome::heart(c, QRectF(photo.right() - 35, photo.top() + 18, 18, 16), QColor("#e8505b"), true);
    }
    const double y = photo.bottom() + 10;
    const QString rating = QStringLiteral("★ ") + QLocale(view.locale()).toString(trip.rating, 'f', 1);
    const TextStyle ratingStyle{16, true, QColor("#1c1c1e")};
    const double ratingWidth = c.textWidth(rating, ratingStyle) + 4;
    c.text(QRectF(r.left() + 2, y, r.width() - ratingWidth - 8, 28), trip.cityIn(view.language), {21, true, Qt::black});
    c.text(QRectF(r.right() - ratingWidth, y, ratingWidth, 28), rating, ratingStyle, Qt::AlignRight | Qt::AlignVCenter);
    c.text(QRectF(r.left() + 2, y + 28, r.width(), 22),
           trip.countryIn(view.language) + QStringLiteral(" · ") + DemoTrips::dateRange(trip, view.language, view.locale()),
           Typography::secondary());
    c.text(QRectF(r.left() + 2, y + 50, r.width(), 20),
           view.text("trips.nights").arg(trip.nights).arg(trip.travellers), Typography::footnote());
}

} // namespace

void trips(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), DemoTheme::background);
    c.circle(QPointF(g.width - 34, g.topInset + 22), 17, QColor("#e3f2f2"));
    c.line(QPointF(g.width - 41, g.topInset + 22), QPointF(g.width - 27, g.topInset + 22), DemoTheme::tint, 2.4);
    c.line(QPointF(g.width - 34, g.topInset + 15), QPointF(g.width - 34, g.topInset + 29), DemoTheme::tint, 2.4);
    c.hit(QRectF(g.width - 56, g.topInset, 56, 44), QStringLiteral("none"));
    DemoChrome::largeTitle(c, view.text("title.trips"));

    const QRectF viewport(0, DemoChrome::contentTop(g), g.width, DemoChrome::tabBarTop(g) - DemoChrome::contentTop(g));
    const int columns = g.isPad ? 2 : 1;
    const double cardWidth = (g.width - 32 - (columns - 1) * 16) / columns;
    const int rows = int((DemoTrips::all().size() + columns - 1) / columns);
    c.scrollArea(QStringLiteral("trips"), viewport, 44 + rows * (cardHeight + cardGap));

    c.pushClip(viewport);
    const double top = viewport.top() - view.scroll(QStringLiteral("trips"));
    c.text(QRectF(18, top + 6, g.width - 36, 24), view.text("trips.upcoming"), Typography::footnote());
    int i = 0;
    for (const DemoTrip &trip : DemoTrips::all()) {
        const QRectF card(16 + (i % columns) * (cardWidth + 16), top + 40 + (i / columns) * (cardHeight + cardGap),
                          cardWidth, cardHeight);
        tripCard(c, card, view, trip);
        c.hit(card, QStringLiteral("push:detail:") + trip.id);
        ++i;
    }
    c.popClip();
}

} // namespace DemoScreens
