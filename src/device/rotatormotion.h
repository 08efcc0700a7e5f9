#pragma once

#include "compass/degrees.h"

#include <optional>

/// A rotator as a state machine. What happens goes in; at most one order for the box comes out of each event,
/// and the lamps of the panel follow from the value.
///
/// The box says nothing but its azimuth. A reading has *moved* when its whole degrees differ from those of
/// the one before, unless that one failed. At most one target and one direction are kept; they outlive their
/// sending. A target is kept in each state that takes it, a direction only where it has to wait.
///
///     event           | Resting                | Turning                 | Doubtful
///     ----------------+------------------------+-------------------------+-----------------------
///     reading, moved  | Turning, but Doubtful  | -                       | -
///                     | if the reading failed  |                         |
///     reading, same   | the third: lamps off   | Resting, lamps off,     | Resting, lamps off,
///                     |                        | *resume*                | *arrived*
///     target          | go there               | *soft stop*             | *soft stop*, Turning
///     target, digits  | go there               | *soft stop*, go there,  | as Turning
///                     |                        | Resting                 |
///     direction, lit  | -                      | -                       | -
///     direction, dark | turn, light it         | *soft stop*, keep it,   | as Turning, Turning
///                     |                        | light it, STOP dark     |
///     button let go   | light the direction that was asked for last since STOP, in each state
///     STOP            | forget both, CCW and   | forget both, light      | as Turning
///                     | CW dark                | STOP, *soft stop*       |
///     STOP let go     | STOP dark              | STOP lit                | STOP lit
///     stop()          | *soft stop*            | *soft stop*             | *soft stop*
///     line went away  | Away: forget both and the readings, lamps off, in each state
///
///     resume     Turn to the kept direction and light it. Then *arrived*, then go to a target still kept.
///     arrived    The kept target is forgotten where the reading is in its whole degree.
///     soft stop  CCW and CW dark. With two good readings: forget the direction, light STOP, and run out
///                ten degrees on; where they are equal nothing is sent. Otherwise: brake.
///     Away       There is no line. All is refused but lineOpened(), which leads to Resting.
///     Doubtful   Only a failed reading looks like a rotation, and nothing was asked for since.
///
/// Azimuths are compass degrees, unknownAngle for none and for a failed reading.
class RotatorMotion
{
public:
    enum class State { Away, Resting, Turning, Doubtful };
    enum class Direction { CounterClockwise, Clockwise };
    enum class Seen { Nothing, EndOfTurn, EndOfDoubt };

    struct Order
    {
        enum Kind { GoTo, RunOut, Brake, TurnCounterClockwise, TurnClockwise };
        Kind kind;
        /// Where to go or to run out to, 0 to 360 in a run-out.
        double azimuth = unknownAngle;
    };
    /// What is to be sent, if anything.
    using MaybeOrder = std::optional<Order>;

    State state() const { return m_state; }
    bool isTurning() const { return m_state == State::Turning || m_state == State::Doubtful; }
    /// The reading of the last poll.
    double azimuth() const { return m_current; }
    /// Whether there is a reading that the next one can be compared with.
    bool hasReading() const { return truncatedDegrees(m_current) != truncatedDegrees(unknownAngle); }
    /// Whether the last reading is the first good one, or the first after a failed one.
    bool isFirstReading() const { return m_previous == unknownAngle && m_current >= 0.0; }
    /// The kept target.
    double target() const { return m_target; }

    std::optional<Direction> litDirection() const { return m_lit ? m_asked : std::nullopt; }
    bool isStopLit() const { return m_stopLit; }
    /// A soft stop was sent, and the rotor is not seen at rest yet.
    bool isRunningOut() const { return m_state == State::Turning && m_stopSent; }
    /// STOP came before a movement was seen, and now one is seen.
    bool isStopUnheeded() const { return m_stoppedUnseen && m_state == State::Turning; }

    void lineOpened();
    /// Returns whether anything was under way.
    bool lineWentAway();

    Seen poll(double reading);
    /// After the end of a turn has been told: the kept direction.
    MaybeOrder resumeDirection();
    /// After the end of a turn or a doubt. Returns whether the rotor is where it was to go, which may be
    /// nowhere.
    bool forgetReachedTarget();
    /// After the end of a turn: the kept target.
    MaybeOrder resumeTarget();

    MaybeOrder goTo(double azimuth);
    /// As goTo(), for a tracker, which asks again and again: while the rotor runs out the target only takes
    /// the place of the one that waits, or the rotor would never come to rest.
    MaybeOrder redirect(double azimuth);
    /// The first half of a target by digits, which goTo() follows.
    MaybeOrder cutShort();
    MaybeOrder turn(Direction direction);
    void letGoOfDirection() { m_lit = m_asked.has_value(); }
    /// Forgets; stopTurning() is the second half, for when the lamp shows.
    void pressStop();
    MaybeOrder stopTurning() { return isTurning() ? softStop() : std::nullopt; }
    void letGoOfStop() { m_stopLit = isTurning(); }
    MaybeOrder stop() { return m_state == State::Away ? std::nullopt : softStop(); }

private:
    MaybeOrder start(Direction direction);
    MaybeOrder softStop();
    void darken();
    /// The rotor is given time again to be seen moving.
    void expectMovement();

    State m_state = State::Away;
    double m_previous = unknownAngle;
    double m_current = unknownAngle;
    double m_target = unknownAngle;
    std::optional<Direction> m_direction;
    /// The direction asked for last; it is the lit one if any is.
    std::optional<Direction> m_asked;
    bool m_lit = false;
    bool m_stopLit = false;
    /// A soft stop or a brake was sent, and nothing that starts a turn since.
    bool m_stopSent = false;
    bool m_stoppedUnseen = false;
    /// Readings in a row that had not moved, 3 at most.
    int m_idle = 0;
};
