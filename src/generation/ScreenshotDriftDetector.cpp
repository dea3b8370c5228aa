#include "ScreenshotDriftDetector.h"

#include <QPainter>
#include <cstdlib>

namespace ScreenshotDriftDetector {

std::optional<QByteArray> samples(const QImage &image)
{
    if (image.isNull())
        return std::nullopt;
    QImage bitmap(thumbnailWidth, thumbnailHeight, QImage::Format_RGBA8888);
    if (bitmap.isNull() || bitmap.bytesPerLine() != bytesPerRow)
        return std::nullopt;

    // Shrink by area averaging first: every source pixel counts, so a small
    // dialog is not missed the way point sampling would miss it. The scaled
    // copy is tiny, so drawing it is cheap.
    const QImage shrunk = image.scaled(thumbnailWidth, thumbnailHeight, Qt::IgnoreAspectRatio,
                                       Qt::SmoothTransformation);
    {
        QPainter painter(&bitmap);
        if (!painter.isActive())
            return std::nullopt;
        painter.fillRect(bitmap.rect(), Qt::black);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.setOpacity(1.0);
        painter.drawImage(bitmap.rect(), shrunk);
    }
    if (bitmap.constBits() == nullptr)
        return std::nullopt;
    return QByteArray(reinterpret_cast<const char *>(bitmap.constBits()), sampleByteCount);
}

double score(const QByteArray &a, const QByteArray &b)
{
    const qsizetype n = std::min(a.size(), b.size());
    const auto *pa = reinterpret_cast<const unsigned char *>(a.constData());
    const auto *pb = reinterpret_cast<const unsigned char *>(b.constData());
    quint64 sum = 0;
    quint64 channels = 0;
    for (qsizetype p = 0; p + 2 < n; p += 4) {
        sum += std::abs(pa[p] - pb[p]) + std::abs(pa[p + 1] - pb[p + 1]) + std::abs(pa[p + 2] - pb[p + 2]);
        channels += 3;
    }
    if (channels == 0)
        return 0;
    return static_cast<double>(sum) / (static_cast<double>(channels) * 255.0);
}

} // namespace ScreenshotDriftDetector
