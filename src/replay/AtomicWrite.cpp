#include "AtomicWrite.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

namespace AtomicWrite {

namespace {

const QString prefix = QStringLiteral(".vantrel-write-");
const QString suffix = QStringLiteral(".tmp");

[[noreturn]] void fail(const QString &path, const QString &reason)
{
    throw std::runtime_error(QStringLiteral("%1: %2").arg(path, reason).toStdString());
}

} // namespace

void write(const QString &path, const QByteArray &bytes)
{
    const QFileInfo target(path);
    // A fixed-length name, however long the target's: it always fits.
    QTemporaryFile file(target.absolutePath() + QLatin1Char('/') + prefix + QStringLiteral("XXXXXX") + suffix);
    if (!file.open())
        fail(path, file.errorString());
    // As a newly made file would be, not private to the owner.
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    if (file.write(bytes) != bytes.size() || !file.flush())
        fail(path, file.errorString());
    if (::fsync(file.handle()) != 0)
        fail(path, QString::fromLocal8Bit(std::strerror(errno)));
    if (std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(path).constData()) != 0)
        fail(path, QString::fromLocal8Bit(std::strerror(errno)));
    file.setAutoRemove(false); // it is the target now
}

bool isLeftover(const QString &fileName)
{
    return fileName.startsWith(prefix) && fileName.endsWith(suffix);
}

} // namespace AtomicWrite
