#pragma once
// The desktop-wide left-button monitor on X11: XInput 2 raw button events
// selected on the root window, which the server sends to every client that
// asks, whatever window is clicked and without any grab.
//
// A reader thread with a connection of its own waits for them and reads
// the pointer position the moment each one arrives; the main thread may be
// busy for a while (a preview screenshot), and by the time it got to a
// quick click the pointer would be somewhere else. The event itself is
// handed to the main thread, as a desktop's monitor does.

#include "platform/PlatformServices.h"

#include <QObject>
#include <QPoint>
#include <functional>
#include <memory>
#include <thread>

struct xcb_connection_t;

class X11ClickMonitor : public QObject
{
public:
    // A press or release and where the pointer was (root coordinates).
    using EventHandler = std::function<void(MouseEventType, const QPoint &)>;
    using LostHandler = std::function<void()>;

    // Nothing when the display cannot be reached or lacks XInput 2.2.
    // Handlers run on the main thread, which must be the calling one;
    // `onLost` when the server has closed the connection, and nothing
    // follows it.
    static std::unique_ptr<X11ClickMonitor> start(EventHandler onEvent, LostHandler onLost);
    ~X11ClickMonitor() override;

    // No handler is called after this, even for events already read.
    void stop();

private:
    X11ClickMonitor(xcb_connection_t *connection, quint32 root, quint8 opcode, EventHandler onEvent, LostHandler onLost);
    void readUntilStopped();
    void readPending();

    xcb_connection_t *m_connection;
    quint32 m_root;
    quint8 m_opcode; // the XInput extension's major opcode
    EventHandler m_onEvent;
    LostHandler m_onLost;
    int m_wake[2] = {-1, -1}; // written to end the reader
    std::thread m_reader;
};
