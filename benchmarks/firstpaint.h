// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QTimer>

#include <cstdio>

/// Says "painted" on the standard output when the watched window, or the first one of the watched
/// application, and all that is in it have been painted for the first time.
class FirstPaint : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_said) {
            m_said = true;
            QTimer::singleShot(0, this, [] {
                std::puts("painted");
                std::fflush(stdout);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_said = false;
};
