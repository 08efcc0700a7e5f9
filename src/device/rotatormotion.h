// SPDX-License-Identifier: MIT
#pragma once

#include "compass/degrees.h"

#include <optional>

/// A rotator as a state machine. Each event is a call, which returns at most one order for the box. The lamps
/// of the panel are read from this object after each event.
///
/// The box reports nothing but its azimuth. A reading has *moved* when its whole degrees differ from those of
/// the reading before, unless that one failed. At most one target and one direction are kept, also after they
/// were sent. A target is always kept, except in Away, which refuses it; a direction is kept only where it
/// had to wait.
///
///     event           | Resting                | Turning                 | Doubtful
///     ----------------+------------------------+-------------------------+-----------------------
///     reading, moved  | Turning, but Doubtful  | -                       | -
///                     | if the reading failed  |                         |
///     reading, same   | the third in a row:    | Resting, lamps off,     | Resting, lamps off,
///                     | lamps off              | *resume*                | *arrived*
///     target          | go there               | *soft stop*             | *soft stop*, Turning
///     target, digits  | go there               | *soft stop*, go there,  | as Turning
///                     |                        | Resting                 |
///     target, tracker | go there               | *soft stop*, if none is | *soft stop*, Turning
///                     |                        | under way               |
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
///     digits     The target was chosen on the digital display.
///     lit, dark  The button of a direction was pressed while its lamp was lit or dark.
///     resume     Turn to the kept direction and light it. Then *arrived*, then go to a target still kept.
///     arrived    Forget the kept target if its whole degrees are those of the reading.
///     soft stop  CCW and CW dark. With two good readings: forget the direction, light STOP, and run out
///                ten degrees on; if they are equal, nothing is sent. Otherwise: brake.
///     Away       There is no line. Everything is refused except lineOpened(), which leads to Resting.
///     Doubtful   A failed reading came after a good one at rest, and nothing was asked for since.
///
/// Azimuths are compass degrees; unknownAngle stands for no target and for a failed reading.
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
    /// A soft stop was sent, and no reading has shown yet that the rotor rests.
    bool isRunningOut() const { return m_state == State::Turning && m_stopSent; }
    /// STOP came before a movement was seen, and now one is seen.
    bool isStopUnheeded() const { return m_stoppedUnseen && m_state == State::Turning; }

    void lineOpened();
    /// Returns whether anything was under way.
    bool lineWentAway();

    Seen poll(double reading);
    /// To be called first after poll() returned EndOfTurn: the order to turn to the kept direction, if any.
    MaybeOrder resumeDirection();
    /// To be called after poll() returned EndOfTurn or EndOfDoubt: forgets the target when the rotor has
    /// reached it. Returns whether it has; true also without a target when the reading failed.
    bool forgetReachedTarget();
    /// To be called last after EndOfTurn: the order to go to the kept target, if any.
    MaybeOrder resumeTarget();

    MaybeOrder goTo(double azimuth);
    /// As goTo(), for a tracker, which sends new targets all the time. While the rotor runs out, the target
    /// only replaces the one that waits; another soft stop each time would keep the rotor from coming to
    /// rest.
    MaybeOrder redirect(double azimuth);
    /// To be called before goTo() for a target by digits: stops a turning rotor without waiting for its rest.
    MaybeOrder cutShort();
    MaybeOrder turn(Direction direction);
    void letGoOfDirection() { m_lit = m_asked.has_value(); }
    /// STOP was pressed: forgets target and direction and sets the lamps. The caller shows the lamps, then
    /// calls stopTurning(), which returns the order.
    void pressStop();
    MaybeOrder stopTurning() { return isTurning() ? softStop() : std::nullopt; }
    void letGoOfStop() { m_stopLit = isTurning(); }
    MaybeOrder stop() { return m_state == State::Away ? std::nullopt : softStop(); }

private:
    MaybeOrder start(Direction direction);
    MaybeOrder softStop();
    void darken();
    /// Starts to count anew the readings without movement after which the lamps go dark.
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
