#pragma once
// How the generation worker touches the model: every call runs on the
// model's own (main) thread while the worker waits, and whatever the call
// throws is rethrown on the worker, unchanged. The model is held weakly: once
// it is gone, the worker is told so and stops.

#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QThread>
#include <exception>
#include <optional>
#include <type_traits>

// Thrown on the worker when the model it works for no longer exists.
struct ModelGone
{
};

template <class Model, class F>
auto callOnMainThread(const QPointer<Model> &model, F job) -> std::invoke_result_t<F, Model &>
{
    using R = std::invoke_result_t<F, Model &>;
    Model *target = model.data();
    if (!target)
        throw ModelGone{};
    if (QThread::currentThread() == target->thread())
        return job(*target);

    std::conditional_t<std::is_void_v<R>, bool, std::optional<R>> value{};
    std::exception_ptr error;
    bool ran = false;
    QMetaObject::invokeMethod(
        target,
        [&] {
            ran = true;
            try {
                if constexpr (std::is_void_v<R>) {
                    job(*target);
                } else {
                    value = job(*target);
                }
            } catch (...) {
                error = std::current_exception();
            }
        },
        Qt::BlockingQueuedConnection);
    if (!ran)
        throw ModelGone{}; // the call was dropped with its receiver
    if (error)
        std::rethrow_exception(error);
    if constexpr (!std::is_void_v<R>)
        return std::move(*value);
}
