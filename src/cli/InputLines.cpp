#include "InputLines.h"

#include <cerrno>
#include <unistd.h>

InputLines::InputLines(int fd, std::function<bool(const QString &)> onLine, std::function<void()> onEnd)
    : m_fd(fd), m_onLine(std::move(onLine)), m_onEnd(std::move(onEnd))
{
    m_notifier = std::make_unique<QSocketNotifier>(fd, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { read(); });
}

void InputLines::read()
{
    if (m_done)
        return;
    m_notifier->setEnabled(false);
    char chunk[4096];
    const ssize_t count = ::read(m_fd, chunk, sizeof chunk);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        m_notifier->setEnabled(true);
        return;
    }
    const bool atEnd = count <= 0;
    if (count > 0)
        m_buffer.append(chunk, count);
    if (atEnd && !m_buffer.isEmpty() && !m_buffer.endsWith('\n'))
        m_buffer.append('\n'); // a last line without its line feed still counts
    for (qsizetype end = m_buffer.indexOf('\n'); end >= 0 && !m_done; end = m_buffer.indexOf('\n')) {
        const QString line = QString::fromUtf8(m_buffer.left(end));
        m_buffer.remove(0, end + 1);
        if (!m_onLine(line))
            m_done = true;
    }
    if (m_done)
        return;
    if (atEnd) {
        m_done = true;
        m_onEnd();
        return;
    }
    m_notifier->setEnabled(true);
}
