#pragma once
// One user action at a time. A model operation may wait for the Simulator
// or the build tools while the window stays live; meanwhile every button
// that would start another operation is disabled, so nothing re-enters the
// model half-way through an operation.

#include <QObject>
#include <functional>

class BusyState : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    bool isBusy() const { return m_busy; }

    // Runs `operation` unless another one is running; says whether it ran.
    bool run(const std::function<void()> &operation);

signals:
    void busyChanged(bool busy);

private:
    bool m_busy = false;
};
