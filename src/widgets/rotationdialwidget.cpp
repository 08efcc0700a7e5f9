// SPDX-License-Identifier: MIT
#include "widgets/rotationdialwidget.h"

#include "widgets/mouseposition.h"

#include <QLinearGradient>
#include <QPainter>

#include <utility>

namespace {

constexpr QColor faceLight(70, 70, 70);
constexpr QColor faceEdge(40, 40, 40);
constexpr QColor innerFill(40, 40, 40);
constexpr QColor innerEdge(60, 60, 60);
constexpr QColor pointerColor(130, 130, 130, 140);

constexpr int innerInset = 3;
constexpr int innerTop = 4; // one pixel lower than the inset: a bevel
constexpr int pointerStart = 4;

QString describedValue(int value)
{
    return CRotationDialWidget::tr("%1 degrees").arg(value);
}

} // namespace

CRotationDialWidget::CRotationDialWidget(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(tr("Azimuth dial"));
    setAccessibleDescription(describedValue(m_value));
}

QSize CRotationDialWidget::sizeHint() const
{
    return {80, 45};
}

QSize CRotationDialWidget::minimumSizeHint() const
{
    return {45, 45};
}

void CRotationDialWidget::setValue(int value, bool force)
{
    if (!m_pressed || force)
        storeValue(value);
}

void CRotationDialWidget::storeValue(int value)
{
    if (value == m_value)
        return;
    m_value = value;
    setAccessibleDescription(describedValue(value));
}

QRect CRotationDialWidget::knobRect(const QSize &size)
{
    const int diameter = qMin(size.width(), size.height());
    return {size.width() / 2 - diameter / 2, 0, diameter, diameter};
}

QLine CRotationDialWidget::pointerLine(int diameter)
{
    return {pointerStart, pointerStart, diameter / 4, diameter / 4};
}

int CRotationDialWidget::draggedValue(int startValue, int dy)
{
    const int value = (startValue - dy) % 360;
    return value < 0 ? value + 360 : value;
}

int CRotationDialWidget::valueAt(const QMouseEvent *event) const
{
    return draggedValue(m_startValue, mapToGlobal(mousePosition(event)).y() - m_pressPosition.y());
}

void CRotationDialWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->buttons() != Qt::LeftButton)
        return;
    // A receiver may set the value to start from, so it is read afterwards.
    emit onRotationStarted();
    m_pressed = true;
    m_dragging = true;
    m_startValue = m_value;
    m_pressPosition = mapToGlobal(mousePosition(event));
}

void CRotationDialWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_pressed || !m_dragging || !(event->buttons() & Qt::LeftButton))
        return;
    storeValue(valueAt(event));
    update();
    emit onRotationChanging(m_value);
}

void CRotationDialWidget::mouseReleaseEvent(QMouseEvent *event)
{
    const bool endsDrag = m_pressed && m_dragging;
    m_pressed = false;
    m_dragging = false;
    if (!endsDrag)
        return;
    storeValue(valueAt(event));
    if (m_value == m_startValue)
        return;
    m_startValue = -1;
    emit onRotationChanged(m_value);
}

void CRotationDialWidget::giveUp()
{
    m_pressed = false;
    if (std::exchange(m_dragging, false))
        emit onRotationGivenUp();
}

void CRotationDialWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        giveUp();
}

void CRotationDialWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    // A window that is minimised is only out of sight.
    if (!event->spontaneous())
        giveUp();
}

void CRotationDialWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const QRect knob = knobRect(size());
    painter.translate(knob.topLeft());
    paintBackground(painter, knob.width());
    paintInnerDisc(painter, knob.width());
    paintPointer(painter, knob.width());
}

void CRotationDialWidget::paintBackground(QPainter &painter, int diameter) const
{
    QLinearGradient face(0, 0, width() - 1, height() - 1);
    face.setColorAt(0, faceLight);
    face.setColorAt(1, Qt::black);
    painter.setPen(faceEdge);
    painter.setBrush(face);
    painter.drawEllipse(0, 0, diameter, diameter);
    painter.setPen(QPen(Qt::black, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(0, 0, diameter, diameter);
}

void CRotationDialWidget::paintInnerDisc(QPainter &painter, int diameter) const
{
    painter.setPen(QPen(innerEdge, 2));
    painter.setBrush(innerFill);
    painter.drawEllipse(innerInset, innerTop, diameter - 2 * innerInset, diameter - 2 * innerInset);
}

void CRotationDialWidget::paintPointer(QPainter &painter, int diameter) const
{
    painter.setPen(QPen(pointerColor, 2));
    painter.translate(QPoint(diameter / 2, diameter / 2));
    painter.rotate(m_value);
    painter.drawLine(pointerLine(diameter));
}
