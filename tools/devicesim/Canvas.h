#pragma once
// What a screen is made of, in points: the same drawing code either paints
// into an image (with a painter) or only records where the tappable things
// are (without one). A tap therefore always hits what a screenshot shows.

#include "ScreenGeometry.h"
#include "Typography.h"

#include <QColor>
#include <QList>
#include <QPainter>
#include <QRectF>
#include <QString>

struct HitArea
{
    QRectF rect;
    QString action;
};

// A region whose content moves with vertical swipes.
struct ScrollArea
{
    QString key; // where the offset is kept (AppSession::scroll)
    QRectF viewport;
    double contentHeight = 0;

    double maximumOffset() const { return qMax(0.0, contentHeight - viewport.height()); }
};

class Canvas
{
public:
    Canvas(QPainter *painter, const ScreenGeometry &geometry);

    const ScreenGeometry &geometry() const { return m_geometry; }
    double width() const { return m_geometry.width; }
    double height() const { return m_geometry.height; }
    // Null while only the tappable areas are collected.
    QPainter *painter() const { return m_painter; }

    void fill(const QRectF &rect, const QColor &color, double radius = 0);
    void verticalGradient(const QRectF &rect, const QColor &top, const QColor &bottom, double radius = 0);
    void circle(const QPointF &centre, double radius, const QColor &color);
    void line(const QPointF &from, const QPointF &to, const QColor &color, double width = 1);
    // One line, elided at the end when it does not fit.
    void text(const QRectF &rect, const QString &text, const TextStyle &style,
              Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);
    // One line that shrinks (down to 70 %) before it is elided, as large titles do.
    void title(const QRectF &rect, const QString &text, const TextStyle &style);
    // Wrapped text from the top of `rect`.
    void paragraph(const QRectF &rect, const QString &text, const TextStyle &style);
    double textWidth(const QString &text, const TextStyle &style) const;

    // Everything painted or hit from now on is limited to `rect`.
    void pushClip(const QRectF &rect);
    void popClip();

    void hit(const QRectF &rect, const QString &action);
    // The action of the top-most area under `point`, or empty.
    QString actionAt(const QPointF &point) const;
    const QList<HitArea> &hits() const { return m_hits; }

    void scrollArea(const QString &key, const QRectF &viewport, double contentHeight);
    // The top-most scroll area under `point`, if any.
    const ScrollArea *scrollAreaAt(const QPointF &point) const;

private:
    QPainter *m_painter;
    ScreenGeometry m_geometry;
    QList<QRectF> m_clips;
    QList<HitArea> m_hits;
    QList<ScrollArea> m_scrollAreas;
};
