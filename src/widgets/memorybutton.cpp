// SPDX-License-Identifier: MIT
#include "widgets/memorybutton.h"

#include "widgets/memorybuttonspinedit.h"

#include <QApplication>
#include <QMouseEvent>

namespace {

constexpr int longPressMs = 1500;
constexpr int editorHeight = 20;

const char sheet[] = "font-size: 14px; font-weight: bold;";
const char readOnlyAddition[] = " background-color: white";

} // namespace

CMemoryButton::CMemoryButton(QWidget *parent) : QPushButton(parent)
{
    setCheckable(true);
    setReadOnlyLook(false);
    m_editor = new CMemoryButtonSpinEdit(this);
    connect(m_editor, &CMemoryButtonSpinEdit::onLeave, this, &CMemoryButton::onSpinBoxLeave);
    connect(m_editor, &CMemoryButtonSpinEdit::onEscape, this, &CMemoryButton::abandonEdit);
    connect(&m_longPressTimer, &QTimer::timeout, this, &CMemoryButton::timeout);
}

void CMemoryButton::setReadOnlyLook(bool on)
{
    m_readOnlyLook = on;
    setEnabled(!on);
    setStyleSheet(QLatin1String(sheet) + QLatin1String(on ? readOnlyAddition : ""));
}

bool CMemoryButton::eventFilter(QObject *watched, QEvent *event)
{
    // Many widgets of the window take no focus, so the editor would stay open at a press on them.
    const auto *pressed =
        event->type() == QEvent::MouseButtonPress ? qobject_cast<QWidget *>(watched) : nullptr;
    if (!pressed || pressed == m_editor || m_editor->isAncestorOf(pressed))
        return false;
    finishEdit();
    return pressed == this;
}

void CMemoryButton::mousePressEvent(QMouseEvent *event)
{
    if (!m_locked) {
        m_longPressed = false;
        m_longPressTimer.start(longPressMs);
    }
    QPushButton::mousePressEvent(event);
}

void CMemoryButton::mouseReleaseEvent(QMouseEvent *event)
{
    m_longPressTimer.stop();
    QPushButton::mouseReleaseEvent(event);
}

void CMemoryButton::resizeEvent(QResizeEvent *event)
{
    QPushButton::resizeEvent(event);
    m_editor->setGeometry(0, 0, width(), editorHeight);
}

void CMemoryButton::timeout()
{
    m_longPressed = true;
    m_longPressTimer.stop();
    m_editing = true;
    qApp->installEventFilter(this);
    m_editor->show();
    m_editor->setValue(text().toInt());
    m_editor->selectAll();
    m_editor->setFocus(Qt::OtherFocusReason);
}

void CMemoryButton::abandonEdit()
{
    m_longPressTimer.stop();
    m_editing = false;
    qApp->removeEventFilter(this);
    // Hidden with the focus, the editor would hand it to the next button in the window.
    if (m_editor->hasFocus())
        window()->setFocus();
    m_editor->hide();
}

void CMemoryButton::finishEdit()
{
    if (m_editing)
        onSpinBoxLeave();
}

void CMemoryButton::onSpinBoxLeave()
{
    if (!m_editing)
        return; // an editor that is closed leaves once more
    m_editor->interpretText();
    abandonEdit();
    setText(QString::number(m_editor->value()));
    emit onMemoryValueChanged(m_editor->value());
}
