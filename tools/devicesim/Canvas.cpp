#include "Canvas.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainterPath>
#include <QTextLayout>

Canvas::Canvas(QPainter *painter, const ScreenGeometry &geometry) : m_painter(painter), m_geometry(geometry) {}

void Canvas::fill(const QRectF &rect, const QColor &color, double radius)
{
    if (!m_painter)
        return;
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(color);
    if (radius > 0)
        m_painter->drawRoundedRect(rect, radius, radius);
    else
        m_painter->drawRect(rect);
}

void Canvas::verticalGradient(const QRectF &rect, const QColor &top, const QColor &bottom, double radius)
{
    if (!m_painter)
        return;
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(gradient);
    if (radius > 0)
        m_painter->drawRoundedRect(rect, radius, radius);
    else
        m_painter->drawRect(rect);
}

void Canvas::circle(const QPointF &centre, double radius, const QColor &color)
{
    if (!m_painter)
        return;
    m_painter->setPen(Qt::NoPen);
    m_painter->setBrush(color);
    m_painter->drawEllipse(centre, radius, radius);
}

void Canvas::line(const QPointF &from, const QPointF &to, const QColor &color, double width)
{
    if (!m_painter)
        return;
    m_painter->setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
    m_painter->drawLine(from, to);
}

void Canvas::text(const QRectF &rect, const QString &text, const TextStyle &style, Qt::Alignment alignment)
{
    if (!m_painter || text.isEmpty())
        return;
    const QFont font = Typography::font(style.size, style.bold);
    const QString shown = QFontMetricsF(font).elidedText(text, Qt::ElideRight, rect.width());
    m_painter->setFont(font);
    m_painter->setPen(style.color);
    m_painter->drawText(rect, int(alignment) | Qt::TextSingleLine, shown);
}

void Canvas::title(const QRectF &rect, const QString &text, const TextStyle &style)
{
    TextStyle fitted = style;
    const double width = textWidth(text, style);
    if (width > rect.width())
        fitted.size = qMax(style.size * 0.7, style.size * rect.width() / width);
    this->text(rect, text, fitted, Qt::AlignLeft | Qt::AlignVCenter);
}

void Canvas::paragraph(const QRectF &rect, const QString &text, const TextStyle &style)
{
    if (!m_painter || text.isEmpty())
        return;
    m_painter->setFont(Typography::font(style.size, style.bold));
    m_painter->setPen(style.color);
    m_painter->drawText(rect, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text);
}

double Canvas::textWidth(const QString &text, const TextStyle &style) const
{
    return QFontMetricsF(Typography::font(style.size, style.bold)).horizontalAdvance(text);
}

void Canvas::pushClip(const QRectF &rect)
{
    const QRectF clip = m_clips.isEmpty() ? rect : m_clips.last().intersected(rect);
    m_clips.append(clip);
    if (m_painter) {
        m_painter->save();
        m_painter->setClipRect(clip);
    }
}

void Canvas::popClip()
{
    if (m_clips.isEmpty())
        return;
    m_clips.removeLast();
    if (m_painter)
        m_painter->restore();
}

void Canvas::hit(const QRectF &rect, const QString &action)
{
    const QRectF visible = m_clips.isEmpty() ? rect : rect.intersected(m_clips.last());
    if (!visible.isEmpty())
        m_hits.append({visible, action});
}

QString Canvas::actionAt(const QPointF &point) const
{
    for (auto it = m_hits.crbegin(); it != m_hits.crend(); ++it)
        if (it->rect.contains(point))
            return it->action;
    return {};
}

void Canvas::scrollArea(const QString &key, const QRectF &viewport, double contentHeight)
{
    m_scrollAreas.append({key, viewport, contentHeight});
}

const ScrollArea *Canvas::scrollAreaAt(const QPointF &point) const
{
    for (auto it = m_scrollAreas.crbegin(); it != m_scrollAreas.crend(); ++it)
        if (it->viewport.contains(point))
            return &*it;
    return nullptr;
}
