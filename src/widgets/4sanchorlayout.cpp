// SPDX-License-Identifier: MIT
#include "widgets/4sanchorlayout.h"

namespace {

int anchoredEdge(int mode, int original, int growth, int current)
{
    switch (mode) {
    case C4SAnchorLayout::Near:
        return original;
    case C4SAnchorLayout::Far:
        return original + growth;
    default:
        return current;
    }
}

} // namespace

C4SAnchorLayout::C4SAnchorLayout(QWidget *container) : m_container(container), m_design(container->rect()) {}

void C4SAnchorLayout::addWidget(int leftMode, int topMode, int rightMode, int bottomMode, QWidget *child)
{
    m_entries.push_back({child->geometry(), topMode, leftMode, rightMode, bottomMode, child});
}

void C4SAnchorLayout::relayout()
{
    if (!m_container)
        return;
    for (const Entry &entry : m_entries) {
        if (entry.child)
            entry.child->setGeometry(entry.leftMode == Scaled ? scaledRect(entry.original)
                                                              : anchoredRect(entry));
    }
}

void C4SAnchorLayout::captureDesign()
{
    if (!m_container)
        return;
    for (Entry &entry : m_entries) {
        if (entry.child)
            entry.original = entry.child->geometry();
    }
    m_design = m_container->rect();
    relayout();
    m_container->setMinimumSize(m_container->size());
}

QRect C4SAnchorLayout::scaledRect(const QRect &original) const
{
    const double sx = double(m_container->width()) / qMax(1, m_design.width());
    const double sy = double(m_container->height()) / qMax(1, m_design.height());
    return {QPoint(int(original.left() * sx), int(original.top() * sy)),
            QPoint(int(original.right() * sx), int(original.bottom() * sy))};
}

QRect C4SAnchorLayout::anchoredRect(const Entry &entry) const
{
    const int dW = m_container->width() - m_design.width();
    const int dH = m_container->height() - m_design.height();
    const QRect current = entry.child->geometry();
    return {QPoint(anchoredEdge(entry.leftMode, entry.original.left(), dW, current.left()),
                   anchoredEdge(entry.topMode, entry.original.top(), dH, current.top())),
            QPoint(anchoredEdge(entry.rightMode, entry.original.right(), dW, current.right()),
                   anchoredEdge(entry.bottomMode, entry.original.bottom(), dH, current.bottom()))};
}
