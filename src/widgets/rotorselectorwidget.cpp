// SPDX-License-Identifier: MIT
#include "widgets/rotorselectorwidget.h"

#include "widgets/mouseposition.h"

#include <QPainter>

namespace {

constexpr int stripCells = 3;
constexpr int stripRadius = 4;
constexpr int cellRadius = 2;
constexpr int cellGap = 3;

QString cellText(int cell)
{
    return cell == 0 ? QStringLiteral("X") : QString::number(cell);
}

QColor cellTextColor(int cell, bool selected)
{
    if (!selected)
        return Qt::darkCyan;
    return cell == 0 ? Qt::white : Qt::black;
}

} // namespace

CRotorSelectorWidget::CRotorSelectorWidget(QWidget *parent) : QWidget(parent)
{
    setAccessibleName(tr("Rotor"));
    select(m_selection);
}

QSize CRotorSelectorWidget::sizeHint() const
{
    return stripRect(m_cellSize).size();
}

QSize CRotorSelectorWidget::minimumSizeHint() const
{
    return sizeHint();
}

void CRotorSelectorWidget::setCount(int count)
{
    m_count = count;
    select(count == 0 ? 0 : m_selection);
}

void CRotorSelectorWidget::setCurrentIndex(int index)
{
    select(index + 1);
}

void CRotorSelectorWidget::select(int cell)
{
    m_selection = cell;
    setAccessibleDescription(cell == 0 ? tr("No rotor") : tr("Rotor %1").arg(cell));
    update();
}

QRect CRotorSelectorWidget::stripRect(int cellSize)
{
    return {0, 0, stripCells * cellSize, cellSize};
}

QRect CRotorSelectorWidget::cellRect(int cellSize, int cell)
{
    return {cellSize * cell + 1, 1, cellSize - cellGap, cellSize - cellGap};
}

void CRotorSelectorWidget::mousePressEvent(QMouseEvent *event)
{
    const QPoint position = mousePosition(event);
    if (event->button() != Qt::LeftButton || !stripRect(m_cellSize).contains(position))
        return;
    select(position.x() / m_cellSize);
    emit onCurrentIndexChanged(currentIndex());
}

void CRotorSelectorWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(stripRect(m_cellSize), stripRadius, stripRadius);
    for (int cell = 0; cell <= m_count; ++cell)
        paintCell(painter, cell);
}

void CRotorSelectorWidget::paintCell(QPainter &painter, int cell) const
{
    const QRect outline = cellRect(m_cellSize, cell);
    const bool selected = cell == m_selection;
    painter.setPen(selected ? Qt::cyan : Qt::darkCyan);
    painter.setBrush(selected && cell > 0 ? QBrush(Qt::white) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(outline, cellRadius, cellRadius);
    painter.setPen(cellTextColor(cell, selected));
    painter.drawText(outline, Qt::AlignHCenter, cellText(cell));
}
