#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

#include <cstdio>

/// Says "painted" on the standard output when the watched window paints for the first time.
class FirstPaint : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && !m_said) {
            m_said = true;
            std::puts("painted");
            std::fflush(stdout);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_said = false;
};
