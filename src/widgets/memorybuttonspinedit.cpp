// SPDX-License-Identifier: MIT
#include "widgets/memorybuttonspinedit.h"

#include <QKeyEvent>

CMemoryButtonSpinEdit::CMemoryButtonSpinEdit(QWidget *parent) : QSpinBox(parent)
{
    setRange(0, 359);
    setWrapping(true);
    hide();
}

bool CMemoryButtonSpinEdit::event(QEvent *event)
{
    // Escape is for the editor, also where it is a shortcut of the window.
    if (event->type() == QEvent::ShortcutOverride
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    return QSpinBox::event(event);
}

void CMemoryButtonSpinEdit::focusOutEvent(QFocusEvent *event)
{
    QSpinBox::focusOutEvent(event);
    hide();
    emit onLeave();
}

void CMemoryButtonSpinEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        emit onEscape();
        return;
    }
    QSpinBox::keyPressEvent(event);
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return;
    event->accept(); // the base leaves Return to the parent, and the button would take it for a click
    emit onLeave();
}
