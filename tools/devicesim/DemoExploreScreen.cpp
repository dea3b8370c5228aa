// The second tab: a search field over category tiles; typing (or a tile)
// turns the tiles into a list of matching trips.

#include "DemoChrome.h"
#include "DemoScreens.h"
#include "Scenery.h"

namespace DemoScreens {

namespace {

struct Category
{
    const char *key;
    QColor color;
};

const Category categories[] = {
    {"beaches", QColor("#1fa2b8")},
    {"mountains", QColor("#3c8d5a")},
    {"food", QColor("#f07f2a")},
    {"culture", QColor("#7a5cc8")},
};

void magnifier(Canvas &c, const QPointF &centre, const QColor &color)
{
    if (QPainter *p = c.painter()) {
        p->setPen(QPen(color, 2));
        p->setBrush(Qt::NoBrush);
        p->drawEllipse(centre, 6.5, 6.5);
    }
    c.line(centre + QPointF(4.8, 4.8), centre + QPointF(9.5, 9.5), color, 2.2);
}

void searchField(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    const bool focused = view.session.searchFocused;
    const QString cancel = view.text("explore.cancel");
    const double cancelWidth = focused ? c.textWidth(cancel, Typography::body()) + 16 : 0;
    const QRectF field(16, g.topInset + 100, g.width - 32 - cancelWidth, 38);
    c.fill(field, DemoTheme::fieldBackground, 10);
    magnifier(c, QPointF(field.left() + 17, field.center().y() - 1), DemoTheme::inactive);
    c.hit(field, QStringLiteral("focus-search"));
    const QRectF textBox(field.left() + 34, field.top(), field.width() - 66, field.height());
    const QString query = view.session.searchText;
    if (query.isEmpty()) {
        c.text(textBox, view.text("explore.placeholder"), {17, false, DemoTheme::inactive});
    } else {
        c.text(textBox, query, Typography::body());
        const QPointF clear(field.right() - 17, field.center().y());
        c.circle(clear, 9, QColor("#b4b4b9"));
        c.line(clear + QPointF(-3.5, -3.5), clear + QPointF(3.5, 3.5), Qt::white, 1.8);
        c.line(clear + QPointF(-3.5, 3.5), clear + QPointF(3.5, -3.5), Qt::white, 1.8);
        c.hit(QRectF(field.right() - 34, field.top(), 34, field.height()), QStringLiteral("clear-search"));
    }
    if (focused) {
        const double caretX = textBox.left() + (query.isEmpty() ? 0 : qMin(textBox.width(), c.textWidth(query, Typography::body()))) + 1;
        c.line(QPointF(caretX, field.top() + 9), QPointF(caretX, field.bottom() - 9), DemoTheme::tint, 2);
        const QRectF cancelBox(field.right() + 8, field.top(), cancelWidth, field.height());
        c.text(cancelBox, cancel, {17, false, DemoTheme::tint}, Qt::AlignRight | Qt::AlignVCenter);
        c.hit(cancelBox, QStringLiteral("cancel-search"));
    }
}

void categoryTiles(Canvas &c, const DemoView &view, double top)
{
    const ScreenGeometry &g = c.geometry();
    c.text(QRectF(16, top, g.width - 32, 28), view.text("explore.categories"), Typography::headline());
    top += 40;
    const int columns = g.isPad ? 4 : 2;
    const double gap = 12;
    const double width = (g.width - 32 - (columns - 1) * gap) / columns;
    const double height = 128;
    int i = 0;
    for (const Category &category : categories) {
        const QRectF tile(16 + (i % columns) * (width + gap), top + (i / columns) * (height + gap), width, height);
        c.fill(tile, category.color, 16);
        c.circle(tile.topLeft() + QPointF(30, 30), 16, QColor(255, 255, 255, 70));
        const QByteArray key = QByteArray("category.") + category.key;
        c.text(QRectF(tile.left() + 14, tile.bottom() - 42, tile.width() - 20, 30), view.text(key.constData()),
               {19, true, Qt::white});
        c.hit(tile, QStringLiteral("category:") + QString::fromLatin1(category.key));
        ++i;
    }
    const double bannerTop = top + ((i + columns - 1) / columns) * (height + gap);
    const QRectF banner(16, bannerTop, g.width - 32, 150);
    if (QPainter *p = c.painter())
        Scenery::paint(*p, banner, QStringLiteral("reykjavik"), 16);
    const DemoTrip *featured = DemoTrips::find(QStringLiteral("reykjavik"));
    c.text(QRectF(banner.left() + 16, banner.bottom() - 46, banner.width() - 32, 32), featured->cityIn(view.language),
           {22, true, Qt::white});
    c.hit(banner, QStringLiteral("push:detail:reykjavik"));
}

void results(Canvas &c, const DemoView &view, double top)
{
    const ScreenGeometry &g = c.geometry();
    const QList<const DemoTrip *> found = DemoTrips::search(view.session.searchText, view.language);
    if (found.isEmpty()) {
        c.text(QRectF(16, top + 40, g.width - 32, 30), view.text("explore.noResults").arg(view.session.searchText.trimmed()),
               Typography::secondary(), Qt::AlignCenter);
        return;
    }
    // Matches sit in an inset list on a dimmed backdrop, as a search
    // controller shows them.
    double y = top + 40;
    c.fill(QRectF(0, top - 8, g.width, g.height - top + 8), QColor("#e4e4ea"));
    c.text(QRectF(16, top, g.width - 32, 28), view.text("explore.results"), Typography::headline());
    c.fill(QRectF(12, y, g.width - 24, found.size() * 84), Qt::white, 14);
    for (const DemoTrip *trip : found) {
        const QRectF row(12, y, g.width - 24, 84);
        if (QPainter *p = c.painter())
            Scenery::paint(*p, QRectF(24, y + 10, 64, 64), trip->id, 12);
        c.text(QRectF(102, y + 16, g.width - 150, 26), trip->cityIn(view.language), {18, true, Qt::black});
        c.text(QRectF(102, y + 42, g.width - 150, 22), trip->countryIn(view.language), Typography::secondary());
        DemoChrome::chevron(c, QPointF(g.width - 34, row.center().y()), QColor("#c4c4c7"));
        if (trip != found.last())
            c.line(QPointF(102, row.bottom()), QPointF(row.right(), row.bottom()), DemoTheme::separator, 0.5);
        c.hit(row, QStringLiteral("push:detail:") + trip->id);
        y += 84;
    }
}

} // namespace

void explore(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), DemoTheme::background);
    DemoChrome::largeTitle(c, view.text("title.explore"));
    searchField(c, view);
    const double top = g.topInset + 156;
    c.pushClip(QRectF(0, top, g.width, DemoChrome::tabBarTop(g) - top));
    if (view.session.searchText.trimmed().isEmpty())
        categoryTiles(c, view, top);
    else
        results(c, view, top);
    c.popClip();
}

} // namespace DemoScreens
