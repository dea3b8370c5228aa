#include "GenerateInterrupts.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

int wakeFds[2] = {-1, -1};

extern "C" void noteInterrupt(int)
{
    const int saved = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeFds[1], &byte, 1); // async-signal-safe
    errno = saved;
}

void makeNonBlockingCloseOnExec(int fd)
{
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
    ::fcntl(fd, F_SETFD, FD_CLOEXEC); // build processes must not inherit the pipe
}

} // namespace

GenerateInterrupts::GenerateInterrupts(std::function<void()> onInterrupt) : m_onInterrupt(std::move(onInterrupt))
{
    if (::pipe(wakeFds) != 0)
        return; // without the pipe, a signal keeps its default effect
    makeNonBlockingCloseOnExec(wakeFds[0]);
    makeNonBlockingCloseOnExec(wakeFds[1]);
    m_notifier = std::make_unique<QSocketNotifier>(wakeFds[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &GenerateInterrupts::drain);

    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGINT, &action, &m_previousInt);
    ::sigaction(SIGTERM, &action, &m_previousTerm);
}

GenerateInterrupts::~GenerateInterrupts()
{
    if (!m_notifier)
        return;
    ::sigaction(SIGINT, &m_previousInt, nullptr);
    ::sigaction(SIGTERM, &m_previousTerm, nullptr);
    m_notifier.reset();
    ::close(wakeFds[0]);
    ::close(wakeFds[1]);
    wakeFds[0] = wakeFds[1] = -1;
}

void GenerateInterrupts::drain()
{
    char buffer[64];
    bool interrupted = false;
    while (::read(wakeFds[0], buffer, sizeof buffer) > 0)
        interrupted = true;
    if (interrupted && m_onInterrupt)
        m_onInterrupt();
}
