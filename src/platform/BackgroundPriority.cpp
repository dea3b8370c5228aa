#include "BackgroundPriority.h"

#include <QThread>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

namespace BackgroundPriority {

void lowerCurrentThread()
{
#ifdef Q_OS_LINUX
    // Linux gives every thread a nice value of its own (the calling thread is
    // "process" 0 here), while Qt's thread priorities change nothing for an
    // ordinary thread. Nice 10 yields to the device and the build, yet is
    // never starved the way the idle scheduling class is on a loaded machine.
    setpriority(PRIO_PROCESS, 0, 10);
#else
    // A lower quality of service on macOS.
    QThread::currentThread()->setPriority(QThread::LowPriority);
#endif
}

} // namespace BackgroundPriority
