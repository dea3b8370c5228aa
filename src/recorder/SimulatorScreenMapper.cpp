#include "SimulatorScreenMapper.h"

#include <algorithm>

namespace SimulatorScreenMapper {

std::optional<QSizeF> deviceSize(QSizeF previewPixelSize, double previewScale)
{
    if (!(previewPixelSize.width() > 0 && previewPixelSize.height() > 0 && previewScale > 0))
        return std::nullopt;
    const QSizeF points(previewPixelSize.width() / previewScale, previewPixelSize.height() / previewScale);
    if (!(points.width() > 0 && points.height() > 0))
        return std::nullopt;
    return points;
}

QRectF contentRect(const QRectF &windowFrame)
{
    // The origin is at the bottom, so shortening the height cuts the top.
    const double strip = std::min(windowFrame.height() * titleStripShare, maximumTitleStrip);
    return QRectF(windowFrame.x(), windowFrame.y(), windowFrame.width(), windowFrame.height() - strip);
}

QRectF fittedDeviceRect(const QRectF &windowFrame, QSizeF deviceSize)
{
    const QRectF content = contentRect(windowFrame);
    const double aspect = deviceSize.width() / deviceSize.height();
    QSizeF fitted;
    if (aspect < content.width() / content.height())
        fitted = QSizeF(aspect * content.height(), content.height());
    else
        fitted = QSizeF(content.width(), content.width() / aspect);
    QRectF rect(QPointF(), fitted);
    rect.moveCenter(content.center());
    return rect;
}

std::optional<QPointF> devicePoint(QPointF pointer, const QRectF &windowFrame, QSizeF deviceSize)
{
    const QRectF fitted = fittedDeviceRect(windowFrame, deviceSize);
    // Edges count as inside: a press on the very border still hits the screen.
    const double minX = fitted.x();
    const double maxX = fitted.x() + fitted.width();
    const double minY = fitted.y();
    const double maxY = fitted.y() + fitted.height();
    if (pointer.x() < minX || pointer.x() > maxX || pointer.y() < minY || pointer.y() > maxY)
        return std::nullopt;
    const double fx = (pointer.x() - minX) / fitted.width();
    const double fy = (maxY - pointer.y()) / fitted.height();
    return QPointF(std::clamp(deviceSize.width() * fx, 0.0, deviceSize.width()),
                   std::clamp(deviceSize.height() * fy, 0.0, deviceSize.height()));
}

} // namespace SimulatorScreenMapper
