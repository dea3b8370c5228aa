#include "ThumbnailCache.h"

#include "ScreenshotDriftDetector.h"

#include <QFile>
#include <QDateTime>
#include <QFileInfo>
#include <QHash>
#include <QImage>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>
#include <mutex>
#include <sys/stat.h>

namespace ThumbnailCache {

namespace {

// A version of a file: a rewrite changes its size or modification time, and
// a replacement by rename (as atomic writes do) its inode.
struct Stamp
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = -1;
    qint64 modified = 0; // milliseconds
    bool operator==(const Stamp &) const = default;
};

std::optional<Stamp> stampOf(const QString &path)
{
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return Stamp{quint64(status.st_dev), quint64(status.st_ino), qint64(status.st_size),
                 QFileInfo(path).lastModified().toMSecsSinceEpoch()};
}

struct Entry
{
    Stamp stamp;
    QFuture<std::optional<QByteArray>> future;
};

// Enough for every screenshot and reference of a long run; older entries
// are dropped wholesale when it fills.
constexpr qsizetype maximumEntries = 1024;

std::mutex mutex;
QHash<QString, Entry> &entries()
{
    static QHash<QString, Entry> map;
    return map;
}

// Decoding is the costly part; a pool of its own keeps it off the threads
// that main-thread operations wait on.
QThreadPool &pool()
{
    static QThreadPool threads;
    return threads;
}

std::optional<QByteArray> make(const QString &path)
{
    const QImage image(path);
    if (image.isNull())
        return std::nullopt;
    return ScreenshotDriftDetector::samples(image);
}

} // namespace

QFuture<std::optional<QByteArray>> thumbnail(const QString &path)
{
    const std::optional<Stamp> stamp = stampOf(path);
    if (!stamp)
        return QtFuture::makeReadyFuture(std::optional<QByteArray>());
    const QString key = QFileInfo(path).absoluteFilePath();

    std::lock_guard lock(mutex);
    const auto found = entries().constFind(key);
    if (found != entries().cend() && found->stamp == *stamp)
        return found->future;
    if (entries().size() >= maximumEntries)
        entries().clear();
    QFuture<std::optional<QByteArray>> future = QtConcurrent::run(&pool(), make, key);
    entries().insert(key, {*stamp, future});
    return future;
}

} // namespace ThumbnailCache
