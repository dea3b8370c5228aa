#include "ContainedPath.h"

#include <QDir>
#include <QFileInfo>

namespace ContainedPath {

namespace {

bool hasControlCharacter(const QString &name)
{
    for (const QChar c : name)
        if (c.category() == QChar::Other_Control)
            return true;
    return false;
}

// The real location of `path`: links followed, and for a path that does not
// exist yet, its nearest existing parent's real location with the rest added.
QString resolved(const QString &path)
{
    QString existing = QDir::cleanPath(QDir(path).absolutePath());
    QString rest;
    while (!QFileInfo::exists(existing)) {
        const QFileInfo info(existing);
        if (info.isSymLink())
            return {}; // a link to nowhere leads nowhere we know
        const QString parent = info.absolutePath();
        if (parent == existing)
            return {};
        rest = QLatin1Char('/') + info.fileName() + rest;
        existing = parent;
    }
    const QString canonical = QFileInfo(existing).canonicalFilePath();
    return canonical.isEmpty() ? QString() : canonical + rest;
}

} // namespace

std::optional<QString> refusal(const QString &folder, const QString &name)
{
    if (name.isEmpty())
        return QStringLiteral("the name is empty");
    if (name == QLatin1String(".") || name == QLatin1String(".."))
        return QStringLiteral("the name \"%1\" is no file name").arg(name);
    if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')))
        return QStringLiteral("the name \"%1\" is a path, not a file name").arg(name);
    if (hasControlCharacter(name))
        return QStringLiteral("the name holds control characters");
    const QString path = QDir(folder).filePath(name);
    const QFileInfo info(path);
    if (info.isSymLink() && !isInside(path, folder))
        return QStringLiteral("\"%1\" is a link that leads out of %2").arg(name, folder);
    return std::nullopt;
}

bool isInside(const QString &path, const QString &folder)
{
    const QString inner = resolved(path);
    const QString outer = resolved(folder);
    return !inner.isEmpty() && !outer.isEmpty() && inner.startsWith(outer + QLatin1Char('/'));
}

} // namespace ContainedPath
