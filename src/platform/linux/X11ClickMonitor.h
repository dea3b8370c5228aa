#pragma once
// The desktop-wide left-button monitor on X11: XInput 2 raw button events
// selected on the root window, which the server sends to every client that
// asks, whatever window is clicked and without any grab. It keeps a
// connection of its own, read on the main thread as the event loop finds
// data on it; the pointer position is for the caller to read.

#include "platform/PlatformServices.h"

#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

struct xcb_connection_t;

class X11ClickMonitor : public QObject
{
public:
    using ButtonHandler = std::function<void(MouseEventType)>;
    using LostHandler = std::function<void()>;

    // Nothing when the display cannot be reached or lacks XInput 2.2.
    // Handlers run on the main thread; `onLost` when the server has closed
    // the connection, and nothing follows it.
    static std::unique_ptr<X11ClickMonitor> start(ButtonHandler onButton, LostHandler onLost);
    ~X11ClickMonitor() override;

    // No handler is called after this, even for events already read.
    void stop();

private:
    X11ClickMonitor(xcb_connection_t *connection, quint8 opcode, ButtonHandler onButton, LostHandler onLost);
    void readEvents();

    xcb_connection_t *m_connection;
    quint8 m_opcode; // the XInput extension's major opcode
    ButtonHandler m_onButton;
    LostHandler m_onLost;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
