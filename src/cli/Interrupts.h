#pragma once
// Ctrl-C (SIGINT) and SIGTERM during `vantrel generate`: the signal handler
// only writes one byte into a pipe; the event loop notices the pipe and calls
// `onInterrupt` on the main thread, where model code may run. The previous
// handlers come back when this object goes.

#include <QObject>
#include <QSocketNotifier>
#include <csignal>
#include <functional>
#include <memory>

class GenerateInterrupts : public QObject
{
    Q_OBJECT

public:
    explicit GenerateInterrupts(std::function<void()> onInterrupt);
    ~GenerateInterrupts() override;

private:
    void drain();

    std::function<void()> m_onInterrupt;
    std::unique_ptr<QSocketNotifier> m_notifier;
    struct sigaction m_previousInt {};
    struct sigaction m_previousTerm {};
};
