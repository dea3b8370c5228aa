// A trip's detail, pushed from the trip list, Explore or the map: a hero
// photo under the status bar and a sheet with the overview and itinerary.

#include "DemoChrome.h"
#include "DemoScreens.h"
#include "Scenery.h"

namespace DemoScreens {

namespace {

void roundButton(Canvas &c, const QPointF &centre)
{
    c.circle(centre, 18, QColor(0, 0, 0, 90));
}

void itinerary(Canvas &c, const DemoView &view, const DemoTrip &trip, double y)
{
    const ScreenGeometry &g = c.geometry();
    c.text(QRectF(20, y, g.width - 40, 28), view.text("detail.itinerary"), Typography::headline());
    y += 36;
    for (int day = 0; day < trip.landmarks.size(); ++day) {
        c.circle(QPointF(38, y + 20), 18, QColor("#e0f2f1"));
        c.text(QRectF(20, y + 2, 36, 36), QString::number(day + 1), {16, true, DemoTheme::tint}, Qt::AlignCenter);
        c.text(QRectF(68, y, g.width - 88, 18), view.text("detail.day").arg(day + 1), {13, true, DemoTheme::secondaryText});
        c.text(QRectF(68, y + 18, g.width - 88, 24), trip.landmarks[day], Typography::body());
        y += 46;
    }
}

} // namespace

void detail(Canvas &c, const DemoView &view, const DemoTrip &trip)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), DemoTheme::background);
    const QRectF hero(0, 0, g.width, qRound(g.height * 0.40));
    if (QPainter *p = c.painter())
        Scenery::paint(*p, hero, trip.id);

    const QPointF back(16 + 18, g.topInset + 22);
    roundButton(c, back);
    DemoChrome::chevron(c, back + QPointF(-1, 0), Qt::white, true);
    c.hit(QRectF(0, g.topInset - 6, 110, 58), QStringLiteral("back"));
    const QPointF save(g.width - 34, g.topInset + 22);
    const QString savedKey = QStringLiteral("saved:") + trip.id;
    roundButton(c, save);
    DemoChrome::heart(c, QRectF(save.x() - 9, save.y() - 8, 18, 16), view.toggle(savedKey) ? QColor("#ff6b72") : Qt::white,
                      view.toggle(savedKey));
    c.hit(QRectF(g.width - 64, g.topInset - 6, 64, 58), QStringLiteral("toggle:") + savedKey);

    const double sheetTop = hero.bottom() - 28;
    c.fill(QRectF(0, sheetTop, g.width, g.height - sheetTop + 40), DemoTheme::background, 28);
    const QRectF button(20, g.height - g.bottomInset - 12 - 54, g.width - 40, 54);
    c.pushClip(QRectF(0, sheetTop, g.width, button.top() - 8 - sheetTop));
    double y = sheetTop + 26;
    c.title(QRectF(20, y, g.width - 40, 40), trip.cityIn(view.language), {31, true, Qt::black});
    y += 42;
    c.text(QRectF(20, y, g.width - 40, 22),
           trip.countryIn(view.language) + QStringLiteral(" · ") + DemoTrips::dateRange(trip, view.language, view.locale()),
           Typography::secondary());
    y += 28;
    const QLocale locale(view.locale());
    c.text(QRectF(20, y, 160, 22), QStringLiteral("★★★★★  ") + locale.toString(trip.rating, 'f', 1),
           {15, true, QColor("#f5a623")});
    c.text(QRectF(g.width / 2, y, g.width / 2 - 20, 22),
           view.text("detail.perNight").arg(locale.toCurrencyString(double(trip.pricePerNight), QString(), 0)),
           {15, true, Qt::black}, Qt::AlignRight | Qt::AlignVCenter);
    y += 40;
    c.text(QRectF(20, y, g.width - 40, 28), view.text("detail.overview"), Typography::headline());
    y += 32;
    c.paragraph(QRectF(20, y, g.width - 40, 66), trip.overviewIn(view.language), {16, false, QColor("#3a3a3c")});
    itinerary(c, view, trip, y + 76);
    c.popClip();

    c.fill(button, DemoTheme::tint, 14);
    c.text(button, view.text("detail.book"), {18, true, Qt::white}, Qt::AlignCenter);
    c.hit(button, QStringLiteral("none"));
}

} // namespace DemoScreens
