#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QStringList>
#include <QWidget>

#include <memory>

/// Sends a mouse event at an exact position in widget pixels, with exactly these buttons held.
inline void sendMouse(QWidget *widget, QEvent::Type type, QPointF position, Qt::MouseButton button,
                      Qt::MouseButtons held)
{
    QMouseEvent event(type, position, widget->mapToGlobal(QPoint()) + position, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

/// What a dial or a display tells about its rotation, in order: "started", "changing 10", "changed 10".
template <class Widget>
std::shared_ptr<QStringList> recordRotation(Widget *widget)
{
    auto log = std::make_shared<QStringList>();
    QObject::connect(widget, &Widget::onRotationStarted, widget, [log] { *log << "started"; });
    QObject::connect(widget, &Widget::onRotationChanging, widget,
                     [log](int rotation) { *log << QStringLiteral("changing %1").arg(rotation); });
    QObject::connect(widget, &Widget::onRotationChanged, widget,
                     [log](int rotation) { *log << QStringLiteral("changed %1").arg(rotation); });
    return log;
}
