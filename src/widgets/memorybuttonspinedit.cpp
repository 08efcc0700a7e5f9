#include "widgets/memorybuttonspinedit.h"

#include <QKeyEvent>

CMemoryButtonSpinEdit::CMemoryButtonSpinEdit(QWidget *parent) : QSpinBox(parent)
{
    setRange(0, 359);
    setWrapping(true);
    hide();
}

void CMemoryButtonSpinEdit::focusOutEvent(QFocusEvent *event)
{
    QSpinBox::focusOutEvent(event);
    leave();
}

void CMemoryButtonSpinEdit::keyPressEvent(QKeyEvent *event)
{
    QSpinBox::keyPressEvent(event);
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return;
    event->accept(); // the base leaves Return to the parent, and the button would take it for a click
    leave();
}

void CMemoryButtonSpinEdit::leave()
{
    hide();
    emit onLeave();
}
