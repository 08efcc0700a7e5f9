// SPDX-License-Identifier: MIT
#pragma once

/// A motor that turns one antenna, driven by its own clock.
///
/// Angles are compass degrees, 0 at north, clockwise; the position stays in [0, 360). The rotor turns freely,
/// it has no end stop: a go-to takes the shorter way, through north where that is shorter, and clockwise when
/// both are 180.
///
///     resting --goTo/turn--> turning --stop--> coasting --> resting
///                               '----target + overshoot-------^
class SimulatedRotor
{
public:
    enum class Direction { None, Clockwise, CounterClockwise };

    /// Target in 0..360 (360 is north). An opposite direction takes effect at once, without coasting first.
    void goTo(double target);
    /// Turns until told otherwise; Direction::None is stop().
    void turn(Direction direction);
    /// Ends a turn after the coast. Does nothing at rest or while it coasts already.
    void stop();
    /// Lets this much time pass. Exact for any length: one long step ends where many short ones do.
    void advance(int milliseconds);

    double position() const { return m_position; }
    /// Puts the rotor there, at rest. Any value; it is folded into [0, 360).
    void setPosition(double degrees);

    double speed() const { return m_speed; }
    /// Degrees per second, 0 or more.
    void setSpeed(double degreesPerSecond) { m_speed = degreesPerSecond; }
    /// How far the rotor runs on after a stop.
    void setCoast(double degrees) { m_coast = degrees; }
    /// How far the rotor runs past the target of a go-to. Counts from the next go-to.
    void setOvershoot(double degrees) { m_overshoot = degrees; }
    /// Drift in degrees per second while the motor rests; positive is clockwise.
    void setWind(double degreesPerSecond) { m_wind = degreesPerSecond; }
    bool isStuck() const { return m_stuck; }
    /// A stuck rotor keeps its place although its motor runs; neither does wind move it.
    void setStuck(bool stuck) { m_stuck = stuck; }

    /// True while the motor runs or coasts. Wind does not count.
    bool isMoving() const { return m_direction != Direction::None; }

private:
    double sign() const { return m_direction == Direction::Clockwise ? 1.0 : -1.0; }
    void rest();

    double m_position = 0.0;
    double m_speed = 6.0;
    double m_coast = 0.0;
    double m_overshoot = 0.0;
    double m_wind = 0.0;
    bool m_stuck = false;

    Direction m_direction = Direction::None;
    double m_toGo = 0.0; // degrees left to turn, infinite for a manual turn
    double m_restAt = 0.0;
    bool m_coasting = false;
};
