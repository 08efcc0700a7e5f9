// SPDX-License-Identifier: MIT
#include "widgets/latestyle.h"

#include <QCoreApplication>
#include <QEvent>

LateStyle::LateStyle(QWidget *container) : QObject(container)
{
    // Qt styles a hidden container's contents with the container, unless that has its style already.
    container->ensurePolished();
    container->installEventFilter(this);
}

bool LateStyle::eventFilter(QObject *container, QEvent *event)
{
    // Each new widget asks for its style in the event loop, the container before those that are in it.
    if (event->type() == QEvent::PolishRequest) {
        for (QWidget *inside : container->findChildren<QWidget *>())
            QCoreApplication::removePostedEvents(inside, QEvent::PolishRequest);
        deleteLater();
    }
    return false;
}
