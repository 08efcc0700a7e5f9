#pragma once

#include <optional>

/// How a rotator is steered from nothing but its readings. Readings and targets are compass degrees; a
/// failed reading is unknownAngle.
namespace RotationSteering {

/// Whether two successive readings show a rotation: their whole degrees differ. After a failed reading there
/// is nothing to compare with.
bool hasTurned(double previous, double current);

/// Where to send a rotor that is to stop: a little further on its way, so that it runs out instead of being
/// braked. Two known readings tell its direction; a difference of 180 degrees or more is a pass through
/// north. Nothing when the readings are equal.
std::optional<double> softStopTarget(double last, double current);

} // namespace RotationSteering
