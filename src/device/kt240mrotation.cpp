#include "device/devicekt240m.h"

#include "antenna/vextralantenna.h"
#include "compass/degrees.h"
#include "device/rotationsteering.h"
#include "widgets/antennabutton.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdialwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"

#include <QThread>

// The polls, the rotations that they see begin and end, and the rotations that the operator asks for.

using namespace RotationSteering;

namespace {

constexpr char arrow[] = "......................................>>";

constexpr int idlePollsUntilDark = 3;
constexpr int afterBrakeMs = 50;
constexpr double fullTurn = 360.0;

} // namespace

void CDeviceKT240M::light(CAntennaButton *button, bool on)
{
    if (button)
        button->setChecked(on);
}

CAntennaButton *CDeviceKT240M::buttonOf(Direction direction) const
{
    return direction == Direction::Clockwise ? m_cwButton : m_ccwButton;
}

CAntennaButton *CDeviceKT240M::buttonAgainst(Direction direction) const
{
    return direction == Direction::Clockwise ? m_ccwButton : m_cwButton;
}

// ---- A poll ----

void CDeviceKT240M::monitore()
{
    m_polledAngle = getCurrentAngle();
    if (isOpen())
        noteAnswer(isKnownAngle(m_polledAngle));
    m_lastReading = m_previousReading;
    m_currentReading = m_polledAngle;
    const bool wasRotating = m_rotating;
    if (truncatedDegrees(m_previousReading) == -1) {
        m_rotating = false;
        if (m_previousReading == unknownAngle && m_polledAngle >= 0.0)
            takeFirstReading();
    } else {
        logReading(wasRotating);
        m_rotating = hasTurned(m_previousReading, m_polledAngle);
    }
    if (m_rotating && !wasRotating)
        m_onlyReadingFailed = !isKnownAngle(m_polledAngle);
    m_previousReading = m_polledAngle;

    updateStatusDisplay(CDeviceStatus());
    if (wasRotating && !m_rotating)
        endRotation();
}

void CDeviceKT240M::takeFirstReading()
{
    aimAntenna(m_polledAngle);
    if (CVextralAntenna *first = antenna(0))
        first->setAngle(m_polledAngle);
    updateMap();
}

void CDeviceKT240M::logReading(bool wasRotating) const
{
    const CVextralAzimuthalWidget *map = azimuthalWidget();
    const CVextralAntenna *current = map ? map->currentAntenna() : nullptr;
    qDebug("rotating last [%3.2f] to current [%3.2f] target[%3.2f] isRotating[%d]", m_previousReading,
           m_polledAngle, current ? current->target() : unknownAngle, wasRotating);
}

void CDeviceKT240M::endRotation()
{
    qDebug("%s", arrow);
    qDebug("%s Rotacao encerrou!", arrow);
    if (isKnownAngle(m_polledAngle))
        aimAntenna(m_polledAngle);
    light(m_ccwButton, false);
    light(m_cwButton, false);
    qDebug("%s Desliguei botoes", arrow);
    light(m_stopButton, false);
    if (CVextralAntenna *first = antenna(0))
        first->setRotating(false);
    if (CVextralAzimuthalWidget *map = azimuthalWidget()) {
        if (CVextralAntenna *current = map->currentAntenna())
            current->clearTarget();
        map->stopAnimation();
        map->update();
    }
    emit onStopRotating();
    startPendingDirection();
    settleScheduledTarget();
    qDebug("%s", arrow);
}

void CDeviceKT240M::startPendingDirection()
{
    // What is still pending from before was not asked for by this.
    if (m_onlyReadingFailed)
        return;
    if (m_ccwPending)
        startTurning(Direction::CounterClockwise);
    else if (m_cwPending)
        startTurning(Direction::Clockwise);
}

void CDeviceKT240M::settleScheduledTarget()
{
    qDebug("%s Agendado para ir: %3.2f", arrow, m_scheduledTarget);
    if (truncatedDegrees(m_scheduledTarget) == truncatedDegrees(m_polledAngle)) {
        m_scheduledTarget = unknownAngle;
        qDebug("%s", arrow);
        qDebug("%s Agendadamento cancelado", arrow);
        qDebug("%s", arrow);
    }
    if (isKnownAngle(m_scheduledTarget) && !m_onlyReadingFailed)
        rotateTo(m_scheduledTarget);
}

// ---- Showing a poll ----

void CDeviceKT240M::updateStatusDisplay(CDeviceStatus status)
{
    Q_UNUSED(status)
    if (!m_digitalDisplay)
        return;
    countIdlePolls();
    showAzimuth();
    if (isKnownAngle(m_polledAngle))
        moveAntenna();
}

void CDeviceKT240M::countIdlePolls()
{
    if (m_rotating) {
        m_idlePolls = 0;
        return;
    }
    if (++m_idlePolls < idlePollsUntilDark)
        return;
    m_idlePolls = idlePollsUntilDark;
    light(m_ccwButton, false);
    light(m_cwButton, false);
    // Lit by a new target that came just as the rotor had stopped, so that no rotation ended.
    light(m_stopButton, false);
}

void CDeviceKT240M::showAzimuth()
{
    // A dial that was brought back to where it started reports no end.
    if (m_dialEditsDisplay && !(m_dial && m_dial->isPressed())) {
        m_dialEditsDisplay = false;
        m_digitalDisplay->setEditing(false);
    }
    const int degrees = truncatedDegrees(m_polledAngle);
    m_digitalDisplay->setValue(degrees, false);
    m_digitalDisplay->setHighlighted(degrees != -1);
    m_digitalDisplay->update();
}

void CDeviceKT240M::moveAntenna()
{
    CVextralAntenna *first = antenna(0);
    if (!first)
        return;
    CVextralAzimuthalWidget *map = azimuthalWidget();
    if (m_rotating) {
        if (map)
            map->animate(first, first->isRotating() ? first->angle() : m_polledAngle, m_polledAngle,
                         monitorInterval());
        first->setAngle(m_polledAngle);
        first->setRotating(true);
    } else {
        // Also where a new target came just as the rotor had stopped, so that no rotation ended.
        first->setRotating(false);
        if (m_polledAngle != first->angle() && !isOperatorChoosing())
            aimAntenna(m_polledAngle);
        else if (map)
            map->stopAnimation();
    }
    updateMap();
}

bool CDeviceKT240M::isOperatorChoosing() const
{
    return m_digitalDisplay->isEditing() || (m_dial && m_dial->isPressed());
}

// ---- Turning and stopping ----

bool CDeviceKT240M::rotateTo(double azimuth)
{
    // A target that was kept would turn the antenna at some later time, when nobody waits for it.
    if (lineState().kind == LineState::Kind::Lost)
        return false;
    m_idlePolls = 0;
    if (m_rotating) {
        m_onlyReadingFailed = false;
        stop();
        m_scheduledTarget = azimuth;
        return false;
    }
    m_scheduledTarget = azimuth;
    aimAntenna(azimuth);
    return CVextralRemoteControl::rotateTo(azimuth);
}

bool CDeviceKT240M::stop()
{
    return isKnownAngle(m_lastReading) && isKnownAngle(m_currentReading) ? runOut() : brake();
}

bool CDeviceKT240M::runOut()
{
    m_ccwPending = false;
    m_cwPending = false;
    light(m_cwButton, false);
    light(m_ccwButton, false);
    light(m_stopButton, true);
    const std::optional<double> target = softStopTarget(m_lastReading, m_currentReading);
    if (!target)
        return false;
    // A reading that no compass has gives no azimuth to run out to.
    if (*target < 0.0 || *target > fullTurn)
        return brake();
    return CVextralRemoteControl::rotateTo(*target);
}

bool CDeviceKT240M::brake()
{
    const bool sent = CVextralRemoteControl::stop();
    QThread::msleep(afterBrakeMs);
    if (CVextralAntenna *first = antenna(0)) {
        first->setRotating(false);
        aimAntenna(first->angle());
    }
    if (CVextralAzimuthalWidget *map = azimuthalWidget()) {
        map->stopAnimation();
        map->update();
    }
    light(m_ccwButton, false);
    light(m_cwButton, false);
    return sent;
}

void CDeviceKT240M::applyCCWandCW(CAntennaButton *button)
{
    const bool ccw = button == m_ccwButton;
    const CAntennaButton *wanted = ccw ? m_ccwButton : m_cwButton;
    if (!wanted || wanted->isChecked())
        return;
    m_activeDirectionButton = nullptr;
    const Direction direction = ccw ? Direction::CounterClockwise : Direction::Clockwise;
    if (m_rotating)
        turnOnceAtRest(direction);
    else
        startTurning(direction);
}

void CDeviceKT240M::turnOnceAtRest(Direction direction)
{
    stop();
    m_onlyReadingFailed = false;
    m_ccwPending = direction == Direction::CounterClockwise;
    m_cwPending = direction == Direction::Clockwise;
    light(buttonOf(direction), true);
    light(buttonAgainst(direction), false);
    light(m_stopButton, false);
    m_activeDirectionButton = buttonOf(direction);
    m_rotating = true;
}

void CDeviceKT240M::startTurning(Direction direction)
{
    // The lamp waits as long as after a go-to for the rotor to move.
    m_idlePolls = 0;
    // Turning until told otherwise leads nowhere.
    if (CVextralAntenna *first = antenna(0))
        first->clearTarget();
    if (direction == Direction::CounterClockwise)
        rotateCCW();
    else
        rotateCW();
    light(buttonOf(direction), true);
    light(buttonAgainst(direction), false);
    m_activeDirectionButton = buttonOf(direction);
}
