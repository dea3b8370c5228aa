// The fourth tab: a grouped list with the profile, switches and values
// formatted for the app's region.

#include "DemoChrome.h"
#include "DemoScreens.h"

#include <QLocale>

namespace DemoScreens {

namespace {

struct Row
{
    const char *label;
    QColor icon;
    QString value;     // shown on the right; empty for a switch
    QString toggle;    // the switch this row flips; empty for a value row
};

const double rowHeight = 50;

void switchControl(Canvas &c, const QPointF &centreRight, bool on)
{
    const QRectF track(centreRight.x() - 51, centreRight.y() - 15.5, 51, 31);
    c.fill(track, on ? QColor("#34c759") : QColor("#e9e9ea"), 15.5);
    c.circle(QPointF(on ? track.right() - 15.5 : track.left() + 15.5, track.center().y()), 13.5, Qt::white);
}

double group(Canvas &c, const DemoView &view, double y, const char *header, const QList<Row> &rows)
{
    const ScreenGeometry &g = c.geometry();
    c.text(QRectF(32, y, g.width - 64, 20), view.text(header), Typography::footnote());
    y += 26;
    const QRectF card(16, y, g.width - 32, rows.size() * rowHeight);
    c.fill(card, Qt::white, 12);
    for (int i = 0; i < rows.size(); ++i) {
        const Row &row = rows[i];
        const QRectF r(card.left(), y + i * rowHeight, card.width(), rowHeight);
        c.fill(QRectF(r.left() + 14, r.center().y() - 15, 30, 30), row.icon, 7);
        c.circle(QPointF(r.left() + 29, r.center().y()), 6, QColor(255, 255, 255, 200));
        c.text(QRectF(r.left() + 58, r.top(), r.width() * 0.55, r.height()), view.text(row.label), Typography::body());
        if (!row.toggle.isEmpty()) {
            switchControl(c, QPointF(r.right() - 14, r.center().y()), view.toggle(row.toggle));
            c.hit(r, QStringLiteral("toggle:") + row.toggle);
        } else {
            c.text(QRectF(r.center().x(), r.top(), r.width() / 2 - 36, r.height()), row.value,
                   {17, false, DemoTheme::inactive}, Qt::AlignRight | Qt::AlignVCenter);
            DemoChrome::chevron(c, QPointF(r.right() - 20, r.center().y()), QColor("#c4c4c7"));
            c.hit(r, QStringLiteral("none"));
        }
        if (i + 1 < rows.size())
            c.line(QPointF(r.left() + 58, r.bottom()), QPointF(r.right(), r.bottom()), DemoTheme::separator, 0.5);
    }
    return card.bottom() + 30;
}

// The traveller's card: who they are and how far they have been.
double profileCard(Canvas &c, const DemoView &view, const QRectF &card)
{
    c.verticalGradient(card, QColor("#2b2d6e"), QColor("#1d1f4f"), 16);
    c.circle(QPointF(card.left() + 44, card.top() + 46), 28, DemoTheme::tint);
    c.text(QRectF(card.left() + 16, card.top() + 18, 56, 56), QStringLiteral("MR"), {20, true, Qt::white}, Qt::AlignCenter);
    c.text(QRectF(card.left() + 86, card.top() + 18, card.width() - 100, 26), QStringLiteral("Mara Rossi"),
           {19, true, Qt::white});
    c.text(QRectF(card.left() + 86, card.top() + 44, card.width() - 100, 22), view.text("settings.member"),
           {15, false, QColor(255, 255, 255, 190)});
    const QLocale locale(view.locale());
    const struct { int value; const char *label; } stats[] = {{12, "settings.countries"}, {38, "settings.cities"}, {214, "settings.days"}};
    const double width = (card.width() - 32) / 3;
    for (int i = 0; i < 3; ++i) {
        const QRectF box(card.left() + 16 + i * width, card.top() + 96, width - 8, 84);
        c.fill(box, QColor(255, 255, 255, 28), 12);
        c.text(QRectF(box.left(), box.top() + 12, box.width(), 34), locale.toString(stats[i].value), {26, true, QColor("#ffd54f")},
               Qt::AlignCenter);
        c.text(QRectF(box.left() + 4, box.top() + 50, box.width() - 8, 20), view.text(stats[i].label),
               {13, false, QColor(255, 255, 255, 210)}, Qt::AlignCenter);
    }
    c.hit(card, QStringLiteral("none"));
    return card.bottom();
}

} // namespace

void settings(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), DemoTheme::groupedBackground);
    DemoChrome::largeTitle(c, view.text("title.settings"));
    const QRectF viewport(0, DemoChrome::contentTop(g), g.width, DemoChrome::tabBarTop(g) - DemoChrome::contentTop(g));
    c.scrollArea(QStringLiteral("settings"), viewport, 690);
    c.pushClip(viewport);
    double y = viewport.top() + 6 - view.scroll(QStringLiteral("settings"));

    y = profileCard(c, view, QRectF(16, y, g.width - 32, 196)) + 28;

    const QLocale locale(view.locale());
    const QString currency = locale.currencySymbol(QLocale::CurrencyIsoCode) + QStringLiteral(" (")
        + locale.currencySymbol(QLocale::CurrencySymbol) + QLatin1Char(')');
    const QString units = locale.measurementSystem() == QLocale::MetricSystem ? QStringLiteral("km") : QStringLiteral("mi");
    y = group(c, view, y, "settings.general",
              {{"settings.notifications", QColor("#ff3b30"), {}, QStringLiteral("notifications")},
               {"settings.currency", QColor("#34c759"), currency, {}},
               {"settings.units", QColor("#007aff"), units, {}},
               {"settings.offline", QColor("#ff9500"), {}, QStringLiteral("offline")}});
    group(c, view, y, "settings.about",
          {{"settings.version", QColor("#8e8e93"), QStringLiteral("2.4 (42)"), {}},
           {"settings.privacy", QColor("#5856d6"), QString(), {}},
           {"settings.rate", QColor("#ffcc00"), QString(), {}}});
    c.popClip();
}

} // namespace DemoScreens
