// SPDX-License-Identifier: MIT
#pragma once

#include "device/rotatormotion.h"
#include "rotctld/repeatedtargets.h"

#include <set>
#include <utility>

/// Lets one event after the other happen to a rotator and checks after each of them what must always hold,
/// against an account of its own: what was asked for since STOP or a lost line forgot it.
class MotionWalk
{
public:
    static constexpr unsigned eventCount = 17;

    /// Any two numbers are an event. Returns what does not hold, or null.
    const char *step(unsigned event, unsigned detail)
    {
        const double azimuth = detail % 360;
        const unsigned kind = event % eventCount;
        if (kind < firstPoll || (kind > lastPoll && kind != tracker))
            m_runsOut = false;
        switch (kind) {
        case 0:
            m_isOpen = false;
            m_wholeDegrees = -1;
            forget();
            m_motion.lineWentAway();
            return check(std::nullopt, Cause::Line);
        case 1:
        case 2:
            m_isOpen = true;
            m_motion.lineOpened();
            return check(std::nullopt, Cause::Line);
        case firstPoll:
            return poll(-1.0);
        case 4:
            return poll(detail % 2000 - 500.0); // no compass has it
        case 5:
            return poll(m_motion.azimuth());
        case 6:
            return poll(m_motion.azimuth() + 0.1 * (detail % 10));
        case 7:
        case lastPoll:
            return poll(azimuth);
        case 9:
            ask(azimuth);
            return check(m_motion.goTo(azimuth), Cause::Operator);
        case 10:
            if (const char *failure = check(m_motion.cutShort(), Cause::Operator))
                return failure;
            ask(azimuth);
            return check(m_motion.goTo(azimuth), Cause::Operator);
        case 11:
            return turn(RotatorMotion::Direction::CounterClockwise);
        case 12:
            return turn(RotatorMotion::Direction::Clockwise);
        case 13:
            m_motion.letGoOfDirection();
            return check(std::nullopt, Cause::Operator);
        case 14:
            return stop(detail);
        case tracker:
            return track(detail % 3 == 0 ? azimuth : m_tracked, detail % 11);
        default:
            return check(m_motion.stop(), Cause::Operator);
        }
    }

private:
    using Order = RotatorMotion::Order;
    enum Event : unsigned { firstPoll = 3, lastPoll = 8, tracker = 15 };
    enum class Cause { Line, Poll, Operator };

    void forget()
    {
        m_target = unknownAngle;
        m_directions.clear();
    }

    void ask(double azimuth) { m_target = m_isOpen ? azimuth : m_target; }

    const char *poll(double reading)
    {
        const int before = std::exchange(m_wholeDegrees, truncatedDegrees(reading));
        if (before == -1 || before == m_wholeDegrees)
            m_runsOut = false;
        const RotatorMotion::Seen seen = m_motion.poll(reading);
        const char *failure = check(std::nullopt, Cause::Poll);
        if (failure || seen == RotatorMotion::Seen::Nothing)
            return failure;
        if (m_motion.litDirection() || m_motion.isStopLit() || m_motion.isTurning())
            return "a rotation that has ended leaves no lamp lit";
        const bool resumes = seen == RotatorMotion::Seen::EndOfTurn;
        if (resumes)
            failure = check(m_motion.resumeDirection(), Cause::Poll);
        const double target = m_motion.target();
        if (m_motion.forgetReachedTarget() && int(target) != int(m_motion.azimuth()))
            return "only a target that is reached is forgotten";
        return failure || !resumes ? failure : check(m_motion.resumeTarget(), Cause::Poll);
    }

    const char *turn(RotatorMotion::Direction direction)
    {
        if (m_isOpen)
            m_directions.insert(direction);
        return check(m_motion.turn(direction), Cause::Operator);
    }

    /// A tracker that sends its target every few seconds, also while there is no line.
    const char *track(double azimuth, int seconds)
    {
        m_time += seconds * 1000;
        const bool isRepeated = m_targets.isRepeated(this, int(azimuth), m_time);
        if (isRepeated != (azimuth == m_tracked && m_time - m_trackedAt <= RepeatedTargets::usualGapMs))
            return "a target that is sent again and again is a repetition";
        if (isRepeated)
            m_trackedAt = m_time;
        if (isRepeated || !m_isOpen)
            return nullptr;
        m_tracked = azimuth;
        m_trackedAt = m_time;
        m_targets.note(this, int(azimuth), m_time);
        ask(azimuth);
        const bool runsOut = m_runsOut;
        const RotatorMotion::MaybeOrder order = m_motion.redirect(azimuth);
        if (runsOut && order)
            return "a rotor that runs out for the tracker is not stopped again";
        const char *failure = check(order, Cause::Operator);
        m_runsOut = runsOut || (order && (order->kind == Order::RunOut || order->kind == Order::Brake));
        return failure;
    }

    /// With polls while the lamp is shown, and with a release.
    const char *stop(unsigned detail)
    {
        forget();
        m_motion.pressStop();
        if (const char *failure = detail % 3 == 0 ? poll(detail % 7 * 50.0) : nullptr)
            return failure;
        const RotatorMotion::MaybeOrder order = m_motion.stopTurning();
        if (order && (order->kind != Order::RunOut && order->kind != Order::Brake))
            return "STOP stops";
        if (const char *failure = check(order, Cause::Operator))
            return failure;
        m_motion.letGoOfStop();
        return check(std::nullopt, Cause::Operator);
    }

    const char *check(const RotatorMotion::MaybeOrder &order, Cause cause) const
    {
        const bool isAway = m_motion.state() == RotatorMotion::State::Away;
        if (isAway == m_isOpen)
            return "it is away when the line is";
        const auto lit = m_motion.litDirection();
        if (isAway && (lit || m_motion.isStopLit() || isKnownAngle(m_motion.target())))
            return "nothing is kept or lit without a line";
        if (lit && m_directions.count(*lit) == 0)
            return "a lit direction was asked for";
        if (isKnownAngle(m_motion.target()) && m_motion.target() != m_target)
            return "a kept target is the last one asked for";
        if (!order)
            return nullptr;
        if (isAway)
            return "nothing is sent without a line";
        switch (order->kind) {
        case Order::GoTo:
            return order->azimuth == m_target ? nullptr : "a target that is sent was asked for";
        case Order::TurnCounterClockwise:
        case Order::TurnClockwise:
            return m_directions.count(order->kind == Order::TurnClockwise
                                          ? RotatorMotion::Direction::Clockwise
                                          : RotatorMotion::Direction::CounterClockwise)
                     ? nullptr
                     : "a direction that is sent was asked for";
        default:
            if (cause != Cause::Operator)
                return "only the operator stops";
            return order->kind == Order::Brake || (order->azimuth >= 0.0 && order->azimuth <= 360.0)
                     ? nullptr
                     : "a run-out ends on the compass";
        }
    }

    RotatorMotion m_motion;
    bool m_isOpen = false;
    int m_wholeDegrees = -1;
    double m_target = unknownAngle;
    /// The tracker's target was answered by a stop, and since then the rotor was seen turning in each poll.
    bool m_runsOut = false;
    RepeatedTargets m_targets;
    int m_time = 0; // of the tracker, in ms
    double m_tracked = 0.0;
    int m_trackedAt = -2 * int(RepeatedTargets::usualGapMs);
    std::set<RotatorMotion::Direction> m_directions;
};
