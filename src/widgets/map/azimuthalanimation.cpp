// SPDX-License-Identifier: MIT
#include "widgets/map/azimuthalanimation.h"

#include "compass/degrees.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double fullTurn = 360.0;

bool isWithin(double low, double angle, double high)
{
    return low <= angle && angle <= high;
}

bool isClockwise(double from, double to)
{
    if (isWithin(270.0, from, fullTurn) && isWithin(0.0, to, 90.0))
        return true;
    if (isWithin(0.0, from, 90.0) && isWithin(270.0, to, fullTurn))
        return false;
    return from <= to;
}

bool isSameDegree(double a, double b)
{
    return std::trunc(a) == std::trunc(b);
}

bool isShortOfTarget(const AzimuthalAnimation::Turn &turn)
{
    const double drawn = std::trunc(turn.drawn);
    const double target = std::trunc(turn.target);
    return turn.step > 0.0 ? drawn < target : drawn > target;
}

bool isNorthAhead(const AzimuthalAnimation::Turn &turn)
{
    if (turn.step > 0.0)
        return turn.drawn > 180.0 && turn.target < 180.0;
    return std::trunc(turn.drawn) < 180.0 && std::trunc(turn.target) > 179.0;
}

} // namespace

namespace AzimuthalAnimation {

double stepFor(double from, double to, double ticks)
{
    if (!(ticks > 0.0))
        return 0.0;
    const double difference = std::abs(to - from);
    const double step = std::min(difference, fullTurn - difference) / ticks;
    return isClockwise(from, to) ? step : -step;
}

Tick nextTick(const Turn &turn)
{
    if (turn.step == 0.0)
        return {turn.drawn, !turn.rotating || isSameDegree(turn.drawn, turn.target)};

    const double moved = foldedAngle(turn.drawn + turn.step);
    const bool hasArrived = isSameDegree(moved, turn.target);
    if (!turn.guarded || isShortOfTarget(turn))
        return {moved, hasArrived};
    return {moved, hasArrived || !isNorthAhead(turn)};
}

} // namespace AzimuthalAnimation
