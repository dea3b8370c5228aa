#include "SimulatorWindow.h"

#include "Console.h"
#include "DeviceScreen.h"
#include "StateStore.h"
#include "ToolFailure.h"
#include "Typography.h"
#include "WindowLayout.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTime>
#include <cmath>

namespace {

// Under this many pixels between press and release a click is a tap; the
// recorder draws the same line, so both agree on what was done.
constexpr double tapDistance = 10;

const QColor background("#1c1c1e");
const QColor stripColour("#3a3a3c");
const QColor titleColour("#f2f2f7");

const Device *shownDevice(const World &world, const QString &pinnedUdid)
{
    if (!pinnedUdid.isEmpty())
        return world.device(pinnedUdid);
    if (const Device *chosen = world.device(world.simulatorAppDevice); chosen && chosen->isBooted())
        return chosen;
    for (const Device &device : world.devices)
        if (device.isBooted())
            return &device;
    return nullptr;
}

// A device that is off (or missing) shows a dark screen that says so.
QImage placeholder(const QSize &pixels, const QString &text)
{
    QImage image(pixels, QImage::Format_RGB32);
    image.fill(QColor("#101012"));
    QPainter painter(&image);
    painter.setPen(QColor("#8e8e93"));
    painter.setFont(Typography::font(pixels.width() / 18.0, false));
    painter.drawText(image.rect(), Qt::AlignCenter, text);
    return image;
}

// Typed keys as the device's keyboard would send them.
QString typedText(const QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        return QStringLiteral("\n");
    if (event->key() == Qt::Key_Backspace)
        return QString(QChar(0x08));
    QString text = event->text();
    text.removeIf([](QChar ch) { return !ch.isPrint(); });
    return text;
}

} // namespace

SimulatorWindow::SimulatorWindow(const QString &udid) : m_pinnedUdid(udid)
{
    m_watcher = std::make_unique<StateWatcher>([this](const World &world) { showState(world); },
                                               [this] { close(); });
    // The clock in the status bar moves on.
    auto *clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this, [this] {
        if (QTime::currentTime().minute() != m_renderedMinute)
            showState(m_world);
    });
    clock->start(5000);
}

void SimulatorWindow::refresh()
{
    m_watcher->check();
}

void SimulatorWindow::showState(const World &world)
{
    m_world = world;
    const Device *device = shownDevice(world, m_pinnedUdid);
    m_udid = device ? device->udid : QString();
    if (device) {
        m_devicePoints = QSizeF(device->pointWidth(), device->pointHeight());
        m_screen = device->isBooted() ? DeviceScreen::render(*device, world.faults)
                                      : placeholder(QSize(device->pixelWidth, device->pixelHeight), device->state);
        setTitle(device->name + QStringLiteral(" \u2013 ") + RuntimeName::displayName(device->runtime));
    } else {
        m_screen = placeholder((m_devicePoints * 3).toSize(), QStringLiteral("No booted device"));
        setTitle(QStringLiteral("Simulator"));
    }
    m_renderedMinute = QTime::currentTime().minute();
    m_scaled = QImage();
    if (!isVisible() && screen())
        resize(WindowLayout::initialSize(m_devicePoints, screen()->availableSize()));
    update();
}

void SimulatorWindow::resizeEvent(QResizeEvent *event)
{
    m_scaled = QImage();
    QRasterWindow::resizeEvent(event);
}

void SimulatorWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(QRectF(QPointF(), size()), background);
    drawTitleStrip(painter);
    const QRectF screenRect = WindowLayout::screenRect(size(), m_devicePoints);
    if (screenRect.isEmpty() || m_screen.isNull())
        return;
    const QSize pixels = (screenRect.size() * devicePixelRatio()).toSize();
    if (m_scaled.size() != pixels) {
        m_scaled = m_screen.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        m_scaled.setDevicePixelRatio(devicePixelRatio());
    }
    painter.drawImage(screenRect.topLeft(), m_scaled);
}

void SimulatorWindow::drawTitleStrip(QPainter &painter) const
{
    const double strip = WindowLayout::titleStripHeight(height());
    const QRectF rect(0, 0, width(), strip);
    painter.fillRect(rect, stripColour);
    painter.setPen(titleColour);
    painter.setFont(Typography::font(std::max(7.0, strip * 0.36), true));
    painter.drawText(rect.adjusted(8, 0, -8, 0), Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(title(), Qt::ElideRight, int(rect.width() - 16)));
}

void SimulatorWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_press.reset();
    if (const auto point = WindowLayout::devicePoint(event->position(), size(), m_devicePoints))
        m_press = Press{event->position(), *point};
}

void SimulatorWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_press)
        return;
    const Press press = *m_press;
    m_press.reset();
    const auto point = WindowLayout::devicePoint(event->position(), size(), m_devicePoints);
    if (!point)
        return; // let go off the screen: nothing happens, and nothing is recorded
    const QPointF moved = event->position() - press.windowPoint;
    if (std::hypot(moved.x(), moved.y()) < tapDistance)
        act([&](World &world, Device &device) { DeviceScreen::tap(world, device, press.devicePoint); });
    else
        act([&](World &, Device &device) { DeviceScreen::swipe(device, press.devicePoint, *point); });
}

void SimulatorWindow::keyPressEvent(QKeyEvent *event)
{
    const QString text = typedText(event);
    if (text.isEmpty())
        return;
    // With nothing focused the keys go nowhere, as on a device.
    act([&](World &, Device &device) { DeviceScreen::type(device, text); });
}

void SimulatorWindow::act(const std::function<void(World &, Device &)> &action)
{
    if (m_udid.isEmpty())
        return;
    try {
        StateStore::modify([&](World &world) {
            Device *device = world.device(m_udid);
            if (device && device->isBooted())
                action(world, *device);
        });
    } catch (const ToolFailure &failure) {
        Console::err(failure.standardError);
    }
    m_watcher->check();
}
