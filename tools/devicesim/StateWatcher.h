#pragma once
// Notices when another devicesim process (a simctl call, a replay, the
// window's own clicks) has saved a new state, so that a long-lived window
// can show it. The state file is replaced whole on every save, so it is
// read here without the lock: a reader sees one saved version or the next.

#include "World.h"

#include <QByteArray>
#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <functional>

class StateWatcher : public QObject
{
public:
    using Handler = std::function<void(const World &)>;

    // `onChange` gets each state that differs from the last one read;
    // `onFolderGone` is called once the state folder no longer exists.
    StateWatcher(Handler onChange, std::function<void()> onFolderGone);

    // Reads the state now (as after a change made by this process).
    void check();

private:
    Handler m_onChange;
    std::function<void()> m_onFolderGone;
    QFileSystemWatcher m_watcher;
    QTimer m_poll; // in case the file system sends no notices
    QByteArray m_last;
};
