#include "X11DesktopRules.h"

#include <algorithm>

namespace X11DesktopRules {

QList<X11TopLevel> visibleFrontToBack(const QList<X11TopLevel> &bottomToTop)
{
    QList<X11TopLevel> result;
    for (auto it = bottomToTop.crbegin(); it != bottomToTop.crend(); ++it) {
        if (!it->viewable || it->inputOnly || it->kind == X11TopLevel::Kind::desktop)
            continue;
        result.append(*it);
    }
    return result;
}

QList<RawWindowInfo> rawWindows(const QList<X11TopLevel> &frontToBack)
{
    QList<RawWindowInfo> result;
    for (const X11TopLevel &window : frontToBack) {
        const int layer = window.overrideRedirect              ? popUpLayer
                          : window.kind == X11TopLevel::Kind::dock ? dockLayer
                                                                   : normalLayer;
        std::optional<QRectF> bounds;
        if (window.clientBounds.isValid())
            bounds = QRectF(window.clientBounds);
        result.append({window.wmClass, layer, bounds});
    }
    return result;
}

bool isOverOwnWindow(const QPointF &point, const QList<X11TopLevel> &frontToBack, quint32 ownPid,
                     const QSet<quint32> &ownWindowIds)
{
    for (const X11TopLevel &window : frontToBack) {
        // A frame counts with its window: its title bar belongs to it.
        const QRectF area = window.frameBounds.isValid() ? QRectF(window.frameBounds) : QRectF(window.clientBounds);
        if (!area.contains(point))
            continue;
        return (ownPid != 0 && window.pid == ownPid) || ownWindowIds.contains(window.client)
               || ownWindowIds.contains(window.frame);
    }
    return false;
}

QPointF toBottomLeft(const QPointF &point, double screenHeight)
{
    return {point.x(), screenHeight - point.y()};
}

QRectF toBottomLeft(const QRectF &rect, double screenHeight)
{
    return {rect.x(), screenHeight - rect.y() - rect.height(), rect.width(), rect.height()};
}

QRect workArea(const QList<quint32> &values, quint32 currentDesktop, const QSize &screen)
{
    const QRect whole(QPoint(0, 0), screen);
    const qsizetype at = qsizetype(currentDesktop) * 4;
    if (values.size() < at + 4)
        return whole;
    const QRect area{int(values[at]), int(values[at + 1]), int(values[at + 2]), int(values[at + 3])};
    const QRect inside = area.intersected(whole);
    return inside.isEmpty() ? whole : inside;
}

QString wmClassName(const QByteArray &property)
{
    // Two strings, each ending in a zero byte (the last one may lack it).
    const qsizetype end = property.indexOf('\0');
    if (end < 0)
        return {};
    QByteArray name = property.mid(end + 1);
    if (const qsizetype zero = name.indexOf('\0'); zero >= 0)
        name.truncate(zero);
    return QString::fromLocal8Bit(name);
}

} // namespace X11DesktopRules
