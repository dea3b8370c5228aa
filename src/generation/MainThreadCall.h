#pragma once
// How the generation worker touches the model: every call runs on the
// model's own (main) thread while the worker waits, and whatever the call
// throws is rethrown on the worker, unchanged. The model is held weakly: once
// it is gone, the worker is told so and stops.

#include <QCoreApplication>
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

// The receiver of the worker's calls: an object of the main thread that is
// never destroyed. Calls are never posted to the model itself, which the main
// thread may destroy between the worker's look at it and the posting; whether
// the model still exists is asked on the main thread, where it is destroyed.
inline QObject &mainThreadRelay()
{
    static QObject *const relay = [] {
        auto *object = new QObject;
        object->moveToThread(QCoreApplication::instance()->thread());
        return object;
    }();
    return *relay;
}

template <class Model, class F>
auto callOnMainThread(const QPointer<Model> &model, F job) -> std::invoke_result_t<F, Model &>
{
    using R = std::invoke_result_t<F, Model &>;
    QObject &relay = mainThreadRelay();
    if (QThread::currentThread() == relay.thread()) {
        if (!model)
            throw ModelGone{};
        return job(*model);
    }

    std::conditional_t<std::is_void_v<R>, bool, std::optional<R>> value{};
    std::exception_ptr error;
    bool gone = true;
    QMetaObject::invokeMethod(
        &relay,
        [&] {
            Model *target = model.data();
            if (!target)
                return;
            gone = false;
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
    if (gone)
        throw ModelGone{};
    if (error)
        std::rethrow_exception(error);
    if constexpr (!std::is_void_v<R>)
        return std::move(*value);
}
