// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QStringList>
#include <QWheelEvent>
#include <QWidget>

/// Sends a mouse event at an exact position in widget pixels, with exactly these buttons held.
inline void sendMouse(QWidget *widget, QEvent::Type type, QPointF position, Qt::MouseButton button,
                      Qt::MouseButtons held)
{
    QMouseEvent event(type, position, widget->mapToGlobal(QPoint()) + position, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

/// One step up.
inline void turnWheel(QWidget *widget)
{
    QWheelEvent up({5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &up);
}

/// A dial or a display that notes what it tells: "started", "changing 10", "changed 10".
template <class Widget>
struct Recorded : Widget
{
    Recorded()
    {
        QObject::connect(this, &Widget::onRotationStarted, this, [this] { log << "started"; });
        QObject::connect(this, &Widget::onRotationChanging, this,
                         [this](int rotation) { log << QString("changing %1").arg(rotation); });
        QObject::connect(this, &Widget::onRotationChanged, this,
                         [this](int rotation) { log << QString("changed %1").arg(rotation); });
    }

    QStringList log;
};
