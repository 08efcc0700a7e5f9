// SPDX-License-Identifier: MIT
#include "antenna/colorwidget.h"

#include <QColorDialog>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr QSize preferredSize(60, 20);

bool isOpeningKey(int key)
{
    return key == Qt::Key_Space || key == Qt::Key_Select || key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// Black around white, so that it shows on every colour.
void paintFocusRing(QPainter &painter, const QRect &rect)
{
    painter.setPen(Qt::black);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.setPen(Qt::white);
    painter.drawRect(rect.adjusted(1, 1, -2, -2));
}

} // namespace

CColorWidget::CColorWidget(QWidget *parent) : QWidget(parent)
{
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    describeColor();
}

void CColorWidget::setColor(const QColor &color)
{
    if (m_color == color)
        return;
    m_color = color;
    describeColor();
    update();
}

QSize CColorWidget::sizeHint() const
{
    return preferredSize;
}

QSize CColorWidget::minimumSizeHint() const
{
    return preferredSize;
}

void CColorWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_color);
    if (hasFocus())
        paintFocusRing(painter, rect());
}

void CColorWidget::mousePressEvent(QMouseEvent *event)
{
    event->accept();
    openDialog();
}

void CColorWidget::keyPressEvent(QKeyEvent *event)
{
    if (!isOpeningKey(event->key())) {
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
    if (!event->isAutoRepeat())
        openDialog();
}

void CColorWidget::openDialog()
{
    // Not getColor(): its own event loop would hold up a poll of the box that the click came in during.
    m_dialog = new QColorDialog(m_color, this);
    m_dialog->setWindowTitle(QStringLiteral("Escolha uma cor para esta antena"));
    m_dialog->setOption(QColorDialog::DontUseNativeDialog);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_dialog, &QColorDialog::colorSelected, this, &CColorWidget::takeColor);
    m_dialog->open();
}

void CColorWidget::abandonChoice()
{
    if (m_dialog)
        m_dialog->reject();
}

void CColorWidget::takeColor(const QColor &color)
{
    if (!color.isValid())
        return;
    setColor(color);
    emit onColorChanged(color);
}

void CColorWidget::describeColor()
{
    setToolTip(tr("Colour %1, click to choose another").arg(m_color.name()));
    setAccessibleDescription(m_color.name());
}
