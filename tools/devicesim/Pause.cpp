#include "Pause.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QThread>
#include <csignal>

namespace Pause {

namespace {

volatile std::sig_atomic_t pendingSignal = 0;

extern "C" void onTermination(int signal)
{
    pendingSignal = signal;
}

} // namespace

void installTerminationHandler()
{
    struct sigaction action = {};
    action.sa_handler = onTermination;
    sigemptyset(&action.sa_mask);
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

bool terminationRequested()
{
    return pendingSignal != 0;
}

void honourTermination()
{
    const int signal = pendingSignal ? int(pendingSignal) : SIGTERM;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    std::_Exit(128 + signal);
}

double timeScale()
{
    bool ok = false;
    const double scale = qEnvironmentVariable("DEVICESIM_TIME_SCALE").toDouble(&ok);
    return ok && scale >= 0 ? scale : 1.0;
}

void exact(double seconds)
{
    if (terminationRequested())
        throw Interrupted();
    QElapsedTimer timer;
    timer.start();
    const qint64 total = qint64(seconds * 1000);
    while (timer.elapsed() < total) {
        QThread::msleep(static_cast<unsigned long>(qBound(qint64(1), total - timer.elapsed(), qint64(10))));
        if (terminationRequested())
            throw Interrupted();
    }
}

void scaled(double seconds)
{
    exact(qMax(0.0, seconds) * timeScale());
}

} // namespace Pause
