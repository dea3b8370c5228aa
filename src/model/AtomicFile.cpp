#include "AtomicFile.h"

#include "AppError.h"
#include "replay/AtomicWrite.h"

#include <QFile>

namespace AtomicFile {

void write(const QString &path, const QByteArray &bytes)
{
    try {
        AtomicWrite::write(path, bytes);
    } catch (const std::runtime_error &error) {
        throw AppError(QString::fromUtf8(error.what()));
    }
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
