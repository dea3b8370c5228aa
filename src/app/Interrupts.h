#pragma once
// Ctrl-C (SIGINT) and SIGTERM, for the command line and the desktop
// application alike. The two signals are blocked in every thread but a
// watcher thread of their own, whose handler only wakes the watcher
// through a pipe, so that no model code ever runs in a signal handler and
// no other thread's system call is interrupted. At an interrupt:
//
// 1. the front's own handler (generate cancels its run, the window closes)
//    runs on the main thread as soon as it turns its event loop, and every
//    child process is ended with its process group; a main thread blocked
//    in a child or a read gets its children ended from the watcher after a
//    moment;
// 2. the front winds down and exits with status 130;
// 3. one that has not ended two seconds after the signal (or a second
//    Ctrl-C) is cut short: children are killed, "Interrupted." is printed
//    and the process exits with status 130 at once.

#include <QObject>
#include <atomic>
#include <functional>
#include <thread>
#include <utility>

class Interrupts : public QObject
{
    Q_OBJECT

public:
    // Blocks SIGINT and SIGTERM in the calling thread and routes them to the
    // watcher; call first in main(), before any thread starts, so that every
    // thread inherits the mask.
    static void install();

    Interrupts(); // starts the watcher; needs the application object
    ~Interrupts() override;

    // How a front that was interrupted exits, as a shell reports it.
    static constexpr int exitStatus = 130;

    // True once SIGINT or SIGTERM arrived.
    static bool received();
    // While set, `handler` runs on the main thread at an interrupt.
    static void setHandler(std::function<void()> handler);
    // A command's handler for as long as this object lives.
    class Handler
    {
    public:
        explicit Handler(std::function<void()> handler) { setHandler(std::move(handler)); }
        ~Handler() { setHandler(nullptr); }
        Handler(const Handler &) = delete;
        Handler &operator=(const Handler &) = delete;
    };
    // The front has ended its work: the watcher no longer cuts it short.
    void commandFinished();

private:
    void watch();
    void onMainThread();

    std::atomic<bool> m_stopping{false};
    std::atomic<bool> m_finished{false};
    std::atomic<bool> m_mainThreadActed{false};
    std::thread m_watcher; // last: starts once the members it uses exist
};
