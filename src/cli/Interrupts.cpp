#include "Interrupts.h"

#include "replay/ChildProcess.h"

#include <QMetaObject>
#include <chrono>
#include <csignal>
#include <mutex>
#include <optional>
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

[[noreturn]] void exitNow()
{
    ChildProcess::killAll();
    static const char message[] = "Interrupted.\n";
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, message, sizeof message - 1);
    ::_exit(130);
}

} // namespace

void Interrupts::blockSignals()
{
    const sigset_t set = interruptSignals();
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
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
    const sigset_t set = interruptSignals();
    const timespec slice{0, 50 * 1000 * 1000};
    std::optional<Clock::time_point> signalledAt;
    while (!m_stopping) {
        const int signal = ::sigtimedwait(&set, nullptr, &slice);
        if (signal > 0) {
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
