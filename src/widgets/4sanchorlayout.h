// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QRect>
#include <QWidget>

#include <vector>

/// Keeps the children of a container, laid out at design size, in place when the container is resized.
///
/// Each edge of a child is free, or anchored to the container's near (left, top) or far (right, bottom) side;
/// or the whole child scales with the container. Rectangles are in container pixels. The owner calls
/// relayout() from the container's resize handling; container and children belong to others, and a child that
/// died is skipped.
class C4SAnchorLayout
{
public:
    enum Mode {
        Free = 0,  ///< the edge stays where it is
        Near = 1,  ///< the edge keeps its design coordinate
        Far = 2,   ///< the edge moves with the container's growth
        Scaled = 3 ///< as left mode only: the whole child scales, the other modes do not count
    };

    /// The container's present size becomes the design size.
    explicit C4SAnchorLayout(QWidget *container);
    virtual ~C4SAnchorLayout() = default;

    /// The child's present geometry becomes its design geometry.
    void addWidget(int leftMode, int topMode, int rightMode, int bottomMode, QWidget *child);
    void relayout();
    /// Takes the present sizes as the design, and as the container's minimum size.
    void captureDesign();

private:
    struct Entry
    {
        QRect original;
        int topMode = 0;
        int leftMode = 0;
        int rightMode = 0;
        int bottomMode = 0;
        QPointer<QWidget> child;
    };

    QRect scaledRect(const QRect &original) const;
    QRect anchoredRect(const Entry &entry) const;

    std::vector<Entry> m_entries;
    QPointer<QWidget> m_container;
    QRect m_design;
};
