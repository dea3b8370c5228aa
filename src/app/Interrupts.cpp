#include "Interrupts.h"

#include "replay/ChildProcess.h"

#include <QMetaObject>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <poll.h>
#include <unistd.h>

namespace {

std::atomic<bool> interrupted{false};
std::mutex handlerLock;
std::function<void()> &handler()
{
    static std::function<void()> current;
    return current;
}

sigset_t interruptSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

using Clock = std::chrono::steady_clock;
// A main thread in its event loop acts at once; one blocked in a child
// process or a read needs the watcher to end the child.
constexpr auto mainThreadGrace = std::chrono::milliseconds(300);
// The whole command must be over within two seconds of the signal.
constexpr auto windDownLimit = std::chrono::milliseconds(1700);

// The signal handler's only work: one byte into a pipe the watcher polls.
// (sigtimedwait would do without it, but macOS has none.)
int wakeUp[2] = {-1, -1};

extern "C" void onInterruptSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakeUp[1], &byte, 1);
}

// True when a signal arrived since the last call (several count as one).
bool takeSignals(int waitMilliseconds)
{
    pollfd readable{wakeUp[0], POLLIN, 0};
    if (::poll(&readable, 1, waitMilliseconds) <= 0)
        return false;
    char bytes[16];
    bool any = false;
    while (::read(wakeUp[0], bytes, sizeof bytes) > 0)
        any = true;
    return any;
}

[[noreturn]] void exitNow()
{
    ChildProcess::killAll();
    static const char message[] = "Interrupted.\n";
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, message, sizeof message - 1);
    ::_exit(Interrupts::exitStatus);
}

} // namespace

void Interrupts::install()
{
    const sigset_t set = interruptSignals();
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    if (wakeUp[0] >= 0 || ::pipe(wakeUp) != 0)
        return;
    for (const int end : wakeUp) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, ::fcntl(end, F_GETFL) | O_NONBLOCK);
    }
    struct sigaction action = {};
    action.sa_handler = onInterruptSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGINT, &action, nullptr);
    ::sigaction(SIGTERM, &action, nullptr);
}

Interrupts::Interrupts() : m_watcher([this] { watch(); }) {}

Interrupts::~Interrupts()
{
    m_stopping = true;
    m_watcher.join();
}

bool Interrupts::received()
{
    return interrupted;
}

void Interrupts::setHandler(std::function<void()> newHandler)
{
    std::lock_guard lock(handlerLock);
    handler() = std::move(newHandler);
}

void Interrupts::commandFinished()
{
    m_finished = true;
}

void Interrupts::onMainThread()
{
    std::function<void()> current;
    {
        std::lock_guard lock(handlerLock);
        current = handler();
    }
    if (current)
        current(); // first, so that a cancelled run knows why its build ends
    ChildProcess::interruptAll();
    m_mainThreadActed = true;
}

void Interrupts::watch()
{
    // The one thread the signals are delivered to.
    const sigset_t set = interruptSignals();
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    std::optional<Clock::time_point> signalledAt;
    while (!m_stopping) {
        if (takeSignals(50)) {
            if (signalledAt)
                exitNow(); // a second Ctrl-C: the user wants out now
            signalledAt = Clock::now();
            interrupted = true;
            QMetaObject::invokeMethod(this, &Interrupts::onMainThread, Qt::QueuedConnection);
        }
        if (!signalledAt || m_finished)
            continue;
        const auto waited = Clock::now() - *signalledAt;
        if (waited > mainThreadGrace && !m_mainThreadActed)
            ChildProcess::interruptAll();
        if (waited > windDownLimit)
            exitNow();
    }
}
