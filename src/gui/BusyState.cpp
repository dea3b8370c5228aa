#include "BusyState.h"

#include <QScopeGuard>

bool BusyState::run(const std::function<void()> &operation)
{
    if (m_busy)
        return false;
    m_busy = true;
    emit busyChanged(true);
    const auto done = qScopeGuard([this] {
        m_busy = false;
        emit busyChanged(false);
    });
    operation();
    return true;
}
