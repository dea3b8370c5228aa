#include "ThumbnailLoader.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPointer>
#include <QRunnable>

namespace {

// Kilobytes of decoded thumbnails kept: a gallery of more than a thousand
// screenshots at the gallery's size, well inside the window's memory budget.
constexpr int cacheKilobytes = 128 * 1024;

QImage decodeScaled(const QString &path, QSize bound)
{
    QImageReader reader(path);
    const QSize full = reader.size();
    if (full.isValid()) // scaled while decoding where the format allows it
        reader.setScaledSize(full.scaled(bound, Qt::KeepAspectRatio));
    QImage image = reader.read();
    if (!image.isNull() && (image.width() > bound.width() || image.height() > bound.height()))
        image = image.scaled(bound, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

} // namespace

ThumbnailLoader::ThumbnailLoader(QSize size, QObject *parent) : QObject(parent), m_size(size)
{
    m_cache.setMaxCost(cacheKilobytes);
    // Leave a core to the window and the device tools.
    m_pool.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1));
}

ThumbnailLoader::~ThumbnailLoader()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QString ThumbnailLoader::cacheKey(const QString &path)
{
    const QFileInfo info(path);
    return path + QLatin1Char('|') + QString::number(info.size()) + QLatin1Char('|')
           + QString::number(info.lastModified().toMSecsSinceEpoch());
}

std::optional<QPixmap> ThumbnailLoader::thumbnail(const QString &path)
{
    const QString key = cacheKey(path);
    if (const QPixmap *cached = m_cache.object(key))
        return cached->isNull() ? std::nullopt : std::optional(*cached);
    if (m_pending.contains(key))
        return std::nullopt;
    m_pending.insert(key, true);
    QPointer<ThumbnailLoader> self(this);
    const QSize bound = m_size;
    // Higher priorities run first: what was asked for last is on screen now.
    m_pool.start(QRunnable::create([self, path, key, bound] {
                     const QImage image = decodeScaled(path, bound);
                     QMetaObject::invokeMethod(
                         self, [self, path, key, image] {
                             if (self)
                                 self->finished(path, key, image);
                         },
                         Qt::QueuedConnection);
                 }),
                 ++m_nextPriority);
    return std::nullopt;
}

void ThumbnailLoader::finished(const QString &path, const QString &key, const QImage &image)
{
    m_pending.remove(key);
    auto *pixmap = new QPixmap(QPixmap::fromImage(image));
    m_cache.insert(key, pixmap, std::max<qsizetype>(1, image.sizeInBytes() / 1024));
    emit ready(path);
}

void ThumbnailLoader::waitForIdle()
{
    m_pool.waitForDone();
}
