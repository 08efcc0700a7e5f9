// SPDX-License-Identifier: MIT
#pragma once

/// How an arrow on the azimuthal map moves from one polled azimuth to the next, tick by tick.
///
/// Angles are compass degrees; a step is degrees per tick, negative for counter-clockwise. Whether an arrow
/// has arrived is decided on whole degrees, truncated toward zero.
namespace AzimuthalAnimation {

constexpr int tickMs = 88;

/// How many ticks a period has.
constexpr double ticksIn(int milliseconds)
{
    return milliseconds / static_cast<double>(tickMs);
}
/// The step while nothing turns.
constexpr double restingStep = 0.5;

/// The step that takes `ticks` ticks from `from` to `to`: clockwise from the north-west quarter into the
/// north-east one, counter-clockwise back, else straight towards the larger or smaller number, though never
/// further than half a turn. 0 when there are no ticks.
double stepFor(double from, double to, double ticks);

struct Turn
{
    /// Where the arrow is drawn, in [0, 360).
    double drawn;
    /// The target, -1 for none.
    double target;
    double step;
    /// The rotor is known to turn.
    bool rotating;
    /// The arrow must not pass its target.
    bool guarded;
};

struct Tick
{
    double drawn;
    bool ends;
};

Tick nextTick(const Turn &turn);

} // namespace AzimuthalAnimation
