#include "ScriptedPlatformServices.h"

#include <QDir>
#include <QFileInfo>

bool ScriptedPlatformServices::startMouseMonitor(MouseHandler handler)
{
    if (!canInstallMonitor)
        return false;
    mouseHandler = std::move(handler);
    return true;
}

bool ScriptedPlatformServices::moveToTrash(const QString &path, QString *error)
{
    if (!trashAvailable) {
        if (error)
            *error = QStringLiteral("No Trash here.");
        return false;
    }
    // A scripted Trash: the item leaves its place, as the real one does.
    const QFileInfo info(path);
    bool removed = info.isDir() ? QDir(path).removeRecursively() : QFile::remove(path);
    if (removed)
        trashed.append(path);
    else if (error)
        *error = QStringLiteral("Could not move %1 to the Trash.").arg(path);
    return removed;
}
