#pragma once
// How main-thread operations wait for background work: a local event loop
// runs until the future is ready, so a window stays live (and queued calls
// from workers are delivered) while an operation waits, like an await.
// The command line and the tests use the same helper.

#include <QEventLoop>
#include <QFuture>
#include <QFutureWatcher>
#include <QTimer>

template <class T>
T awaitFuture(QFuture<T> future)
{
    if (!future.isFinished()) {
        QEventLoop loop;
        QFutureWatcher<T> watcher;
        QObject::connect(&watcher, &QFutureWatcher<T>::finished, &loop, &QEventLoop::quit);
        watcher.setFuture(future);
        if (!future.isFinished())
            loop.exec();
    }
    if constexpr (std::is_void_v<T>)
        future.waitForFinished(); // rethrows an exception raised by the job
    else
        return future.result(); // rethrows an exception raised by the job
}

// Lets `seconds` pass without blocking the event loop.
inline void awaitDelay(double seconds)
{
    if (seconds <= 0)
        return;
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(seconds * 1000.0), &loop, &QEventLoop::quit);
    loop.exec();
}

#include <QtConcurrent/QtConcurrentRun>
#include <exception>
#include <optional>

// Runs `job` on a background thread and waits for it as awaitFuture does.
// Whatever the job throws is rethrown here on the calling thread, unchanged
// (QtConcurrent alone would wrap non-Qt exceptions).
template <class F>
auto awaitBackground(F job) -> std::invoke_result_t<F>
{
    using R = std::invoke_result_t<F>;
    struct Outcome
    {
        std::conditional_t<std::is_void_v<R>, bool, std::optional<R>> value{};
        std::exception_ptr error;
    };
    Outcome outcome = awaitFuture(QtConcurrent::run([job = std::move(job)]() mutable {
        Outcome o;
        try {
            if constexpr (std::is_void_v<R>) {
                job();
                o.value = true;
            } else {
                o.value = job();
            }
        } catch (...) {
            o.error = std::current_exception();
        }
        return o;
    }));
    if (outcome.error)
        std::rethrow_exception(outcome.error);
    if constexpr (!std::is_void_v<R>)
        return std::move(*outcome.value);
}
