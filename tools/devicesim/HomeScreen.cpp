#include "HomeScreen.h"

#include "DemoView.h"

#include <QCryptographicHash>
#include <QTime>

namespace HomeScreen {

namespace {

QColor iconColor(const QString &bundleId)
{
    if (bundleId == QLatin1String("com.vantrel.demo.Trips"))
        return DemoTheme::tint;
    const QByteArray hash = QCryptographicHash::hash(bundleId.toUtf8(), QCryptographicHash::Md5);
    return QColor::fromHsv(quint8(hash[0]) * 359 / 255, 150, 220);
}

void icon(Canvas &c, const QRectF &box, const InstalledApp &app)
{
    c.fill(box, iconColor(app.bundleId), box.width() * 0.225);
    c.text(box, app.label().left(1), {box.width() * 0.5, true, Qt::white}, Qt::AlignCenter);
    c.hit(box, QStringLiteral("launch:") + app.bundleId);
}

void watchFace(Canvas &c)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), Qt::black);
    c.text(QRectF(0, g.height * 0.3, g.width, g.height * 0.3), QTime::currentTime().toString(QStringLiteral("h:mm")),
           {g.height * 0.22, true, Qt::white}, Qt::AlignCenter);
}

} // namespace

void draw(Canvas &c, const Device &device)
{
    const ScreenGeometry &g = c.geometry();
    if (g.isWatch)
        return watchFace(c);
    c.verticalGradient(QRectF(0, 0, g.width, g.height), QColor("#2b5876"), QColor("#4e4376"));
    const int columns = g.isPad ? 6 : 4;
    const double size = g.isPad ? 74 : 62;
    const double cell = (g.width - 2 * 24) / columns;
    int i = 0;
    for (const InstalledApp &app : device.apps) {
        const double x = 24 + (i % columns) * cell + (cell - size) / 2;
        const double y = g.topInset + 20 + (i / columns) * (size + 34);
        icon(c, QRectF(x, y, size, size), app);
        c.text(QRectF(x - 10, y + size + 4, size + 20, 16), app.label(), {12, false, Qt::white}, Qt::AlignCenter);
        ++i;
    }
}

void drawPlainApp(Canvas &c, const InstalledApp &app)
{
    const ScreenGeometry &g = c.geometry();
    c.fill(QRectF(0, 0, g.width, g.height), DemoTheme::groupedBackground);
    c.title(QRectF(16, g.topInset + 46, g.width - 32, 46), app.label(), Typography::largeTitle());
    const QRectF card(16, g.topInset + 110, g.width - 32, 5 * 48);
    c.fill(card, Qt::white, 12);
    for (int i = 0; i < 5; ++i)
        c.fill(QRectF(card.left() + 16, card.top() + 18 + i * 48, card.width() * (0.6 - 0.07 * i), 12), QColor("#e5e5ea"), 6);
}

} // namespace HomeScreen
