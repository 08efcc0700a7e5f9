// SPDX-License-Identifier: MIT
#pragma once

#include <QMouseEvent>
#include <QPoint>

#include <cmath>

/// Position of a mouse event in widget pixels, rounded to whole pixels with halves away from zero.
inline QPoint mousePosition(const QMouseEvent *event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const QPointF position = event->position();
#else
    const QPointF position = event->localPos();
#endif
    return {int(std::round(position.x())), int(std::round(position.y()))};
}
