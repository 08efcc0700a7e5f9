// SPDX-License-Identifier: MIT
#include "widgets/panelface.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace {

const QColor nearBlack(25, 25, 25);
const QColor faceTop(70, 70, 70);
const QColor faceBottom(40, 40, 40);
const QColor screenTop(0, 0, 27);
const QColor screenBottom(0, 0, 13);

constexpr int shadeLength = 50;
constexpr int shadeAlpha = 80;

QLinearGradient verticalGradient(const QRectF &area, const QColor &top, const QColor &bottom)
{
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0.0, top);
    gradient.setColorAt(1.0, bottom);
    return gradient;
}

QPainterPath rectanglePath(const QRectF &rectangle)
{
    QPainterPath path;
    path.addRect(rectangle);
    return path;
}

/// A shadow over `area` that fades from `from` over shadeLength pixels in `direction`.
void paintShade(QPainter &painter, const QRectF &area, const QPointF &from, const QPointF &direction)
{
    QLinearGradient gradient(from, from + direction * shadeLength);
    gradient.setColorAt(0.0, QColor(0, 0, 0, shadeAlpha));
    gradient.setColorAt(1.0, QColor(0, 0, 0, 0));
    painter.fillPath(rectanglePath(area), gradient);
}

void paintFace(QPainter &painter, const QRectF &face)
{
    painter.fillRect(face, verticalGradient(face, faceTop, faceBottom));
    paintShade(painter, face, face.topLeft(), {1, 0});
    paintShade(painter, face, face.topRight(), {-1, 0});
}

void paintScreen(QPainter &painter, const QRectF &screen)
{
    // Half pixels put the one pixel wide line on whole ones.
    const QPainterPath outline = rectanglePath(screen.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.fillPath(outline, screenBottom);
    painter.strokePath(outline, QPen(nearBlack, 1));
    const QRectF inside = screen.adjusted(1, 1, -1, -1);
    painter.fillRect(inside, verticalGradient(inside, screenTop, screenBottom));
}

} // namespace

void paintPanelFace(QPainter &painter, const QRect &face, const QRect &screen)
{
    // Not smoothed, or at a fractional scale what was there before would shine through the edges.
    painter.fillRect(face, nearBlack);
    painter.setRenderHint(QPainter::Antialiasing);
    paintFace(painter, QRectF(face).adjusted(1, 1, -1, -1));
    if (!screen.isEmpty())
        paintScreen(painter, screen);
}
