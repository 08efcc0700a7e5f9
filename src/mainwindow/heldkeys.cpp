// SPDX-License-Identifier: MIT
#include "mainwindow/heldkeys.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QKeyEvent>

#include <optional>

namespace {

constexpr int releaseDelayMs = 233;

constexpr int counterClockwise = CVextralRemoteControl::CounterClockwiseKey;
constexpr int clockwise = CVextralRemoteControl::ClockwiseKey;
/// The far ends of the two directions, deliberately one degree apart.
constexpr double counterClockwiseEnd = 180.0;
constexpr double clockwiseEnd = 179.0;

std::optional<int> directionOfKey(int key)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_F10:
        return counterClockwise;
    case Qt::Key_Right:
    case Qt::Key_F11:
        return clockwise;
    default:
        return std::nullopt;
    }
}

} // namespace

HeldKeys::HeldKeys(CVextralRemoteControl *controller, CVextralAzimuthalWidget *map, QWidget *window)
    : m_controller(controller), m_map(map), m_window(window)
{
    m_releaseTimer.setSingleShot(true);
    m_releaseTimer.setInterval(releaseDelayMs);
    connect(&m_releaseTimer, &QTimer::timeout, this, &HeldKeys::delayPassed);
    window->installEventFilter(this);
}

void HeldKeys::passFrom(QWidget *widget)
{
    widget->installEventFilter(this);
}

bool HeldKeys::press(int key)
{
    const std::optional<int> direction = directionOfKey(key);
    if (!direction)
        return false;
    if (m_controller->acceptsDirectionKeys()) {
        if (m_controller->rotateByKey(*direction))
            m_releaseTimer.stop();
        return true;
    }
    m_releaseTimer.stop();
    m_pressed.insert(key);
    if (m_held)
        return true;
    m_held = true;
    if (!m_rotating) {
        m_rotating = true;
        turn(*direction);
    }
    return true;
}

bool HeldKeys::release(int key)
{
    if (!directionOfKey(key))
        return false;
    if (m_pressed.remove(key))
        m_releaseTimer.start();
    return true;
}

bool HeldKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window) {
        // The release of a key goes to the window that is active by then.
        if (event->type() == QEvent::WindowDeactivate && m_held)
            m_releaseTimer.start();
        return false;
    }
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!isPress && event->type() != QEvent::KeyRelease)
        return false;
    // In a dialog, where the antennas' tabs may be, the keys are the widget's own.
    if (static_cast<QWidget *>(watched)->window() != m_window)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    return isPress ? press(key) : release(key);
}

void HeldKeys::turn(int direction)
{
    CVextralAntenna *antenna = m_map->currentAntenna();
    if (!antenna)
        return;
    const bool ccw = direction == counterClockwise;
    const double end = ccw ? counterClockwiseEnd : clockwiseEnd;
    qDebug("................. changeCurrentAntennaDirection() %s", ccw ? "CCW" : "CW");
    antenna->setTarget(end);
    antenna->clearTarget();
    m_map->animate(antenna, antenna->angle(), end, m_controller->monitorInterval());
    m_controller->rotateTo(end);
}

void HeldKeys::letGo()
{
    forgetKeys();
    stopCurrentAntenna();
}

void HeldKeys::forget()
{
    forgetKeys();
    m_rotating = false;
}

void HeldKeys::forgetKeys()
{
    m_releaseTimer.stop();
    m_pressed.clear();
    m_held = false;
}

void HeldKeys::stopRotation()
{
    if (m_rotating)
        stopCurrentAntenna();
}

void HeldKeys::stopCurrentAntenna()
{
    qDebug("................. changeCurrentAntennaDirection() Stop1");
    m_rotating = false;
    CVextralAntenna *antenna = m_map->currentAntenna();
    const double position = m_controller->getCurrentAngle();
    if (isKnownAngle(position)) {
        if (antenna)
            antenna->setTarget(position);
        qDebug("................. target passou a ser [%d]", roundedDegrees(position));
        m_controller->stop();
    } else {
        qDebug("................. Impossivel parar interpolacao(parada bruta)");
        if (antenna)
            antenna->setTarget(unknownAngle);
        m_controller->stop();
        m_map->stopAnimation();
    }
    qDebug("................. changeCurrentAntennaDirection() Stop2");
}
