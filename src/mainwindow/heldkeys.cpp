#include "mainwindow/mainwindow.h"
#include "ui_mainwindow.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/vextralremotecontrol.h"
#include "widgets/map/azimuthalanimation.h"
#include "widgets/map/vextralazimuthalwidget.h"

#include <QKeyEvent>

#include <optional>

// An antenna turns while an arrow key is held. Auto-repeat makes pairs of release and press, so a release
// ends the rotation only when no press follows within releaseDelayMs.

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

void CMainWindow::keyPressEvent(QKeyEvent *event)
{
    const std::optional<int> direction = directionOfKey(event->key());
    if (!direction) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    if (m_controller->acceptsDirectionKeys()) {
        if (m_controller->rotateByKey(*direction))
            m_directionTimer.stop();
        return;
    }
    m_directionTimer.stop();
    if (m_keyHeld)
        return;
    m_keyHeld = true;
    if (m_keyRotating)
        return;
    m_keyRotating = true;
    changeCurrentAntennaDirection(*direction);
}

void CMainWindow::keyReleaseEvent(QKeyEvent *event)
{
    if (!directionOfKey(event->key())) {
        QMainWindow::keyReleaseEvent(event);
        return;
    }
    if (!m_controller->acceptsDirectionKeys())
        m_directionTimer.start(releaseDelayMs);
}

bool CMainWindow::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!isPress && event->type() != QEvent::KeyRelease)
        return QMainWindow::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    if (!directionOfKey(key->key()))
        return QMainWindow::eventFilter(watched, event);
    if (isPress)
        keyPressEvent(key);
    else
        keyReleaseEvent(key);
    return true;
}

void CMainWindow::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    // The release of a key goes to the window that is active by then.
    if (event->type() == QEvent::ActivationChange && !isActiveWindow() && m_keyHeld)
        m_directionTimer.start(releaseDelayMs);
}

void CMainWindow::changeCurrentAntennaDirection(int direction)
{
    CVextralAntenna *antenna = m_ui->azimuthalWidget->currentAntenna();
    if (!antenna)
        return;
    const bool ccw = direction == counterClockwise;
    const double end = ccw ? counterClockwiseEnd : clockwiseEnd;
    qDebug("................. changeCurrentAntennaDirection() %s", ccw ? "CCW" : "CW");
    antenna->setTarget(end);
    antenna->clearTarget();
    m_ui->azimuthalWidget->setAnimationTicks(AzimuthalAnimation::ticksIn(m_controller->monitorInterval()));
    m_ui->azimuthalWidget->startAnimation(antenna, antenna->angle(), end);
    m_controller->rotateTo(end);
}

void CMainWindow::onAntennaDirectionTimer()
{
    m_directionTimer.stop();
    m_keyHeld = false;
    stopCurrentAntenna();
}

void CMainWindow::stopCurrentAntenna()
{
    qDebug("................. changeCurrentAntennaDirection() Stop1");
    m_keyRotating = false;
    CVextralAntenna *antenna = m_ui->azimuthalWidget->currentAntenna();
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
        m_ui->azimuthalWidget->stopAnimation();
    }
    qDebug("................. changeCurrentAntennaDirection() Stop2");
}
