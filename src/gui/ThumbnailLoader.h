#pragma once
// Thumbnails of screenshots for the lists and the gallery. Images are
// decoded on background threads straight to the size shown (a full-size
// screenshot is never kept), the newest request first, so that scrolling
// through hundreds of screenshots never decodes on the main thread and what
// comes into view is drawn next. The cache is bounded; a file that changed
// (retaken, regenerated) is decoded again.

#include <QCache>
#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QSize>
#include <QString>
#include <QThreadPool>
#include <optional>

class ThumbnailLoader : public QObject
{
    Q_OBJECT

public:
    // `size` bounds every thumbnail; the image's aspect ratio is kept.
    explicit ThumbnailLoader(QSize size, QObject *parent = nullptr);
    ~ThumbnailLoader() override;

    QSize size() const { return m_size; }
    // The room one thumbnail takes in a list with its caption below it: the
    // lists' grid and their items' size, known before any thumbnail is
    // decoded, so that the first layout already leaves room for the pictures.
    QSize cellSize() const { return m_size + QSize(40, 44); }

    // The thumbnail when it is ready; otherwise decoding starts and ready()
    // follows. Nothing as well for a file that is missing or no image.
    std::optional<QPixmap> thumbnail(const QString &path);

    // Lets every decoding job end; for tests and the benchmark.
    void waitForIdle();

signals:
    void ready(const QString &path);

private:
    static QString cacheKey(const QString &path);
    void finished(const QString &path, const QString &key, const QImage &image);

    QSize m_size;
    QThreadPool m_pool;
    QCache<QString, QPixmap> m_cache;
    QHash<QString, bool> m_pending; // cache keys being decoded
    int m_nextPriority = 0;
};
