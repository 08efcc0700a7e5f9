#include "device/rotationsteering.h"

#include "compass/degrees.h"

#include <cmath>

namespace {

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

} // namespace

namespace RotationSteering {

bool hasTurned(double previous, double current)
{
    return truncatedDegrees(previous) != truncatedDegrees(unknownAngle)
        && truncatedDegrees(previous) != truncatedDegrees(current);
}

std::optional<double> softStopTarget(double last, double current)
{
    const double difference = current - last;
    if (difference == 0.0)
        return std::nullopt;
    const bool passedNorth = std::abs(difference) >= halfTurn;
    const bool clockwise = (difference > 0.0) != passedNorth;
    if (passedNorth)
        return clockwise ? current + runOut : current - runOut;
    return clockwise ? runOutClockwise(current) : runOutCounterClockwise(current);
}

} // namespace RotationSteering
