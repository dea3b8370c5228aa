#pragma once
// The stand-in's "Simulator" window: one device's screen, live. It shows
// what a screenshot of the device would show, and its clicks, drags and
// keys act on the device through the same screen code the replay uses, so
// that a recorder watching the desktop sees the app react as on a Mac.

#include "StateWatcher.h"
#include "World.h"

#include <QImage>
#include <QPointF>
#include <QRasterWindow>
#include <QSizeF>
#include <functional>
#include <memory>
#include <optional>

class SimulatorWindow : public QRasterWindow
{
public:
    // `udid` keeps the window on one device; empty follows the device the
    // Simulator app was pointed at (open -a Simulator), else the first
    // booted one.
    explicit SimulatorWindow(const QString &udid);

    // Reads the saved state and shows its device.
    void refresh();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    struct Press
    {
        QPointF windowPoint;
        QPointF devicePoint;
    };

    // The window's first size is set while it is not yet shown.
    void showState(const World &world);
    void act(const std::function<void(World &, Device &)> &action);
    void drawTitleStrip(QPainter &painter) const;

    QString m_pinnedUdid;
    World m_world;
    QString m_udid; // the device shown; empty when there is none
    QSizeF m_devicePoints{393, 852};
    QImage m_screen; // at the device's pixel size
    QImage m_scaled; // at the window's size, made when needed
    std::optional<Press> m_press;
    int m_renderedMinute = -1; // the status bar shows the time
    std::unique_ptr<StateWatcher> m_watcher;
};
