#include "StateWatcher.h"

#include "StateStore.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

StateWatcher::StateWatcher(Handler onChange, std::function<void()> onFolderGone)
    : m_onChange(std::move(onChange)), m_onFolderGone(std::move(onFolderGone))
{
    // A save renames a new file into the folder: the folder changes, and
    // the old file's watch would end with it.
    m_watcher.addPath(StateStore::home());
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { check(); });
    m_poll.setInterval(1000);
    connect(&m_poll, &QTimer::timeout, this, [this] { check(); });
    m_poll.start();
}

void StateWatcher::check()
{
    if (!QDir(StateStore::home()).exists()) {
        m_poll.stop();
        if (m_onFolderGone)
            m_onFolderGone();
        return;
    }
    QFile file(StateStore::statePath());
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray bytes = file.readAll();
    // The lock file comes and goes with every other process's read: only a
    // new state counts.
    if (bytes == m_last)
        return;
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return;
    m_last = bytes;
    m_onChange(World::fromJson(document.object()));
}
