// SPDX-License-Identifier: MIT
#include "antenna/spinbox.h"

#include <QKeyEvent>

namespace {

constexpr int confirmOnReturn = 0;
constexpr int confirmOnChange = 1;

} // namespace

CSpinBox::CSpinBox(QWidget *parent) : QSpinBox(parent)
{
    setWrapping(true);
    connect(this, QOverload<int>::of(&QSpinBox::valueChanged), this, &CSpinBox::onValueChanged);
}

void CSpinBox::setConfirmMode(int mode)
{
    m_confirmMode = mode;
}

void CSpinBox::keyPressEvent(QKeyEvent *event)
{
    QSpinBox::keyPressEvent(event);
    if (m_confirmMode != confirmOnReturn)
        return;

    qDebug("aaa2");
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        qDebug("aaa3");
        emit onConfirm();
    }
}

void CSpinBox::onValueChanged(int v)
{
    Q_UNUSED(v)
    qDebug("aaa1");
    if (m_confirmMode == confirmOnChange) {
        qDebug("aaa2");
        emit onConfirm();
    }
}
