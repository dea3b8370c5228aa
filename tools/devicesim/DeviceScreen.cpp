#include "DeviceScreen.h"

#include "AppLauncher.h"
#include "AppBundle.h"
#include "Canvas.h"
#include "DemoApp.h"
#include "HomeScreen.h"
#include "StatusBar.h"

#include <QDir>
#include <QFileInfo>

namespace DeviceScreen {

namespace {

bool isDemo(const AppSession *session)
{
    return session && session->bundleId == AppBundle::demoBundleId;
}

// Whether the status bar and the home indicator sit on something dark.
struct Chrome
{
    bool lightTop = false;
    bool lightBottom = false;
};

void homeIndicator(Canvas &c, bool light)
{
    const ScreenGeometry &g = c.geometry();
    if (g.bottomInset <= 0)
        return;
    c.fill(QRectF(g.width / 2 - 67, g.height - 8 - 5, 134, 5), light ? Qt::white : Qt::black, 2.5);
}

Chrome drawContent(Canvas &c, const Device &device, const Faults &faults)
{
    const AppSession *session = device.foregroundSession();
    if (isDemo(session)) {
        const bool covered = faults.hasDialog(session->language, DemoApp::screenId(*session));
        DemoApp::draw(c, *session, covered);
        return {covered || DemoApp::prefersLightStatusBar(*session), covered};
    }
    if (session) {
        if (const InstalledApp *app = device.app(session->bundleId)) {
            HomeScreen::drawPlainApp(c, *app);
            return {false, false};
        }
    }
    HomeScreen::draw(c, device);
    return {true, true};
}

} // namespace

QImage render(const Device &device, const Faults &faults)
{
    QImage image(device.pixelWidth, device.pixelHeight, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter.scale(device.scale, device.scale);
    Canvas c(&painter, ScreenGeometry::forDevice(device));
    const Chrome chrome = drawContent(c, device, faults);
    StatusBar::draw(c, device.statusBar, chrome.lightTop);
    homeIndicator(c, chrome.lightBottom);
    painter.end();
    return image;
}

std::optional<QString> save(const QImage &image, const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    const char *format = "PNG";
    if (suffix == QLatin1String("jpg") || suffix == QLatin1String("jpeg"))
        format = "JPG";
    else if (suffix == QLatin1String("tif") || suffix == QLatin1String("tiff"))
        format = "TIFF";
    if (!image.save(path, format))
        return QStringLiteral("Could not write the image to %1").arg(path);
    return std::nullopt;
}

void tap(World &world, Device &device, const QPointF &point)
{
    const ScreenGeometry geometry = ScreenGeometry::forDevice(device);
    AppSession *session = device.foregroundSession();
    if (isDemo(session))
        return DemoApp::tap(*session, geometry, point);
    if (session)
        return; // other apps have nothing to tap
    Canvas c(nullptr, geometry);
    HomeScreen::draw(c, device);
    const QString action = c.actionAt(point);
    if (action.startsWith(QLatin1String("launch:")))
        AppLauncher::start(world, device, action.mid(7), {});
}

void swipe(Device &device, const QPointF &from, const QPointF &to)
{
    AppSession *session = device.foregroundSession();
    if (isDemo(session))
        DemoApp::swipe(*session, ScreenGeometry::forDevice(device), from, to);
}

std::optional<QString> type(Device &device, const QString &text)
{
    AppSession *session = device.foregroundSession();
    if (isDemo(session))
        return DemoApp::type(*session, text);
    return QStringLiteral("Neither element nor any descendant has keyboard focus.");
}

} // namespace DeviceScreen
