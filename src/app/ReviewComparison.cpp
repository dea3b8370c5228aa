#include "ReviewComparison.h"

#include <algorithm>
#include <cstdlib>

namespace ReviewComparison {

namespace {

// Below this a channel difference is compression noise or anti-aliasing.
constexpr int differenceThreshold = 48;

int channelDifference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

QRgb tinted(QRgb pixel) { return qRgb(std::min(255, 128 + qRed(pixel) / 2), qGreen(pixel) / 3, qBlue(pixel) / 3); }
QRgb dimmed(QRgb pixel) { return qRgb(96 + qRed(pixel) * 5 / 8, 96 + qGreen(pixel) * 5 / 8, 96 + qBlue(pixel) * 5 / 8); }

} // namespace

QImage highlightDifferences(const QImage &drifted, const QImage &reference, const QSize &size)
{
    if (drifted.isNull() || reference.isNull() || size.isEmpty())
        return QImage();
    const QImage a = drifted.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGB32);
    const QImage b = reference.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGB32);
    QImage result(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        const auto *rowA = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *rowB = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        auto *out = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            out[x] = channelDifference(rowA[x], rowB[x]) > differenceThreshold ? tinted(rowA[x]) : dimmed(rowA[x]);
    }
    return result;
}

} // namespace ReviewComparison
