#include "StateStore.h"

#include "DefaultWorld.h"
#include "ToolFailure.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QLockFile>
#include <QSaveFile>
#include <unistd.h>

namespace StateStore {

QString home()
{
    const QString configured = qEnvironmentVariable("DEVICESIM_HOME");
    if (!configured.isEmpty())
        return QDir(configured).absolutePath();
    return QDir::temp().filePath(QStringLiteral("devicesim-%1").arg(getuid()));
}

QString statePath() { return QDir(home()).filePath(QStringLiteral("state.json")); }

namespace {

ToolFailure stateFailure(const QString &what)
{
    return {QStringLiteral("devicesim: %1\n").arg(what), 1};
}

void save(const World &world)
{
    QSaveFile file(statePath());
    if (!file.open(QIODevice::WriteOnly))
        throw stateFailure(QStringLiteral("cannot write %1: %2").arg(statePath(), file.errorString()));
    file.write(QJsonDocument(world.toJson()).toJson(QJsonDocument::Indented));
    if (!file.commit())
        throw stateFailure(QStringLiteral("cannot write %1: %2").arg(statePath(), file.errorString()));
}

World load()
{
    QFile file(statePath());
    if (!file.exists()) {
        World world = DefaultWorld::create(home());
        save(world);
        return world;
    }
    if (!file.open(QIODevice::ReadOnly))
        throw stateFailure(QStringLiteral("cannot read %1: %2").arg(statePath(), file.errorString()));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isObject())
        throw stateFailure(QStringLiteral("%1 is damaged (%2); run `devicesim init` to start over")
                               .arg(statePath(), error.errorString()));
    return World::fromJson(document.object());
}

// Holds the state lock for its lifetime. A holder that died (a replay
// terminated mid-step) leaves a stale lock that QLockFile takes over.
class Lock
{
public:
    Lock() : m_file(QDir(home()).filePath(QStringLiteral("state.lock")))
    {
        if (!QDir().mkpath(home()))
            throw stateFailure(QStringLiteral("cannot create the state folder %1").arg(home()));
        m_file.setStaleLockTime(60 * 1000);
        if (!m_file.tryLock(30 * 1000))
            throw stateFailure(QStringLiteral("the state in %1 stayed locked for 30 seconds").arg(home()));
    }

private:
    QLockFile m_file;
};

} // namespace

void modify(const std::function<void(World &)> &change)
{
    Lock lock;
    World world = load();
    change(world);
    save(world);
}

World read()
{
    Lock lock;
    return load();
}

void reset()
{
    Lock lock;
    save(DefaultWorld::create(home()));
}

} // namespace StateStore
