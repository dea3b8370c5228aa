#pragma once
// While a replay is in flight, ends its build as soon as the run is
// cancelled, also when the cancel came in the moment between the last check
// and the start of the build (a single cancelActiveRuns() would find nothing
// to end then, and the build would run to its end).

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

class BuildCanceller
{
public:
    using Flag = std::shared_ptr<std::atomic_bool>;

    explicit BuildCanceller(Flag cancelled);
    ~BuildCanceller(); // stops the watcher at once and joins it
    BuildCanceller(const BuildCanceller &) = delete;
    BuildCanceller &operator=(const BuildCanceller &) = delete;

private:
    // A plain thread with its own stop flag: Apple's C++ library has no std::jthread.
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_stopping = false;
    std::thread m_watcher; // last: starts once the members it uses exist
};
