#include "DemoChrome.h"

#include <QPainterPath>

namespace DemoChrome {

double contentTop(const ScreenGeometry &g) { return g.topInset + 96; }
double tabBarTop(const ScreenGeometry &g) { return g.height - 49 - g.bottomInset; }
double keyboardHeight(const ScreenGeometry &g) { return (g.isPad ? 313 : 216) + (g.bottomInset > 0 ? 75 : 0); }

void largeTitle(Canvas &c, const QString &title)
{
    const ScreenGeometry &g = c.geometry();
    c.title(QRectF(16, g.topInset + 46, g.width - 32, 46), title, Typography::largeTitle());
}

void chevron(Canvas &c, const QPointF &at, const QColor &color, bool pointsLeft)
{
    const double d = pointsLeft ? -1 : 1;
    c.line(at + QPointF(-4 * d, -7), at + QPointF(3 * d, 0), color, 2.4);
    c.line(at + QPointF(3 * d, 0), at + QPointF(-4 * d, 7), color, 2.4);
}

void heart(Canvas &c, const QRectF &b, const QColor &color, bool filled)
{
    QPainter *p = c.painter();
    if (!p)
        return;
    QPainterPath path;
    path.moveTo(b.center().x(), b.bottom());
    path.cubicTo(b.left() - b.width() * 0.1, b.top() + b.height() * 0.55, b.left() + b.width() * 0.1, b.top() - b.height() * 0.1,
                 b.center().x(), b.top() + b.height() * 0.28);
    path.cubicTo(b.right() - b.width() * 0.1, b.top() - b.height() * 0.1, b.right() + b.width() * 0.1, b.top() + b.height() * 0.55,
                 b.center().x(), b.bottom());
    p->save();
    p->setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p->setBrush(filled ? QBrush(color) : Qt::NoBrush);
    p->drawPath(path);
    p->restore();
}

namespace {

void tabIcon(Canvas &c, const QString &tab, const QPointF &centre, const QColor &color)
{
    QPainter *p = c.painter();
    if (!p)
        return;
    p->save();
    p->setPen(QPen(color, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p->setBrush(Qt::NoBrush);
    if (tab == QLatin1String("trips")) {
        p->drawRoundedRect(QRectF(centre.x() - 12, centre.y() - 7, 24, 17), 3, 3);
        p->drawRoundedRect(QRectF(centre.x() - 5, centre.y() - 12, 10, 5), 2, 2);
    } else if (tab == QLatin1String("explore")) {
        p->drawEllipse(centre, 12, 12);
        p->setBrush(color);
        p->drawPolygon(QPolygonF({centre + QPointF(6, -6), centre + QPointF(2, 2), centre + QPointF(-6, 6), centre + QPointF(-2, -2)}));
    } else if (tab == QLatin1String("saved")) {
        p->restore();
        heart(c, QRectF(centre.x() - 12, centre.y() - 10, 24, 21), color, false);
        return;
    } else {
        p->drawEllipse(centre, 6, 6);
        for (int i = 0; i < 8; ++i) {
            const double a = i * M_PI / 4;
            p->drawLine(centre + QPointF(9 * std::cos(a), 9 * std::sin(a)), centre + QPointF(12 * std::cos(a), 12 * std::sin(a)));
        }
        p->drawEllipse(centre, 9, 9);
    }
    p->restore();
}

} // namespace

void tabBar(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    const QRectF bar(0, tabBarTop(g), g.width, g.height - tabBarTop(g));
    c.fill(bar, QColor("#f7f7f9"));
    c.line(bar.topLeft(), bar.topRight(), QColor("#d1d1d6"), 0.5);
    c.hit(bar, QStringLiteral("none"));
    static const char *tabs[] = {"trips", "explore", "saved", "settings"};
    const double itemWidth = g.isPad ? 120 : g.width / 4;
    const double left = (g.width - itemWidth * 4) / 2;
    for (int i = 0; i < 4; ++i) {
        const QString tab = QString::fromLatin1(tabs[i]);
        const QColor color = view.session.tab == tab ? DemoTheme::tint : DemoTheme::inactive;
        const QRectF item(left + i * itemWidth, bar.top(), itemWidth, 49);
        tabIcon(c, tab, QPointF(item.center().x(), item.top() + 18), color);
        const QByteArray key = "tab." + tab.toLatin1();
        c.text(QRectF(item.left(), item.top() + 32, item.width(), 14), view.text(key.constData()), {10.5, true, color},
               Qt::AlignHCenter | Qt::AlignVCenter);
        c.hit(item, QStringLiteral("tab:") + tab);
    }
}

namespace {

QStringList keyRows(DemoStrings::Language language)
{
    switch (language) {
    case DemoStrings::Language::German: return {QStringLiteral("qwertzuiop"), QStringLiteral("asdfghjkl"), QStringLiteral("yxcvbnm")};
    case DemoStrings::Language::French: return {QStringLiteral("azertyuiop"), QStringLiteral("qsdfghjklm"), QStringLiteral("wxcvbn")};
    default: return {QStringLiteral("qwertyuiop"), QStringLiteral("asdfghjkl"), QStringLiteral("zxcvbnm")};
    }
}

void key(Canvas &c, const QRectF &r, const QString &label, const QString &action, double size, const QColor &fill,
         const QColor &textColor = QColor(0, 0, 0))
{
    c.fill(r.translated(0, 1), QColor("#898a8d"), 5);
    c.fill(r, fill, 5);
    c.text(r, label, {size, false, textColor}, Qt::AlignCenter);
    c.hit(r, action);
}

} // namespace

void keyboard(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    const QRectF board(0, g.height - keyboardHeight(g), g.width, keyboardHeight(g));
    c.fill(board, QColor("#d1d3d9"));
    c.hit(board, QStringLiteral("none"));
    const QStringList rows = keyRows(view.language);
    const double gap = 6, side = 3, rowHeight = 42, rowGap = 12;
    const double keyWidth = (g.width - 2 * side - 9 * gap) / 10;
    const QColor white(255, 255, 255), special("#abb0ba");
    for (int r = 0; r < 3; ++r) {
        const QString &letters = rows[r];
        const double y = board.top() + 8 + r * (rowHeight + rowGap);
        const double rowWidth = letters.size() * keyWidth + (letters.size() - 1) * gap;
        double x = (g.width - rowWidth) / 2;
        for (const QChar letter : letters) {
            key(c, QRectF(x, y, keyWidth, rowHeight), QString(letter), QStringLiteral("key:") + letter, 22, white);
            x += keyWidth + gap;
        }
        if (r == 2) {
            key(c, QRectF(side, y, 42, rowHeight), QStringLiteral("⇧"), QStringLiteral("none"), 20, special);
            key(c, QRectF(g.width - side - 42, y, 42, rowHeight), QStringLiteral("⌫"), QStringLiteral("key:delete"), 20,
                special);
        }
    }
    const double y = board.top() + 8 + 3 * (rowHeight + rowGap);
    const double wide = keyWidth * 2 + gap;
    key(c, QRectF(side, y, wide, rowHeight), QStringLiteral("123"), QStringLiteral("none"), 16, special);
    key(c, QRectF(side + wide + gap, y, g.width - 2 * side - 2 * (wide + gap) - wide * 0.5, rowHeight),
        view.text("keyboard.space"), QStringLiteral("key:space"), 16, white);
    key(c, QRectF(g.width - side - wide * 1.5, y, wide * 1.5, rowHeight), view.text("keyboard.search"),
        QStringLiteral("key:return"), 16, QColor("#0a84ff"), white);
}

void premiumSheet(Canvas &c, const DemoView &view)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), QColor(0, 0, 0, 120));
    const QRectF sheet(0, g.topInset + 10, g.width, g.height - g.topInset + 20);
    c.verticalGradient(sheet, QColor("#1c1b4b"), QColor("#3b2a7a"), 14);
    c.hit(sheet, QStringLiteral("none"));
    const double cx = g.width / 2;
    const double top = sheet.top();
    // A sparkle badge above the offer.
    c.circle(QPointF(cx, top + 120), 48, QColor("#ffd54f"));
    c.circle(QPointF(cx, top + 120), 30, QColor("#ffb300"));
    c.text(QRectF(20, top + 200, g.width - 40, 44), view.text("premium.title"), {30, true, Qt::white}, Qt::AlignCenter);
    if (QPainter *p = c.painter()) {
        p->setFont(Typography::font(17, false));
        p->setPen(QColor(255, 255, 255, 220));
        p->drawText(QRectF(36, top + 252, g.width - 72, 60), Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap,
                    view.text("premium.body"));
    }
    for (int i = 0; i < 3; ++i) {
        const QRectF row(36, top + 330 + i * 44, g.width - 72, 32);
        c.circle(QPointF(row.left() + 12, row.center().y()), 10, QColor("#7c6cf0"));
        c.fill(QRectF(row.left() + 34, row.center().y() - 4, row.width() * (0.8 - i * 0.15), 8), QColor(255, 255, 255, 90), 4);
    }
    const QRectF cta(24, g.height - g.bottomInset - 130, g.width - 48, 56);
    c.fill(cta, QColor("#ffd54f"), 16);
    c.text(cta, view.text("premium.cta"), {19, true, QColor("#1c1b4b")}, Qt::AlignCenter);
    c.text(QRectF(24, cta.bottom() + 14, g.width - 48, 30), view.text("premium.later"), {17, false, QColor(255, 255, 255, 200)},
           Qt::AlignCenter);
}

} // namespace DemoChrome
