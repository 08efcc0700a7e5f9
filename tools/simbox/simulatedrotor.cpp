// SPDX-License-Identifier: MIT
#include "simbox/simulatedrotor.h"

#include <cmath>
#include <limits>

namespace {

// Many short steps add up to a full turn only nearly.
constexpr double Epsilon = 1e-9;

double fold(double degrees)
{
    const double folded = std::fmod(degrees, 360.0);
    const double positive = folded < 0.0 ? folded + 360.0 : folded;
    return positive >= 360.0 ? 0.0 : positive;
}

} // namespace

void SimulatedRotor::goTo(double target)
{
    const double clockwise = fold(target - m_position);
    rest();
    if (clockwise < Epsilon)
        return;
    m_direction = clockwise <= 180.0 ? Direction::Clockwise : Direction::CounterClockwise;
    m_toGo = (clockwise <= 180.0 ? clockwise : 360.0 - clockwise) + m_overshoot;
    m_restAt = fold(target + sign() * m_overshoot);
}

void SimulatedRotor::turn(Direction direction)
{
    if (direction == Direction::None) {
        stop();
        return;
    }
    rest();
    m_direction = direction;
    m_toGo = std::numeric_limits<double>::infinity();
}

void SimulatedRotor::stop()
{
    if (!isMoving() || m_coasting)
        return;
    if (m_stuck || m_coast <= 0.0) {
        rest();
        return;
    }
    m_coasting = true;
    m_toGo = m_coast;
    m_restAt = fold(m_position + sign() * m_coast);
}

void SimulatedRotor::advance(int milliseconds)
{
    if (m_stuck)
        return;
    double seconds = milliseconds / 1000.0;
    if (isMoving()) {
        const double step = m_speed * seconds;
        if (step < m_toGo - Epsilon) {
            m_position = fold(m_position + sign() * step);
            m_toGo -= step;
            return;
        }
        seconds -= m_toGo / m_speed;
        m_position = m_restAt;
        rest();
    }
    m_position = fold(m_position + m_wind * seconds);
}

void SimulatedRotor::setPosition(double degrees)
{
    m_position = fold(degrees);
    rest();
}

void SimulatedRotor::rest()
{
    m_direction = Direction::None;
    m_toGo = 0.0;
    m_coasting = false;
}
