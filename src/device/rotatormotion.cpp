// SPDX-License-Identifier: MIT
#include "device/rotatormotion.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr int idleReadingsUntilDark = 3;
constexpr double fullTurn = 360.0;
constexpr double halfTurn = 180.0;
constexpr double runOut = 10.0;
/// Where a rotor stops that would run out beyond north counter-clockwise.
constexpr double beyondNorth = 350.0;

double runOutClockwise(double current)
{
    const double target = current + runOut;
    return target > fullTurn ? target - fullTurn : target;
}

double runOutCounterClockwise(double current)
{
    const double target = current - runOut;
    return target < 0.0 ? beyondNorth : target;
}

/// Where a rotor runs out that is not braked. Two known readings that differ tell its direction; a difference
/// of 180 degrees or more is a pass through north, after which the azimuth is not folded.
double softStopTarget(double last, double current)
{
    const double difference = current - last;
    if (difference <= -halfTurn)
        return current + runOut;
    if (difference >= halfTurn)
        return current - runOut;
    return difference > 0.0 ? runOutClockwise(current) : runOutCounterClockwise(current);
}

} // namespace

// ---- The line ----

void RotatorMotion::lineOpened()
{
    if (m_state == State::Away)
        m_state = State::Resting;
}

bool RotatorMotion::lineWentAway()
{
    const bool wasUnderWay = isTurning() || isKnownAngle(m_target) || m_lit;
    *this = RotatorMotion();
    return wasUnderWay;
}

// ---- Readings ----

RotatorMotion::Seen RotatorMotion::poll(double reading)
{
    if (m_state == State::Away)
        return Seen::Nothing;
    const bool moved = hasReading() && truncatedDegrees(reading) != truncatedDegrees(m_current);
    m_previous = std::exchange(m_current, reading);
    if (moved) {
        m_idle = 0;
        if (m_state == State::Resting)
            m_state = isKnownAngle(reading) ? State::Turning : State::Doubtful;
        return Seen::Nothing;
    }
    const State before = std::exchange(m_state, State::Resting);
    m_stopSent = false;
    m_idle = std::min(m_idle + 1, idleReadingsUntilDark);
    if (before != State::Resting || m_idle == idleReadingsUntilDark)
        darken();
    if (before == State::Resting)
        return Seen::Nothing;
    return before == State::Turning ? Seen::EndOfTurn : Seen::EndOfDoubt;
}

RotatorMotion::MaybeOrder RotatorMotion::resumeDirection()
{
    return m_direction ? start(*m_direction) : std::nullopt;
}

bool RotatorMotion::forgetReachedTarget()
{
    if (truncatedDegrees(m_target) != truncatedDegrees(m_current))
        return false;
    m_target = unknownAngle;
    return true;
}

RotatorMotion::MaybeOrder RotatorMotion::resumeTarget()
{
    return isKnownAngle(m_target) ? goTo(m_target) : std::nullopt;
}

// ---- What the operator asks for ----

RotatorMotion::MaybeOrder RotatorMotion::goTo(double azimuth)
{
    if (m_state == State::Away)
        return std::nullopt;
    expectMovement();
    m_target = azimuth;
    if (m_state == State::Resting) {
        m_stopSent = false;
        return Order{Order::GoTo, azimuth};
    }
    m_state = State::Turning;
    return softStop();
}

RotatorMotion::MaybeOrder RotatorMotion::redirect(double azimuth)
{
    if (!isRunningOut())
        return goTo(azimuth);
    m_target = azimuth;
    return std::nullopt;
}

RotatorMotion::MaybeOrder RotatorMotion::cutShort()
{
    if (!isTurning())
        return std::nullopt;
    m_state = State::Resting;
    return softStop();
}

RotatorMotion::MaybeOrder RotatorMotion::turn(Direction direction)
{
    if (m_state == State::Away || litDirection() == direction)
        return std::nullopt;
    if (m_state == State::Resting)
        return start(direction);
    const MaybeOrder order = softStop();
    m_state = State::Turning;
    m_direction = direction;
    m_stopLit = false;
    m_asked = direction;
    m_lit = true;
    return order;
}

void RotatorMotion::pressStop()
{
    m_target = unknownAngle;
    m_direction.reset();
    m_asked.reset(); // CW and CCW are dark, also when a button that is held is let go
    m_stopLit = isTurning();
    if (m_state != State::Resting)
        return;
    expectMovement();
    m_stoppedUnseen = true;
}

// ---- What comes out ----

RotatorMotion::MaybeOrder RotatorMotion::start(Direction direction)
{
    expectMovement();
    m_stopSent = false;
    m_asked = direction;
    m_lit = true;
    const bool clockwise = direction == Direction::Clockwise;
    return Order{clockwise ? Order::TurnClockwise : Order::TurnCounterClockwise};
}

RotatorMotion::MaybeOrder RotatorMotion::softStop()
{
    m_stoppedUnseen = false;
    m_lit = false;
    if (!isKnownAngle(m_previous) || !isKnownAngle(m_current)) {
        m_stopSent = true;
        return Order{Order::Brake};
    }
    m_direction.reset();
    m_stopLit = true;
    if (m_previous == m_current)
        return std::nullopt;
    m_stopSent = true;
    const double target = softStopTarget(m_previous, m_current);
    // A reading that no compass has gives no azimuth to run out to.
    const bool isOnCompass = target >= 0.0 && target <= fullTurn;
    return isOnCompass ? Order{Order::RunOut, target} : Order{Order::Brake};
}

void RotatorMotion::darken()
{
    m_lit = false;
    m_stopLit = false;
    m_stoppedUnseen = false;
}

void RotatorMotion::expectMovement()
{
    m_idle = 0;
    m_stoppedUnseen = false;
}
