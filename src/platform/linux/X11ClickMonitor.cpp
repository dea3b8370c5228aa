#include "X11ClickMonitor.h"

#include "X11Connection.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <QList>
#include <QPointer>
#include <QTimer>
#include <cstdlib>

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

} // namespace

std::unique_ptr<X11ClickMonitor> X11ClickMonitor::start(ButtonHandler onButton, LostHandler onLost)
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
    return std::unique_ptr<X11ClickMonitor>(new X11ClickMonitor(connection, opcode, std::move(onButton), std::move(onLost)));
}

X11ClickMonitor::X11ClickMonitor(xcb_connection_t *connection, quint8 opcode, ButtonHandler onButton, LostHandler onLost)
    : m_connection(connection), m_opcode(opcode), m_onButton(std::move(onButton)), m_onLost(std::move(onLost))
{
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { readEvents(); });
    // Events may have arrived with the set-up replies, before the notifier.
    QTimer::singleShot(0, this, [this] { readEvents(); });
}

X11ClickMonitor::~X11ClickMonitor()
{
    m_notifier.reset();
    xcb_disconnect(m_connection);
}

void X11ClickMonitor::stop()
{
    m_onButton = nullptr;
    m_onLost = nullptr;
    if (m_notifier)
        m_notifier->setEnabled(false);
}

void X11ClickMonitor::readEvents()
{
    // Everything already sent first, then the handlers: a handler may run
    // an event loop of its own or stop this monitor.
    QList<MouseEventType> buttons;
    while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
        if ((event->response_type & 0x7f) == XCB_GE_GENERIC) {
            const auto *generic = reinterpret_cast<const xcb_ge_generic_event_t *>(event);
            const auto *raw = reinterpret_cast<const xcb_input_raw_button_press_event_t *>(event);
            if (generic->extension == m_opcode && raw->detail == leftButton) {
                if (generic->event_type == XCB_INPUT_RAW_BUTTON_PRESS)
                    buttons.append(MouseEventType::leftMouseDown);
                else if (generic->event_type == XCB_INPUT_RAW_BUTTON_RELEASE)
                    buttons.append(MouseEventType::leftMouseUp);
            }
        }
        std::free(event);
    }
    const bool lost = xcb_connection_has_error(m_connection) != 0;
    if (lost && m_notifier)
        m_notifier->setEnabled(false); // a closed socket stays readable
    QPointer<X11ClickMonitor> alive(this);
    for (const MouseEventType type : buttons) {
        if (!alive || !m_onButton)
            return;
        m_onButton(type);
    }
    if (alive && lost && m_onLost) {
        const LostHandler onLost = m_onLost;
        stop();
        onLost();
    }
}
