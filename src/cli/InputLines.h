#pragma once
// Standard input, line by line, as the event loop finds data on it, so that
// a command can take typed commands while it also handles other events
// (clicks arriving from the desktop). A line handler that runs an event
// loop of its own gets no further line until it returns.

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <functional>
#include <memory>

class InputLines : public QObject
{
public:
    // `onLine` gets each line without its line feed and returns false when
    // it wants no more; `onEnd` is called once at the end of input.
    InputLines(int fd, std::function<bool(const QString &)> onLine, std::function<void()> onEnd);

private:
    void read();

    int m_fd;
    std::function<bool(const QString &)> m_onLine;
    std::function<void()> m_onEnd;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_buffer;
    bool m_done = false;
};
