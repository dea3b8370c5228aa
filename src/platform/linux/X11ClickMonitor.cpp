#include "X11ClickMonitor.h"

#include "X11Connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr quint32 leftButton = 1;

// Raw presses and releases of every master pointer, selected on the root.
bool selectRawButtons(xcb_connection_t *connection, xcb_window_t root)
{
    struct
    {
        xcb_input_event_mask_t head;
        uint32_t mask;
    } mask{};
    mask.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    mask.head.mask_len = 1;
    mask.mask = XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    xcb_generic_error_t *error =
        xcb_request_check(connection, xcb_input_xi_select_events_checked(connection, root, 1, &mask.head));
    std::free(error);
    return error == nullptr;
}

std::optional<MouseEventType> leftButtonEvent(const xcb_generic_event_t *event, quint8 opcode)
{
    if ((event->response_type & 0x7f) != XCB_GE_GENERIC)
        return std::nullopt;
    const auto *generic = reinterpret_cast<const xcb_ge_generic_event_t *>(event);
    const auto *raw = reinterpret_cast<const xcb_input_raw_button_press_event_t *>(event);
    if (generic->extension != opcode || raw->detail != leftButton)
        return std::nullopt;
    if (generic->event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        return MouseEventType::leftMouseDown;
    if (generic->event_type == XCB_INPUT_RAW_BUTTON_RELEASE)
        return MouseEventType::leftMouseUp;
    return std::nullopt;
}

} // namespace

std::unique_ptr<X11ClickMonitor> X11ClickMonitor::start(EventHandler onEvent, LostHandler onLost)
{
    quint32 root = 0;
    xcb_connection_t *connection = X11Connection::open(&root);
    if (!connection)
        return nullptr;
    if (!X11Connection::hasXInput2(connection) || !selectRawButtons(connection, root)) {
        xcb_disconnect(connection);
        return nullptr;
    }
    xcb_flush(connection);
    const quint8 opcode = xcb_get_extension_data(connection, &xcb_input_id)->major_opcode;
    return std::unique_ptr<X11ClickMonitor>(
        new X11ClickMonitor(connection, root, opcode, std::move(onEvent), std::move(onLost)));
}

X11ClickMonitor::X11ClickMonitor(xcb_connection_t *connection, quint32 root, quint8 opcode, EventHandler onEvent,
                                 LostHandler onLost)
    : m_connection(connection), m_root(root), m_opcode(opcode), m_onEvent(std::move(onEvent)),
      m_onLost(std::move(onLost))
{
    if (::pipe2(m_wake, O_CLOEXEC) != 0)
        m_wake[0] = m_wake[1] = -1; // the reader then ends with the connection only
    m_reader = std::thread([this] { readUntilStopped(); });
}

X11ClickMonitor::~X11ClickMonitor()
{
    const char byte = 1;
    if (m_wake[1] < 0 || ::write(m_wake[1], &byte, 1) != 1)
        ::shutdown(xcb_get_file_descriptor(m_connection), SHUT_RDWR); // ends the reader's wait too
    m_reader.join();
    for (const int fd : m_wake)
        if (fd >= 0)
            ::close(fd);
    xcb_disconnect(m_connection);
}

void X11ClickMonitor::stop()
{
    m_onEvent = nullptr;
    m_onLost = nullptr;
}

// The reader thread: only this thread uses the connection.
void X11ClickMonitor::readUntilStopped()
{
    const int fd = xcb_get_file_descriptor(m_connection);
    for (;;) {
        readPending();
        if (xcb_connection_has_error(m_connection)) {
            QMetaObject::invokeMethod(this, [this] {
                if (!m_onLost)
                    return;
                const LostHandler onLost = m_onLost;
                stop();
                onLost();
            }, Qt::QueuedConnection);
            return;
        }
        pollfd waits[2] = {{fd, POLLIN, 0}, {m_wake[0], POLLIN, 0}};
        if (::poll(waits, m_wake[0] >= 0 ? 2 : 1, -1) < 0 && errno != EINTR)
            return;
        if (waits[1].revents != 0)
            return; // stopping
    }
}

void X11ClickMonitor::readPending()
{
    while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
        const std::optional<MouseEventType> type = leftButtonEvent(event, m_opcode);
        std::free(event);
        if (!type)
            continue;
        xcb_query_pointer_reply_t *pointer =
            xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr);
        if (pointer && pointer->same_screen) {
            const QPoint at(pointer->root_x, pointer->root_y);
            const MouseEventType button = *type;
            QMetaObject::invokeMethod(this, [this, button, at] {
                if (m_onEvent)
                    m_onEvent(button, at);
            }, Qt::QueuedConnection);
        }
        std::free(pointer);
    }
}
