#include "AtomicFile.h"

#include "AppError.h"

#include <QFile>
#include <QSaveFile>

namespace AtomicFile {

void write(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw AppError(QStringLiteral("%1: %2").arg(path, file.errorString()));
    if (file.write(bytes) != bytes.size() || !file.commit())
        throw AppError(QStringLiteral("%1: %2").arg(path, file.errorString()));
}

QByteArray read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw AppError(QStringLiteral("%1: %2").arg(path, file.errorString()));
    return file.readAll();
}

std::optional<QByteArray> readIfExists(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace AtomicFile
