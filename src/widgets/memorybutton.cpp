#include "widgets/memorybutton.h"

#include "widgets/memorybuttonspinedit.h"

namespace {

constexpr int kLongPressMs = 1500;
constexpr int kEditorHeight = 20;

const char kSheet[] = "font-size: 14px; font-weight: bold;";
const char kReadOnlyAddition[] = " background-color: white";

} // namespace

CMemoryButton::CMemoryButton(QWidget *parent) : QPushButton(parent)
{
    setCheckable(true);
    setReadOnlyLook(false);
    m_editor = new CMemoryButtonSpinEdit(this);
    connect(m_editor, &CMemoryButtonSpinEdit::onLeave, this, &CMemoryButton::onSpinBoxLeave);
    connect(&m_longPressTimer, &QTimer::timeout, this, &CMemoryButton::timeout);
}

void CMemoryButton::setReadOnlyLook(bool on)
{
    m_readOnlyLook = on;
    setEnabled(!on);
    setStyleSheet(QLatin1String(kSheet) + QLatin1String(on ? kReadOnlyAddition : ""));
}

void CMemoryButton::mousePressEvent(QMouseEvent *event)
{
    if (!m_locked) {
        m_longPressed = false;
        m_longPressTimer.start(kLongPressMs);
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
    m_editor->setGeometry(0, 0, width(), kEditorHeight);
}

void CMemoryButton::timeout()
{
    m_longPressed = true;
    m_longPressTimer.stop();
    m_editing = true;
    m_editor->show();
    m_editor->setValue(text().toInt());
    m_editor->selectAll();
    m_editor->setFocus(Qt::OtherFocusReason);
}

void CMemoryButton::onSpinBoxLeave()
{
    if (!m_editing)
        return; // hiding the editor makes it leave once more
    m_editing = false;
    m_editor->hide();
    setText(QString::number(m_editor->value()));
    emit onMemoryValueChanged(m_editor->value());
}
