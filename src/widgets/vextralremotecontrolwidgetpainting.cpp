#include "widgets/vextralremotecontrolwidget.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

// The painted front: a grey metal face, a dark screen let into it, and shadows where surfaces curve away.

namespace {

const QColor nearBlack(25, 25, 25);
const QColor faceTop(70, 70, 70);
const QColor faceBottom(40, 40, 40);
const QColor displayTop(0, 0, 27);
const QColor displayBottom(0, 0, 13);

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

/// A shadow over `area` that begins at `from` and is gone shadeLength pixels further on in `direction`.
void paintShade(QPainter &painter, const QRectF &area, const QPointF &from, const QPointF &direction)
{
    QLinearGradient gradient(from, from + direction * shadeLength);
    gradient.setColorAt(0.0, QColor(0, 0, 0, shadeAlpha));
    gradient.setColorAt(1.0, QColor(0, 0, 0, 0));
    painter.fillPath(rectanglePath(area), gradient);
}

} // namespace

void CVextralRemoteControlWidget::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    // Not smoothed, or at a fractional scale what was there before would shine through the edges.
    painter.fillRect(rect(), nearBlack);
    // All there is: the separate hint for high quality has meant the same since Qt 5.14.
    painter.setRenderHint(QPainter::Antialiasing);
    paintFace(painter);
    paintDisplay(painter);
}

void CVextralRemoteControlWidget::paintFace(QPainter &painter) const
{
    const QRectF face = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.fillRect(face, verticalGradient(face, faceTop, faceBottom));
    paintShade(painter, face, face.topLeft(), {1, 0});
    paintShade(painter, face, face.topRight(), {-1, 0});
}

void CVextralRemoteControlWidget::paintDisplay(QPainter &painter) const
{
    const QRectF display = displayArea();
    if (display.isEmpty())
        return;
    // Half pixels put the one pixel wide line on whole ones.
    const QPainterPath outline = rectanglePath(display.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.fillPath(outline, displayBottom);
    painter.strokePath(outline, QPen(nearBlack, 1));
    const QRectF screen = display.adjusted(1, 1, -1, -1);
    painter.fillRect(screen, verticalGradient(screen, displayTop, displayBottom));
}
